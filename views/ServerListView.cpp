#include "views/ServerListView.h"

#include "base/Conversions.h"
#include "base/Scope.h"
#include "support/Trap.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace quarn {

namespace {

// Only the limits of the filter nodes have an effect; a settings file may contain anything else.
bool IsPingLimit(std::int32_t value) {
    return value == 20 || value == 50 || value == 100;
}

// The keys that move the selection; their release always shows the details.
bool MovesSelection(std::int32_t keyCode) {
    return keyCode >= 33 && keyCode <= 40 && keyCode != 37 && keyCode != 39;
}

// A settings file may contain any number; one outside 16 bits stays outside the columns.
std::int16_t ColumnIndex(std::int32_t column) {
    return static_cast<std::int16_t>(std::clamp<std::int32_t>(
        column, std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max()));
}

} // namespace

ServerListView::ServerListView(const MainFormContext& form, ServerDetails& details, CountryLookup& countries)
    : form_(form),
      details_(details),
      countries_(countries),
      serverSorter_(*form.program.AppLog, form.desktop, [this] { form_.gate.LetEventsRun(); }),
      playerSorter_(*form.program.AppLog, form.desktop) {
    serverSorter_.SetTargetList(form_.controls.lvwServers);
    playerSorter_.SetTargetList(form_.controls.lvwPlayers);
    form_.controls.tmrSorting.Tick = [this] {
        form_.Command(CommandKind::Ordinary, "tmrSorting_Timer", OnError::Log, [this] { SortWaitingRows(); });
    };
}

bool ServerListView::ValidateFilter(std::int32_t index) {
    bool passes = false;
    form_.Trapped("ValidateFilter", OnError::Log,
                  [&] { passes = PassesFilters(form_.program.Servers[index]); });
    return passes;
}

bool ServerListView::PassesFilters(const ServerRecord& server) const {
    if (ModFilter != 0 && server.ModName != form_.program.Mods[ModFilter].GameName)
        return false;
    const std::int64_t openOnly = form_.program.FilterLocked != 0 ? 1 : 0;
    if (server.Locked + openOnly >= 2)
        return false;
    if (IsPingLimit(form_.program.FilterPing) && server.Ping > form_.program.FilterPing)
        return false;
    return search_.Finds(server);
}

// Thousands of rows take a while, so events run in between; commands that would change the list or its
// records wait.
void ServerListView::ListServers(bool lookUpCountry) {
    const CommandGate::ListActivity activity(form_.gate);
    form_.Trapped("ListServers", OnError::Log, [&] {
        const std::int32_t last = form_.program.LastServerIndex();
        for (std::int32_t index = form_.program.PreviousServerCount + 1; index <= last; ++index) {
            const bool isHole = form_.program.Servers[index].Address.empty();
            if (!isHole && ValidateFilter(index))
                AddServerListItem(index, lookUpCountry);
            form_.gate.LetEventsRun();
        }
        ShowServerCount();
    });
}

void ServerListView::ShowServerCount() {
    form_.controls.SetStatus(CountPanel, std::to_string(form_.program.ServerCount) + " servers");
}

void ServerListView::AddServerListItem(std::int32_t index, bool lookUpCountry) {
    form_.Trapped("AddServerListItem", OnError::Log, [&] {
        // Loading the database shows a status text, which lets events run.
        if (lookUpCountry) {
            const std::string country = countries_.CountryOf(form_.program.Servers[index].Address);
            form_.program.Servers[index].Country = country;
        }
        const ServerRecord& server = form_.program.Servers[index];
        ListView& list = form_.controls.lvwServers;
        const std::int32_t row = list.Add();
        // The new row is at the end, whatever its texts.
        if (form_.program.KeepSorted != 0)
            SortLater();
        else if (!keepsArrow_)
            serverSorter_.ClearArrow();
        list.Edit(row).main.tag = std::to_string(index);
        list.Edit(row).subject = form_.program.IdentityOf(index);
        FillServerRow(list, row, server, form_.desktop.locale, CellsOf::NewRow);
    });
}

void ServerListView::UpdateServerListItem(std::int32_t row) {
    UpdateServerListItem(row, form_.program.CurrentServer);
}

