#include "tests/views/Interruptions.h"

#include <utility>

namespace quarn {

using gamenet::Family;

namespace {

void Serve(BusyBrowser& browser, Family family, int block) {
    for (const std::string& address : HeadlessBrowser::Block(block, 5))
        browser.network.servers[address] = MakeServer(family, "Live " + address, "map", "mod");
}

// What the network, the timer and other parts of the program do.
const std::vector<Command> OtherCommands = {
    {"click the current node",
     [](BusyBrowser& b) { Act(b, "click a node", {.text = b.Controls().trvGames.SelectedKey()}); }},
    {"add a server", [](BusyBrowser& b) { b.Form().servers.AddServer("127.0.17.1", "27960"); }},
    {"a master's reply",
     [](BusyBrowser& b) {
         if (b.program.CurrentGame == "q3") // another list's master was never asked
             b.sckMaster.ReplyIn(0, MasterDatagram(Family::Quake3, HeadlessBrowser::Block(MasterBlock, 2)));
     }},
    {"an unexpected datagram", [](BusyBrowser& b) { b.sckServer.ReplyIn(0, "\xFF\xFF\xFF\xFFprint\nx\n"); }},
    {"a tick", [](BusyBrowser& b) { b.Form().scan.tmrTimeout_Timer(); }},
    {"new settings",
     [](BusyBrowser& b) {
         b.program.GameVisible[2] = 0;
         b.program.PingTimeout = 300;
         b.Form().RefreshInterface();
         b.Form().tree.RefreshTreeView();
         b.Form().tree.RefreshFavMenu();
     }},
};

std::vector<Command> EveryCommand() {
    std::vector<Command> commands = OtherCommands;
    for (const UserAction& action : UserActions()) {
        const std::vector<ActionExample> itself = {{action.name, {}}};
        for (const ActionExample& example : action.examples.empty() ? itself : action.examples)
            commands.push_back({example.name,
                                [&action, example](BusyBrowser& b) { action.run(b, example.arguments); },
                                action.replacesRecords});
    }
    return commands;
}

} // namespace

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
}

const std::vector<Command>& Commands() {
    static const std::vector<Command> commands = EveryCommand();
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
        {"while a server is queried",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             b.In(30, meanwhile);
             b.RefreshAll();
         }},
        {"while a silent server is queried",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             b.In(100, meanwhile);
             b.RefreshAll();
         }},
        {"while selected servers are queried",
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
        {"while the list is restored",
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
        {"while the list of the current node is saved in a scan",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             b.In(30, [&b, meanwhile] {
                 AtYield(b, 2, meanwhile);
                 b.ClickNode("q3");
             });
             b.RefreshAll();
         }},
        {"while the rows of a list are removed",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             AtYield(b, 3, meanwhile);
             Act(b, "click a node", {.text = "fltkey"});
         }},
        {"while servers are listed",
         [](BusyBrowser& b, const std::function<void()>& meanwhile) {
             AtYield(b, b.RowCount() + 3, meanwhile);
             Act(b, "click a node", {.text = "fltkey"});
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
        {"when nothing else is running",
         [](BusyBrowser&, const std::function<void()>& meanwhile) { meanwhile(); }},
    };
    return places;
}

namespace {

using Meanwhile = std::function<void()>;

// Prompts and dialogs may open inside each other; it happens in the first.
Meanwhile Once(const Meanwhile& meanwhile) {
    return [meanwhile, first = true]() mutable {
        if (std::exchange(first, false))
            meanwhile();
    };
}

// While the first prompt is open that the action leads to.
Place InAPrompt(const char* name, const char* action, const ActionArguments& arguments = {}) {
    return {name, [action, arguments](BusyBrowser& b, const Meanwhile& meanwhile) {
                b.fake.prompts.whileOpen = Once(meanwhile);
                b.SelectRows({1});
                Act(b, action, arguments);
            }};
}

// While the action's dialog is open.
Place InADialog(const char* name, const char* action, const ActionArguments& arguments = {}) {
    return {name, [action, arguments](BusyBrowser& b, const Meanwhile& meanwhile) {
                b.dialogs.whileOpen = Once(meanwhile);
                b.SelectRows({1});
                Act(b, action, arguments);
            }};
}

Place InAnErrorMessage() {
    Place place = InAPrompt("while an error is shown", "copy the address");
    return {place.name, [run = place.run](BusyBrowser& b, const Meanwhile& meanwhile) {
                b.fake.shell.clipboardBlocked = true;
                run(b, meanwhile);
            }};
}

} // namespace

const std::vector<Place>& ModalPlaces() {
    static const std::vector<Place> places = {
        InAPrompt("while the user is asked whether to clear", "clear"),
        InAPrompt("while the user is asked whether to renew", "renew"),
        InAPrompt("while the user is asked for a file name", "export"),
        InAPrompt("while the user is asked for a new name", "rename", {.secondText = "fav1"}),
        InAnErrorMessage(),
        InAPrompt("while a folder is looked for", "game setup", {.number = 12, .text = "C:\\Arena"}),
        InADialog("in the game setup", "game setup", {.number = 4, .text = "C:\\Arena"}),
        InADialog("in the options", "options", {.number = 33, .text = "700"}),
        InADialog("while a password is typed", "type a password", {.text = "secret"}),
        InADialog("while a server is typed", "type a server", {.text = "127.0.17.1", .secondText = "27960"}),
        InAPrompt("while a typed address is refused", "type a server"),
        InADialog("in the About dialog", "about"),
    };
    return places;
}

} // namespace quarn
