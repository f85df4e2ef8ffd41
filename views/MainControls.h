#pragma once

// The main window's controls, under their names, as models. The form's parts work on these; the window shows
// them and passes the user's actions to the form's handlers.

#include "base/Geometry.h"
#include "base/OneBased.h"
#include "controls/ListView.h"
#include "controls/Menu.h"
#include "controls/ProgressBar.h"
#include "controls/StatusBar.h"
#include "controls/TextBox.h"
#include "controls/Timer.h"
#include "controls/Toolbar.h"
#include "controls/TreeView.h"
#include "controls/UdpSocket.h"
#include "core/modDefinitions.h"
#include "query/QueryPorts.h"
#include "views/ServerColumns.h"

namespace quarn {

// Panels of sbMain.
enum StatusPanelNumber {
    MessagePanel = 1,
    ProgressPanel,
    CountPanel,
    CapsLockPanel,
    NumLockPanel,
    ScrollLockPanel
};

// The button that opens the Add to Favorites menu.
inline constexpr const char* FavoritesButton = "favorites";

// Where Form_Resize placed the lists; the window moves its controls there.
struct MainLayout {
    TwipsRect trvGames;
    TwipsRect lvwServers;
    TwipsRect lvwPlayers;
    TwipsRect lvwServVars;
    bool operator==(const MainLayout&) const = default;
};

struct MainControls {
    // Sets what is fixed by design: columns, buttons, panels and menu entries.
    MainControls(UdpSocket& master, UdpSocketFactory& serverSockets, const Clock& clock);

    TreeView trvGames;
    ListView lvwServers;
    ListView lvwPlayers;
    ListView lvwServVars;
    Toolbar tbMain;
    TextBox txtSearch; // at the right end of the toolbar
    StatusBar sbMain;
    ProgressBar pbScanning;
    UdpSocket& sckMaster;
    Timer tmrTimeout;
    Timer tmrMaster;      // gives up a silent master
    Timer tmrPorts;       // closes the ports of finished queries
    Timer tmrDeadlines;   // of queries that run at once
    QueryPorts sckServer; // a port for each query
    Timer tmrSorting;     // runs while rows wait to be put where the sort has them
    Timer tmrTreeRest;    // ticks when the keyboard's selection has stayed on a node of the tree

    MenuEntry mnuServer;
    MenuEntry mnuServerList;
    MenuEntry mnuServerListExport;
    OneBased<MenuEntry> mnuServAddToFavorites; // 1..9

    MainLayout layout;

    void SetStatus(std::int32_t panel, const std::string& text) { sbMain.panels[panel].text = text; }
};

} // namespace quarn