void ServerListView::UpdateServerListItem(std::int32_t row, std::int32_t index) {
    form_.Trapped("UpdateServerListItem", OnError::Log, [&] {
        ListView& list = form_.controls.lvwServers;
        if (!ValidateFilter(ToLong(list.Row(row).main.tag))) {
            list.Remove(row);
            return;
        }
        FillServerRow(list, row, form_.program.Servers[index], form_.desktop.locale, CellsOf::UpdatedRow);
        SortLater();
    });
}

void ServerListView::UpdateRowOf(std::int32_t index, std::int32_t row) {
    form_.Trapped("UpdateServerListItem", OnError::Log, [&] {
        ListView& list = form_.controls.lvwServers;
        const bool passes = ValidateFilter(index);
        if (row == 0 && passes)
            AddServerListItem(index, false);
        else if (row != 0 && passes)
            FillServerRow(list, row, form_.program.Servers[index], form_.desktop.locale, CellsOf::UpdatedRow);
        else if (row != 0)
            list.Remove(row);
        SortLater();
    });
}

void ServerListView::Relist() {
    const CommandGate::ListActivity activity(form_.gate);
    ResetServerViews();
    ListServers();
    SortWaitingRows();
    if (form_.controls.lvwServers.RowCount() > 0)
        form_.controls.lvwServers.EnsureVisible(1);
}

void ServerListView::ResetServerViews() {
    countries_.ForgetFailure();
    ListView::Rows discarded = form_.controls.lvwServers.TakeRows();
    details_.Clear();
    form_.program.PreviousServerCount = 0;
    form_.program.ServerCount = form_.program.Servers.HighestIndex();
    form_.program.CurrentServer = 0;

    const CommandGate::ListActivity activity(form_.gate);
    for (; !discarded.empty(); discarded.pop_back())
        form_.gate.LetEventsRun();
}

bool ServerListView::AskToClear() {
    return form_.desktop.prompts.AskYesNo(
        "This will delete your current server list. All servers and scanning "
        "data in it will be lost.\r\nAre you sure you want to proceed?",
        "Clear server list");
}

bool ServerListView::ConfirmClearServerList() {
    if (!AskToClear())
        return false;
    form_.controls.sckServer.CloseAll();
    form_.program.Servers.Reset();
    ResetServerViews();
    ShowServerCount();
    return true;
}

void ServerListView::mnuServerListClear_Click() {
    form_.Command(CommandKind::ReplacesList, "mnuServerListClear_Click", OnError::LogAndShow,
                  [this] { ConfirmClearServerList(); });
}

void ServerListView::mnuServerListExport_Click() {
    form_.Command(CommandKind::Ordinary, "mnuServerListExport_Click", OnError::LogAndShow, [this] {
        const std::string fileName = form_.desktop.prompts.AskSaveFile(
            "Save serverlist as...", "Text file (*.txt)|*.txt|All files (*.*)|*.*");
        if (!fileName.empty())
            serverSorter_.SaveListToFile(fileName);
    });
}

bool ServerListView::AddServer(const std::string& IP, const std::string& strPort) {
    const auto added = std::make_shared<bool>(false); // the command may run later
    form_.Command(CommandKind::Ordinary, "AddServer", OnError::LogAndShow, [this, IP, strPort, added] {
        const std::int32_t port = form_.desktop.locale.ToLong(strPort);
        ServerRecord& server = form_.program.AppendServer();
        server.Address = IP;
        server.Port = port;
        countries_.ForgetFailure();
        AddServerListItem(form_.program.ServerCount, true);
        ShowServerCount();
        ListView& list = form_.controls.lvwServers;
        const std::uint32_t identity = list.Row(list.RowCount()).identity;
        SortWaitingRows();
        list.EnsureVisible(list.RowOf(identity, list.RowCount()));
        *added = true;
    });
    return *added;
}

TargetRows ServerListView::TargetsOf(GivenRows rows) const {
    return rows ? std::move(*rows) : TargetRows(form_.controls.lvwServers, form_.program);
}

// While a scan runs, the current server is the one that it queries.
std::int32_t ServerListView::TakeServer(const TargetRows& targets) {
    const std::int32_t index = targets.ServerIndex(form_.controls.lvwServers, form_.program);
    if (index != 0 && !form_.gate.ScanRuns())
        form_.program.CurrentServer = index;
    return index;
}

