#include "tests/views/Interruptions.h"

#include <utility>

namespace quarn {

using gamenet::Family;

namespace {

void Serve(BusyBrowser& browser, Family family, int block) {
    for (const std::string& address : Block(block, 5))
        browser.network.servers[address] = MakeServer(family, "Live " + address, "map", "mod");
}

// A set-up may have taken the node away.
void Click(BusyBrowser& b, const std::string& key) {
    if (b.Controls().trvGames.Has(key))
        b.ClickNode(key);
}

} // namespace

std::vector<std::string> Block(int block, int count) {
    std::vector<std::string> servers;
    for (int i = 1; i <= count; ++i)
        servers.push_back("127.0." + std::to_string(block) + "." + std::to_string(i) + ":27960");
    return servers;
}

BusyBrowser::BusyBrowser() {
    PutList("q3", Block(Q3Block, 5));
    PutList("d3", Block(D3Block, 4));
    PutList("hl", Block(HLBlock, 3));
    PutList("fav1", Block(Favorites1Block, 2));
    PutList("fav2", Block(Favorites2Block, 2));
    fake.files.Put("C:\\Quarn\\countryip.dat", "1\r\n2130706432;2147483647;LO\r\n");
    Serve(*this, Family::Quake3, Q3Block);
    Serve(*this, Family::Doom3, D3Block);
    Serve(*this, Family::HalfLife, HLBlock);
    network.servers.erase(Block(Q3Block, 5)[3]); // one is silent
    fake.prompts.yesNoAnswers.assign(50, true);
    fake.prompts.textAnswers.assign(50, "Renamed");
    fake.prompts.fileAnswers.assign(50, "C:\\export.txt");
    fake.prompts.folderAnswers.assign(50, "C:\\Arena");
    fake.hosts.addresses["typed.example"] = "127.0.17.1";
    dialogs.inAddServer = [](frmAddServer& form) {
        form.txtIP = "typed.example";
        form.txtPort = "27960";
        form.cmdOK_Click();
    };
    dialogs.inSetPassword = [](frmSetPassword& form) {
        form.txtPass = "secret";
        form.cmdOK_Click();
    };
}

const std::vector<Command>& Commands() {
    static const std::vector<Command> commands = {
        {"refresh all", [](BusyBrowser& b) { b.RefreshAll(); }},
        {"refresh selected", [](BusyBrowser& b) { b.RefreshSelected(); }},
        {"stop", [](BusyBrowser& b) { b.Stop(); }},
        {"another game", [](BusyBrowser& b) { Click(b, "d3"); }},
        {"a third game", [](BusyBrowser& b) { Click(b, "hl"); }},
        {"the node in force", [](BusyBrowser& b) { Click(b, b.Controls().trvGames.SelectedKey()); }},
        {"the game", [](BusyBrowser& b) { Click(b, "q3"); }},
        {"a MOD", [](BusyBrowser& b) { Click(b, "mod1"); }},
        {"a favorites folder", [](BusyBrowser& b) { Click(b, "fav2"); }},
        {"a folder", [](BusyBrowser& b) { Click(b, "games"); }},
        {"the lock filter", [](BusyBrowser& b) { Click(b, "fltkey"); }},
        {"a ping filter", [](BusyBrowser& b) { Click(b, "png100"); }},
        {"the ping folder", [](BusyBrowser& b) { Click(b, "fltping"); }},
        {"renew", [](BusyBrowser& b) { b.Form().tbMain_ButtonClick("querymaster"); }},
        {"clear", [](BusyBrowser& b) { b.Form().servers.mnuServerListClear_Click(); }},
        {"delete", [](BusyBrowser& b) { b.Form().servers.mnuServDelete_Click(); }, true},
        {"add a server", [](BusyBrowser& b) { b.Form().servers.AddServer("127.0.17.1", "27960"); }},
        {"add to a folder", [](BusyBrowser& b) { b.Form().tree.mnuServAddToFavorites_Click(1); }, true},
        {"copy the address", [](BusyBrowser& b) { b.Form().servers.mnuServCopyAddress_Click(); }},
        {"export", [](BusyBrowser& b) { b.Form().servers.mnuServerListExport_Click(); }},
        {"rename",
         [](BusyBrowser& b) {
             b.Controls().trvGames.Select("fav1");
             b.Form().tree.mnuTreeRename_Click();
         }},
        {"sort", [](BusyBrowser& b) { b.Form().servers.lvwServers_ColumnClick(4); }},
        {"recheck", [](BusyBrowser& b) { b.Form().countries.mnuRecheckCountries_Click(); }},
        {"click the last row",
         [](BusyBrowser& b) {
             if (b.RowCount() > 0)
                 b.ClickRow(b.RowCount());
         }},
        {"select all rows",
         [](BusyBrowser& b) { b.Controls().lvwServers.NoteSelected(1, b.RowCount(), true); }},
        {"a master's reply",
         [](BusyBrowser& b) {
             if (b.program.CurrentGame == "q3") // another list's master was never asked
                 b.sckMaster.ReplyIn(0, MasterDatagram(Family::Quake3, Block(MasterBlock, 2)));
         }},
        {"a datagram for nobody",
         [](BusyBrowser& b) { b.sckServer.ReplyIn(0, "\xFF\xFF\xFF\xFFprint\nx\n"); }},
        {"a tick", [](BusyBrowser& b) { b.Form().scan.tmrTimeout_Timer(); }},
        {"a new set-up",
         [](BusyBrowser& b) {
             b.program.GameVisible[2] = 0;
             b.program.PingTimeout = 300;
             b.Form().RefreshInterface();
             b.Form().tree.RefreshTreeView();
             b.Form().tree.RefreshFavMenu();
         }},
        {"join", [](BusyBrowser& b) { b.Form().tbMain_ButtonClick("join"); }},
        {"monitor", [](BusyBrowser& b) { b.Form().tbMain_ButtonClick("monitor"); }},
        {"options", [](BusyBrowser& b) { b.Form().dialogs.mnuExtrasOptions_Click(); }},
        {"game setup", [](BusyBrowser& b) { b.Form().dialogs.mnuExtrasGameSetup_Click(); }},
        {"resize", [](BusyBrowser& b) { b.Form().Form_Resize(); }},
        {"spectate", [](BusyBrowser& b) { b.Form().game.mnuServConnectSpec_Click(); }},
        {"double-click the first row",
         [](BusyBrowser& b) {
             if (b.RowCount() > 0)
                 b.Form().lvwServers_DblClick(b.Controls().lvwServers.Row(1).identity);
         }},
        {"a password", [](BusyBrowser& b) { b.Form().dialogs.mnuServSetPass_Click(); }},
        {"type a server", [](BusyBrowser& b) { b.Form().dialogs.mnuTreeAddServer_Click("fav2"); }},
        {"about", [](BusyBrowser& b) { b.Form().dialogs.mnuInfoAbout_Click(); }},
        {"help", [](BusyBrowser& b) { b.Form().mnuInfoHelp_Click(); }},
        {"sort the players", [](BusyBrowser& b) { b.Form().servers.lvwPlayers_ColumnClick(3); }},
        {"a key that moves the selection", [](BusyBrowser& b) { b.Form().servers.lvwServers_KeyUp(40); }},
        {"into the tray and back",
         [](BusyBrowser& b) {
             b.window.SetState(WindowState::Minimized);
             b.Form().mnuSysOpen_Click();
         }},
    };
    return commands;
}

void AtYield(BusyBrowser& b, std::int32_t number, const std::function<void()>& meanwhile) {
    b.fake.events.doEventsCalls = 0;
    b.fake.events.whenYielding = [&b, number, meanwhile](std::int32_t call) {
        if (call == number)
            b.fake.events.Post(meanwhile);
    };
}

const std::vector<Place>& Places() {
    static const std::vector<Place> places = {
        {"while a server is asked",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             b.In(30, meanwhile);
             b.RefreshAll();
         }},
        {"while a silent server is asked",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             b.In(100, meanwhile);
             b.RefreshAll();
         }},
        {"while selected servers are asked",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             b.SelectRows({5, 2});
             b.In(10, meanwhile);
             b.RefreshSelected();
         }},
        {"while a socket closes",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             b.sckServer.closeMilliseconds = 10;
             b.In(25, meanwhile);
             b.RefreshAll();
         }},
        {"in a scan inside a scan",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             b.In(10, [&b, meanwhile] {
                 b.In(30, meanwhile);
                 b.RefreshAll();
             });
             b.RefreshAll();
         }},
        {"while a list is saved",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             AtYield(b, 3, meanwhile);
             b.ClickNode("d3");
         }},
        {"while a list is loaded",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             AtYield(b, 7, meanwhile);
             b.ClickNode("d3");
         }},
        {"while a folder is loaded",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             b.SelectRows({2});
             AtYield(b, 2, meanwhile);
             b.Form().tree.mnuServAddToFavorites_Click(1);
         },
         true},
        {"while a folder is saved",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             b.SelectRows({2});
             AtYield(b, 4, meanwhile);
             b.Form().tree.mnuServAddToFavorites_Click(1);
         },
         true},
        {"while the list comes back",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             b.SelectRows({2});
             AtYield(b, 8, meanwhile);
             b.Form().tree.mnuServAddToFavorites_Click(1);
         },
         true},
        {"while the master's socket closes",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             b.Form().tbMain_ButtonClick("querymaster");
             b.fake.events.RunFor(1);
             b.sckMaster.closeMilliseconds = 20;
             b.In(10, meanwhile);
             b.Form().tbMain_ButtonClick("querymaster");
         }},
        {"while the node in force is saved in a scan",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             b.In(30, [&b, meanwhile] {
                 AtYield(b, 2, meanwhile);
                 b.ClickNode("q3");
             });
             b.RefreshAll();
         }},
        {"while the rows of a list go",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             AtYield(b, 3, meanwhile);
             Click(b, "fltkey");
         }},
        {"while servers are listed",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             AtYield(b, b.RowCount() + 3, meanwhile);
             Click(b, "fltkey");
         }},
        {"while a list is sorted",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             AtYield(b, 3, meanwhile);
             b.Form().servers.lvwServers_ColumnClick(4);
         }},
        {"while a list is sorted in a scan",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             b.In(30, [&b, meanwhile] {
                 AtYield(b, 3, meanwhile);
                 b.Form().servers.lvwServers_ColumnClick(4);
             });
             b.RefreshAll();
         }},
        {"when nothing is at work",
         [](BusyBrowser&, const std::function<void()>& meanwhile) { meanwhile(); }},
    };
    return places;
}

