#include "views/ServerListView.h"

#include "base/Conversions.h"
#include "base/Scope.h"
#include "support/Trap.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace quarn {

namespace {

// Only the limits that the filter nodes offer filter; a settings file may hold anything else.
bool IsPingLimit(std::int32_t value) {
    return value == 20 || value == 50 || value == 100;
}

// The keys whose release moves the selection.
bool MovesSelection(std::int32_t keyCode) {
    return keyCode >= 33 && keyCode <= 40 && keyCode != 37 && keyCode != 39;
}

// A settings file may hold any number; one that 16 bits do not hold stays outside the columns.
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
    return !IsPingLimit(form_.program.FilterPing) || server.Ping <= form_.program.FilterPing;
}

// Thousands of rows take their time, so events run in between; what would change the list or its records
// waits.
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
        form_.controls.SetStatus(CountPanel, std::to_string(form_.program.ServerCount) + " servers");
    });
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
        list.Edit(row).main.tag = std::to_string(index);
        list.Edit(row).subject = form_.program.IdentityOf(index);
        FillServerRow(list, row, server, form_.desktop.locale, CellsOf::NewRow);
    });
}

void ServerListView::UpdateServerListItem(std::int32_t row) {
    form_.Trapped("UpdateServerListItem", OnError::Log, [&] {
        ListView& list = form_.controls.lvwServers;
        if (!ValidateFilter(ToLong(list.Row(row).main.tag))) {
            list.Remove(row);
            return;
        }
        FillServerRow(list, row, form_.program.Servers[form_.program.CurrentServer], form_.desktop.locale,
                      CellsOf::UpdatedRow);
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
    });
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

bool ServerListView::ConfirmClearServerList() {
    if (!form_.desktop.prompts.AskYesNo("This will delete your current server list. All servers and scanning "
                                        "data in it will be lost.\r\nAre you sure you want to proceed?",
                                        "Clear server list"))
        return false;
    form_.controls.sckServer.CloseAll();
    form_.program.Servers.Reset();
    ResetServerViews();
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

void ServerListView::AddServer(const std::string& IP, const std::string& strPort) {
    form_.Command(CommandKind::Ordinary, "AddServer", OnError::LogAndShow, [this, IP, strPort] {
        const std::int32_t port = form_.desktop.locale.ToLong(strPort);
        ServerRecord& server = form_.program.AppendServer();
        server.Address = IP;
        server.Port = port;
        countries_.ForgetFailure();
        AddServerListItem(form_.program.ServerCount, true);
    });
}

bool ServerListView::TakeSelectedServer() {
    const ListView& list = form_.controls.lvwServers;
    const std::int32_t row = list.SelectedRow();
    if (row == 0)
        return false;
    form_.program.CurrentServer = ToLong(list.Row(row).main.tag);
    return form_.program.Servers.Holds(form_.program.CurrentServer);
}

void ServerListView::lvwServers_Click() {
    // Waits as well: rows and records of one list do not belong to those of another that is just in memory.
    form_.Command(CommandKind::Ordinary, "lvwServers_Click", OnError::Log, [this] {
        const ListView& list = form_.controls.lvwServers;
        const std::int32_t row = list.SelectedRow();
        if (row == 0)
            return;
        form_.program.CurrentServer = ToLong(list.Row(row).main.tag);
        details_.RefreshPlayers();
        details_.RefreshVariables();
    });
}

void ServerListView::lvwServers_KeyUp(std::int32_t keyCode) {
    if (MovesSelection(keyCode))
        lvwServers_Click();
}

void ServerListView::lvwServers_MouseUp() {
    const std::int32_t row = form_.controls.lvwServers.SelectedRow();
    if (row != 0)
        form_.program.LastServer = row;
}

void ServerListView::lvwServers_ColumnClick(std::int32_t column) {
    form_.gate.Run(CommandKind::Ordinary, [this, column] {
        const CommandGate::ListActivity activity(form_.gate);
        serverSorter_.SortList(ColumnIndex(column));
        form_.program.LastSortColumn = column;
        form_.program.LastSortOrder = static_cast<std::int32_t>(form_.controls.lvwServers.sortOrder);
    });
}

void ServerListView::lvwPlayers_ColumnClick(std::int32_t column) {
    playerSorter_.SortList(ColumnIndex(column));
}

void ServerListView::mnuServCopyAddress_Click() {
    form_.Command(CommandKind::Ordinary, "mnuServCopyAddress_Click", OnError::LogAndShow, [this] {
        if (TakeSelectedServer())
            form_.desktop.shell.SetClipboardText(
                AddressText(form_.program.Servers[form_.program.CurrentServer]));
    });
}

void ServerListView::mnuServDelete_Click() {
    form_.Command(CommandKind::ReplacesList, "mnuServDelete_Click", OnError::LogAndShow, [this] {
        if (form_.controls.lvwServers.SelectedRow() == 0)
            return;
        DeleteSelectedRows();
        CompactServers();
    });
}

void ServerListView::DeleteSelectedRows() {
    ListView& list = form_.controls.lvwServers;
    std::vector<std::int32_t> deleted;
    const Finally removeRows([&] { list.RemoveRows(deleted); }); // also when a tag ends the loop
    for (std::int32_t row = 1; row <= list.RowCount(); ++row) {
        if (!list.Row(row).selected)
            continue;
        const std::int32_t index = ToLong(list.Row(row).main.tag);
        form_.program.Servers[index].Address.clear();
        deleted.push_back(row);
    }
}

// The rows that remain keep their tags until the next listing.
void ServerListView::CompactServers() {
    ProgramState& program = form_.program;
    const std::int32_t last = program.LastServerIndex();
    const bool currentGone = !program.Servers.Holds(program.CurrentServer) ||
                             program.Servers[program.CurrentServer].Address.empty();
    std::int32_t kept = 0;
    for (std::int32_t index = 1; index <= last; ++index) {
        if (program.Servers[index].Address.empty())
            continue;
        ++kept;
        if (kept != index)
            program.Servers[kept] = std::move(program.Servers[index]);
    }
    program.ServerCount = kept;
    program.Servers.Resize(kept);
    program.CurrentServer = 0;
    if (currentGone)
        details_.Clear();
}

} // namespace quarn