void ServerListView::ShowDetailsOf(std::int32_t index) {
    form_.program.CurrentServer = index;
    details_.RefreshPlayers();
    details_.RefreshVariables();
}

void ServerListView::lvwServers_Click() {
    shownSelection_ = form_.controls.lvwServers.SelectionsByUser();
    // This command waits, too: rows and records of one list do not match those of a list that is being
    // loaded.
    form_.Command(CommandKind::Ordinary, "lvwServers_Click", OnError::Log, [this] {
        const ListView& list = form_.controls.lvwServers;
        const std::int32_t row = list.SelectedRow();
        if (row != 0)
            ShowDetailsOf(ToLong(list.Row(row).main.tag));
    });
}

void ServerListView::lvwServers_KeyUp(std::int32_t keyCode) {
    const bool hasMovedIt = form_.controls.lvwServers.SelectionsByUser() != shownSelection_;
    if (MovesSelection(keyCode) || hasMovedIt)
        lvwServers_Click();
}

void ServerListView::lvwServers_MouseUp() {
    const std::int32_t row = form_.controls.lvwServers.SelectedRow();
    if (row != 0)
        form_.program.LastServer = row;
}

void ServerListView::lvwServers_ColumnClick(std::int32_t column) {
    form_.gate.Run(CommandKind::Ordinary, [this, column] {
        SortServers(column);
        StoreSort(column);
    });
}

bool ServerListView::SortServers(std::int32_t column) {
    const CommandGate::ListActivity activity(form_.gate);
    PrepareSort();
    return serverSorter_.SortList(ColumnIndex(column));
}

void ServerListView::PrepareSort() {
    serverSorter_.naturalOrder = form_.program.NaturalSort != 0;
    form_.controls.tmrSorting.SetEnabled(false);
}

// The timer runs as long as rows wait.
void ServerListView::SortLater() {
    if (form_.program.KeepSorted != 0 && serverSorter_.HasArrow())
        form_.controls.tmrSorting.SetEnabled(true);
}

void ServerListView::SortWaitingRows() {
    const bool wait = form_.gate.ScanRuns() || form_.window.IsMouseDown();
    if (wait || !form_.controls.tmrSorting.Enabled())
        return;
    const CommandGate::ListActivity activity(form_.gate);
    PrepareSort();
    serverSorter_.SortAgain();
}

void ServerListView::txtSearch_Change() {
    form_.Command(CommandKind::Ordinary, "txtSearch_Change", OnError::Log, [this] {
        // The text may have changed again while this had to wait.
        const TextBox& box = form_.controls.txtSearch;
        const std::string& text = box.visible ? box.text : std::string();
        if (text != search_.Text())
            Search(text);
    });
}

void ServerListView::Search(const std::string& text) {
    const CommandGate::ListActivity activity(form_.gate);
    ListView& list = form_.controls.lvwServers;
    const std::int32_t selected = list.SelectedRow();
    const std::uint32_t subject = selected == 0 ? 0 : list.Row(selected).subject;
    search_ = ServerSearch(text, form_.desktop.locale);
    {
        const Restore sorted(keepsArrow_, true);
        Relist();
    }
    PrepareSort();
    serverSorter_.SortAgain();

    const std::int32_t row = subject == 0 ? 0 : list.RowShowing(subject, 1);
    if (row == 0)
        return;
    list.SelectOnly(row);
    if (text.empty())
        list.EnsureVisible(row);
    if (!form_.gate.ScanRuns())
        ShowDetailsOf(ToLong(list.Row(row).main.tag));
}

void ServerListView::StoreSort(std::int32_t column) {
    form_.program.LastSortColumn = column;
    form_.program.LastSortOrder = static_cast<std::int32_t>(form_.controls.lvwServers.sortOrder);
}

// A sort reverses the order, so the inverse of the stored order is set first.
void ServerListView::RestoreSort() {
    const std::int32_t column = form_.program.LastSortColumn;
    form_.controls.lvwServers.sortOrder =
        form_.program.LastSortOrder != 0 ? SortOrder::Ascending : SortOrder::Descending;
    if (SortServers(column))
        StoreSort(column);
}

