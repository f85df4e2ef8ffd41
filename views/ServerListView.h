#pragma once

// The list of servers: one row for each record that passes the filters. A row's tag holds the index of its
// record; it is not renumbered when records go, so every use of a tag is checked.

#include "views/CountryLookup.h"
#include "views/MainFormContext.h"
#include "views/ServerDetails.h"
#include "views/clsQuickList.h"

#include <cstdint>
#include <string>

namespace quarn {

class ServerListView {
  public:
    ServerListView(const MainFormContext& form, ServerDetails& details, CountryLookup& countries);

    // Number of the MOD whose servers are shown, 0: all.
    std::int32_t ModFilter = 0;

    // Whether the record passes the MOD, password and ping filters; false as well when the test fails.
    bool ValidateFilter(std::int32_t index);

    // Adds rows for the entries after PreviousServerCount and shows the count of the whole list.
    void ListServers(bool lookUpCountry = false);
    void AddServerListItem(std::int32_t index, bool lookUpCountry);

    // Brings a row up to date with the current server after its query; removes it if the record that its tag
    // names no longer passes the filters.
    void UpdateServerListItem(std::int32_t row);

    // Brings the row of a record up to date whatever the current server is. A record that passes the filters
    // and has no row gets one: a late reply may undo what a time-out took away.
    void UpdateRowOf(std::int32_t index, std::int32_t row);

    void ResetServerViews();

    // Asks, and empties the list on Yes.
    bool ConfirmClearServerList();

    // Appends a server that the user typed.
    void AddServer(const std::string& IP, const std::string& strPort);

    // The server of the selected row becomes the current one, also while another server is being queried: a
    // reply finds its server by itself. False when no server is selected.
    bool TakeSelectedServer();

    void lvwServers_Click();
    void lvwServers_KeyUp(std::int32_t keyCode);
    void lvwServers_MouseUp();
    void lvwServers_ColumnClick(std::int32_t column); // 1-based
    void lvwPlayers_ColumnClick(std::int32_t column);
    void mnuServerListClear_Click();
    void mnuServerListExport_Click();
    void mnuServDelete_Click();
    void mnuServCopyAddress_Click();

  private:
    bool PassesFilters(const ServerRecord& server) const;
    void DeleteSelectedRows();
    void CompactServers();

    MainFormContext form_;
    ServerDetails& details_;
    CountryLookup& countries_;
    clsQuickList serverSorter_;
    clsQuickList playerSorter_;
};

} // namespace quarn
