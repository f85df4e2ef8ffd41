#pragma once

// The list of servers: one row for each record that passes the filters. A row's tag is the index of its
// record; it is not renumbered when records are removed, so every use of a tag is checked.

#include "views/CountryLookup.h"
#include "views/MainFormContext.h"
#include "views/ServerDetails.h"
#include "views/ServerSearch.h"
#include "views/TargetRows.h"
#include "views/clsQuickList.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace quarn {

class ServerListView {
  public:
    ServerListView(const MainFormContext& form, ServerDetails& details, CountryLookup& countries);

    // Number of the MOD whose servers are shown, 0: all.
    std::int32_t ModFilter = 0;

    // Whether the record passes the MOD, password and ping filters and the search; false as well when the
    // test fails.
    bool ValidateFilter(std::int32_t index);

    // Adds rows for the entries after PreviousServerCount and shows the count of the whole list.
    void ListServers(bool lookUpCountry = false);
    void AddServerListItem(std::int32_t index, bool lookUpCountry);

    // Updates a row from a record: the current server's, after its query, or the given one. A row whose tag
    // names a record that no longer passes the filters is removed.
    void UpdateServerListItem(std::int32_t row);
    void UpdateServerListItem(std::int32_t row, std::int32_t index);

    // Updates the row of a record, whatever the current server is. A record that passes the filters and has
    // no row gets one: a late reply may undo the effect of a time-out.
    void UpdateRowOf(std::int32_t index, std::int32_t row);

    void ResetServerViews();

    // Lists every entry again, from row 1 on.
    void Relist();

    // Puts rows that were listed or updated where the sort has them (KeepSorted), unless a scan runs or a
    // mouse button is down: then they wait for its end.
    void SortWaitingRows();

    // Asks whether the list may be deleted.
    bool AskToClear();

    // Asks, and empties the list on Yes.
    bool ConfirmClearServerList();

    // Panel 3 shows the length of the list. Call this wherever it changes.
    void ShowServerCount();

    // Appends a server that the user typed. True if it was added.
    bool AddServer(const std::string& IP, const std::string& strPort);

    // The rows that a command is for.
    TargetRows TargetsOf(GivenRows rows) const;

    // Runs a command on one server: the selected one of the given rows. `body` receives the rows and the
    // index of the server's record, which becomes the current server unless a scan is using its own; without
    // such a server it does not run.
    template<class Body>
    void CommandOnServer(CommandKind kind, const char* routine, OnError onError, GivenRows rows, Body body) {
        form_.Command(kind, routine, onError,
                      [this, targets = TargetsOf(std::move(rows)), body = std::move(body)] {
                          if (const std::int32_t index = TakeServer(targets); index != 0)
                              body(targets, index);
                      });
    }

    // The search box has another text or was switched on or off. The rows keep their sort order, and the
    // selected server stays selected if it is found.
    void txtSearch_Change();

    void lvwServers_Click();
    void lvwServers_KeyUp(std::int32_t keyCode);
    void lvwServers_MouseUp();
    void lvwServers_ColumnClick(std::int32_t column); // 1-based

    // Sorts as in the last run. A sort that fails does not change the stored column and order.
    void RestoreSort();

    void lvwPlayers_ColumnClick(std::int32_t column);
    void mnuServerListClear_Click();
    void mnuServerListExport_Click();
    void mnuServDelete_Click(GivenRows rows = {});
    void mnuServCopyAddress_Click(GivenRows rows = {});

  private:
    bool PassesFilters(const ServerRecord& server) const;
    std::int32_t TakeServer(const TargetRows& targets);
    bool SortServers(std::int32_t column);
    void PrepareSort();
    void SortLater();
    void Search(const std::string& text);
    void StoreSort(std::int32_t column);
    void ShowDetailsOf(std::int32_t index);
    void DeleteRows(const TargetRows& targets);
    void EmptyRecordsOf(const TargetRows& targets, std::vector<std::int32_t>& deleted);
    std::vector<std::int32_t> CompactServers();
    void SelectAfterDeletion(std::int32_t row, const std::vector<std::int32_t>& indexNow);

    MainFormContext form_;
    ServerDetails& details_;
    CountryLookup& countries_;
    std::uint32_t shownSelection_ = 0; // by the user, whose details were shown last
    ServerSearch search_;
    bool keepsArrow_ = false; // while rows are listed that are sorted afterwards
    clsQuickList serverSorter_;
    clsQuickList playerSorter_;
};

} // namespace quarn