void ServerListView::lvwPlayers_ColumnClick(std::int32_t column) {
    playerSorter_.SortList(ColumnIndex(column));
}

void ServerListView::mnuServCopyAddress_Click(GivenRows rows) {
    CommandOnServer(CommandKind::Ordinary, "mnuServCopyAddress_Click", OnError::LogAndShow, std::move(rows),
                    [this](const TargetRows&, std::int32_t index) {
                        form_.desktop.shell.SetClipboardText(AddressText(form_.program.Servers[index]));
                    });
}

void ServerListView::mnuServDelete_Click(GivenRows rows) {
    form_.Command(CommandKind::ReplacesList, "mnuServDelete_Click", OnError::LogAndShow,
                  [this, targets = TargetsOf(std::move(rows))] {
                      if (!targets.Empty())
                          DeleteRows(targets);
                  });
}

void ServerListView::DeleteRows(const TargetRows& targets) {
    const ListView& list = form_.controls.lvwServers;
    const std::int32_t focused = list.FocusedRow();
    std::vector<std::int32_t> deleted;
    {
        // Also if a wrong tag ends the loop.
        const Finally removeRows([&] { form_.controls.lvwServers.RemoveRows(deleted); });
        EmptyRecordsOf(targets, deleted);
    }
    const std::vector<std::int32_t> indexNow = CompactServers();
    ShowServerCount();
    if (deleted.empty())
        return;
    const auto upToFocus = std::upper_bound(deleted.begin(), deleted.end(), focused);
    const bool isFocusDeleted = upToFocus != deleted.begin() && *std::prev(upToFocus) == focused;
    const auto deletedAbove = static_cast<std::int32_t>(upToFocus - deleted.begin()) - 1;
    SelectAfterDeletion(isFocusDeleted ? focused - deletedAbove : deleted.front(), indexNow);
}

// Removing a row moves the next one to its place, and the loop ends at the entry count; so a row counts by
// the place that it has by then.
void ServerListView::EmptyRecordsOf(const TargetRows& targets, std::vector<std::int32_t>& deleted) {
    const ListView& list = form_.controls.lvwServers;
    ProgramState& program = form_.program;
    std::int32_t kept = 0;
    for (std::int32_t row = 1; row <= list.RowCount() && kept < program.ServerCount; ++row) {
        if (!targets.Includes(list.Row(row), program)) {
            ++kept;
            continue;
        }
        program.Servers[ToLong(list.Row(row).main.tag)].Address.clear();
        deleted.push_back(row);
    }
}

// The remaining rows keep their tags until the next listing. Returns the new index of each record by its old
// one; 0 for removed records.
std::vector<std::int32_t> ServerListView::CompactServers() {
    ProgramState& program = form_.program;
    const std::int32_t last = program.LastServerIndex();
    std::vector<std::int32_t> indexNow(static_cast<std::size_t>(last) + 1);
    std::int32_t kept = 0;
    for (std::int32_t index = 1; index <= last; ++index) {
        if (program.Servers[index].Address.empty())
            continue;
        indexNow[static_cast<std::size_t>(index)] = ++kept;
        if (kept != index)
            program.Servers[kept] = std::move(program.Servers[index]);
    }
    program.ServerCount = kept;
    program.Servers.Resize(kept);
    program.CurrentServer = 0;
    return indexNow;
}

// A remaining selection is kept; otherwise the row that moved up is selected. The details are those of the
// server that the row shows, which its tag may no longer name.
void ServerListView::SelectAfterDeletion(std::int32_t row, const std::vector<std::int32_t>& indexNow) {
    ListView& list = form_.controls.lvwServers;
    details_.Clear();
    if (list.RowCount() == 0)
        return;
    if (list.SelectedRow() == 0)
        list.SelectOnly(std::min(row, list.RowCount()));
    const ListRow& selected = list.Row(list.SelectedRow());
    const std::int32_t tag = ToLong(selected.main.tag);
    const bool isKnown = tag >= 1 && static_cast<std::size_t>(tag) < indexNow.size();
    const std::int32_t index = isKnown ? indexNow[static_cast<std::size_t>(tag)] : 0;
    if (index != 0 && AddressText(form_.program.Servers[index]) == selected.subItems[AddressColumn - 1].text)
        ShowDetailsOf(index);
}

} // namespace quarn
