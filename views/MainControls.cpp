#include "views/MainControls.h"

#include "views/ToolbarButtons.h"

#include <initializer_list>

namespace quarn {

namespace {

void SetColumns(ListView& list, std::initializer_list<ListColumn> columns) {
    list.columns.Reset(static_cast<std::int32_t>(columns.size()));
    std::int32_t number = 0;
    for (const ListColumn& column : columns)
        list.columns[++number] = column;
}

// Precision of the deadlines of simultaneous queries, in milliseconds.
constexpr std::int32_t DeadlineInterval = 20;

// How soon rows move to their place after they were updated, in milliseconds.
constexpr std::int32_t SortingInterval = 100;

void SetPanels(StatusBar& statusBar) {
    statusBar.panels.Reset(ScrollLockPanel);
    using Kind = StatusPanel::Kind;
    constexpr std::int32_t LockKeyWidth = 720;
    statusBar.panels[MessagePanel] = {
        .text = "Ready.", .toolTip = "Current program messages", .leastWidth = 3600};
    statusBar.panels[ProgressPanel] = {
        .toolTip = "Server query status", .designWidth = 2700, .leastWidth = 1200};
    statusBar.panels[CountPanel] = {
        .toolTip = "Number of servers in current list", .designWidth = 1950, .leastWidth = 1950};
    statusBar.panels[CapsLockPanel] = {.kind = Kind::CapsLock, .designWidth = LockKeyWidth};
    statusBar.panels[NumLockPanel] = {.kind = Kind::NumLock, .designWidth = LockKeyWidth};
    statusBar.panels[ScrollLockPanel] = {.kind = Kind::ScrollLock, .designWidth = LockKeyWidth};
}

} // namespace

MainControls::MainControls(UdpSocket& master, UdpSocketFactory& serverSockets, const Clock& clock)
    : sckMaster(master), sckServer(serverSockets, clock, tmrPorts) {
    AddServerColumns(lvwServers);
    SetColumns(lvwPlayers, {{.text = "Name", .tag = "STRING", .width = 1500, .fills = true},
                            {.text = "Score", .tag = "NUMBER", .width = 960, .alignment = Alignment::Right},
                            {.text = "Ping", .tag = "NUMBER", .width = 960, .alignment = Alignment::Right}});
    SetColumns(lvwServVars,
               {{.text = "Variable", .width = 2250}, {.text = "Value", .width = 1500, .fills = true}});
    AddToolbarButtons(tbMain);
    SetPanels(sbMain);
    pbScanning.toolTip = sbMain.panels[ProgressPanel].toolTip;
    txtSearch = {.name = "Search servers", .cue = "Search", .visible = false};
    tmrDeadlines.SetInterval(DeadlineInterval);
    tmrSorting.SetInterval(SortingInterval);
    mnuServAddToFavorites.Reset(MaxFavoritesFolders);
    for (std::int32_t i = 1; i <= MaxFavoritesFolders; ++i)
        mnuServAddToFavorites[i].caption = "fav";
}

} // namespace quarn