namespace {

using Meanwhile = std::function<void()>;

// Boxes may come in boxes; it happens in the first.
void InABox(BusyBrowser& b, const Meanwhile& meanwhile) {
    b.fake.prompts.whileOpen = [meanwhile, first = true]() mutable {
        if (std::exchange(first, false))
            meanwhile();
    };
}

} // namespace

const std::vector<Place>& ModalPlaces() {
    static const std::vector<Place> places = {
        {"while it is asked whether to clear",
         [](BusyBrowser& b, const Meanwhile& meanwhile) {
             InABox(b, meanwhile);
             b.Form().servers.mnuServerListClear_Click();
         }},
        {"while it is asked whether to renew",
         [](BusyBrowser& b, const Meanwhile& meanwhile) {
             InABox(b, meanwhile);
             b.Form().tbMain_ButtonClick("querymaster");
         }},
        {"while a file name is asked for",
         [](BusyBrowser& b, const Meanwhile& meanwhile) {
             InABox(b, meanwhile);
             b.Form().servers.mnuServerListExport_Click();
         }},
        {"while a new name is asked for",
         [](BusyBrowser& b, const Meanwhile& meanwhile) {
             InABox(b, meanwhile);
             b.Controls().trvGames.Select("fav1");
             b.Form().tree.mnuTreeRename_Click();
         }},
        {"while an error is shown",
         [](BusyBrowser& b, const Meanwhile& meanwhile) {
             InABox(b, meanwhile);
             b.fake.shell.clipboardBlocked = true;
             b.SelectRows({1});
             b.Form().servers.mnuServCopyAddress_Click();
         }},
        {"while a folder is looked for",
         [](BusyBrowser& b, const Meanwhile& meanwhile) {
             InABox(b, meanwhile);
             b.dialogs.inGamSetup = [](frmGamSetup& form) {
                 form.cmdBrowse_Click();
                 form.cmdOK_Click();
             };
             b.Form().dialogs.mnuExtrasGameSetup_Click();
         }},
        {"in the game setup",
         [](BusyBrowser& b, const Meanwhile& meanwhile) {
             b.dialogs.inGamSetup = [meanwhile](frmGamSetup& form) {
                 meanwhile();
                 form.cmdOK_Click();
             };
             b.Form().dialogs.mnuExtrasGameSetup_Click();
         }},
        {"in the options",
         [](BusyBrowser& b, const Meanwhile& meanwhile) {
             b.dialogs.inOptions = [meanwhile](frmOptions& form) {
                 meanwhile();
                 form.txtScanPingTimeout = "700";
                 form.cmdOK_Click();
             };
             b.Form().dialogs.mnuExtrasOptions_Click();
         }},
        {"while a password is typed",
         [](BusyBrowser& b, const Meanwhile& meanwhile) {
             b.dialogs.inSetPassword = [meanwhile](frmSetPassword& form) {
                 meanwhile();
                 form.txtPass = "secret";
                 form.cmdOK_Click();
             };
             b.SelectRows({1});
             b.Form().dialogs.mnuServSetPass_Click();
         }},
        {"while a server is typed",
         [](BusyBrowser& b, const Meanwhile& meanwhile) {
             b.dialogs.inAddServer = [meanwhile](frmAddServer& form) {
                 meanwhile();
                 form.txtIP = "127.0.17.1";
                 form.txtPort = "27960";
                 form.cmdOK_Click();
             };
             b.Form().dialogs.mnuServAdd_Click();
         }},
        {"while a typed address is refused",
         [](BusyBrowser& b, const Meanwhile& meanwhile) {
             InABox(b, meanwhile);
             b.dialogs.inAddServer = [](frmAddServer& form) { form.cmdOK_Click(); };
             b.Form().dialogs.mnuServAdd_Click();
         }},
        {"in the About box",
         [](BusyBrowser& b, const Meanwhile& meanwhile) {
             b.dialogs.inAbout = [meanwhile](frmAbout& form) {
                 meanwhile();
                 form.cmdOK_Click();
             };
             b.Form().dialogs.mnuInfoAbout_Click();
         }},
    };
    return places;
}

} // namespace quarn
