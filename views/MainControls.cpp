#include "views/MainControls.h"

#include <initializer_list>

namespace quarn {

namespace {

void SetColumns(ListView& list, std::initializer_list<ListColumn> columns) {
    list.columns.Reset(static_cast<std::int32_t>(columns.size()));
    std::int32_t number = 0;
    for (const ListColumn& column : columns)
        list.columns[++number] = column;
}

void SetButtons(Toolbar& toolbar, std::initializer_list<ToolbarButton> buttons) {
    toolbar.buttons.Reset(static_cast<std::int32_t>(buttons.size()));
    std::int32_t position = 0;
    for (const ToolbarButton& button : buttons)
        toolbar.buttons[++position] = button;
}

void SetPanels(StatusBar& statusBar) {
    statusBar.panels.Reset(ScrollLockPanel);
    statusBar.panels[MessagePanel].text = "Ready.";
    statusBar.panels[MessagePanel].toolTip = "Current program messages";
    statusBar.panels[ProgressPanel].toolTip = "Server query status";
    statusBar.panels[CountPanel].toolTip = "Number of servers in current list";
    statusBar.panels[CapsLockPanel].kind = StatusPanel::Kind::CapsLock;
    statusBar.panels[NumLockPanel].kind = StatusPanel::Kind::NumLock;
    statusBar.panels[ScrollLockPanel].kind = StatusPanel::Kind::ScrollLock;
}

const ToolbarButton Separator;

} // namespace

MainControls::MainControls(UdpSocket& master, UdpSocket& server) : sckMaster(master), sckServer(server) {
    SetColumns(lvwServers, {{"", "PICTURE", ""},
                            {"IP Address", "STRING", ""},
                            {"Location", "STRING", ""},
                            {"Name", "STRING", ""},
                            {"Players", "NUMBER", ""},
                            {"Ping", "NUMBER", ""},
                            {"Game", "STRING", ""},
                            {"Map", "STRING", ""},
                            {"Last Visit", "DATE", ""}});
    SetColumns(lvwPlayers, {{"Name", "STRING", ""}, {"Score", "NUMBER", ""}, {"Ping", "NUMBER", ""}});
    SetColumns(lvwServVars, {{"Variable", "", ""}, {"Value", "", ""}});
    SetButtons(tbMain, {{"querymaster", "Get new server list from Master"},
                        Separator,
                        {"refreshall", "Refresh all servers in list"},
                        {"refresh", "Refresh selected server(s)"},
                        {"stop", "Stop current operation"},
                        Separator,
                        {"join", "Join server as player"},
                        {"monitor", "Monitor server with Velmar"},
                        Separator,
                        {"favorites", "Add server to favorites"}});
    SetPanels(sbMain);
    mnuServAddToFavorites.Reset(MaxFavoritesFolders);
    for (std::int32_t i = 1; i <= MaxFavoritesFolders; ++i)
        mnuServAddToFavorites[i].caption = "fav";
}

} // namespace quarn
