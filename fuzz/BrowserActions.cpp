#include "fuzz/BrowserActions.h"

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

namespace quarn::fuzz {

namespace {

using gamenet::Family;

struct Entry {
    char letter;
    Action (*make)(FuzzedBrowser& b, ByteScript& script);
};

Family FamilyOf(const FuzzedBrowser& b) {
    return b.program.CurrentGame == "d3"   ? Family::Doom3
           : b.program.CurrentGame == "hl" ? Family::HalfLife
                                           : Family::Quake3;
}

// A master's reply to the game in force with this body.
std::string MasterReply(const FuzzedBrowser& b, const std::string& body) {
    static constexpr std::string_view Headers[] = {"\xFF\xFF\xFF\xFFgetserversResponse\\",
                                                   {"\xFF\xFFservers\0", 10},
                                                   "\xFF\xFF\xFF\xFF"
                                                   "f\n\\"};
    return std::string(Headers[static_cast<int>(FamilyOf(b))]) + body;
}

void PutHonestServer(FuzzedBrowser& b, std::int32_t row) {
    if (row == 0)
        return;
    std::string address = b.Cell(row, AddressColumn);
    const EmulatedServer server = MakeServer(FamilyOf(b), "Live " + address, "map", "osp", row % 3 == 0);
    b.network.servers.insert_or_assign(std::move(address), server);
}

void SelectRange(FuzzedBrowser& b, std::int32_t first, std::int32_t last) {
    ListView& list = b.Controls().lvwServers;
    list.NoteSelected(1, list.RowCount(), false);
    if (first == 0)
        return;
    list.NoteSelected(std::min(first, last), std::max(first, last), true);
    list.NoteFocused(first);
}

// The list files, and what else the program writes.
std::string AnyFile(std::int32_t number) {
    static constexpr const char* Names[] = {"servers-q3.dat",   "servers-d3.dat",   "servers-hl.dat",
                                            "servers-fav1.dat", "servers-fav2.dat", "servers-games.dat",
                                            "countryip.dat",    "Quarn.log",        "Quarn.ini.new"};
    return std::string("C:\\Quarn\\") + Names[static_cast<std::size_t>(number) % std::size(Names)];
}

void FailFile(FuzzedBrowser& b, std::int32_t number, std::int32_t kind) {
    switch (kind % 4) {
    case 0:
        b.fake.files.FailReads(AnyFile(number), ErrorNumber::PermissionDenied);
        break;
    case 1:
        b.fake.files.FailWrites(AnyFile(number), ErrorNumber::PermissionDenied);
        break;
    case 2:
        b.fake.files.freeBytes = static_cast<std::size_t>(number);
        break;
    default:
        b.fake.files.ClearFaults();
        b.fake.files.freeBytes.reset();
        break;
    }
}

// The user changes every field and leaves by OK or by Cancel.
void UseOptions(FuzzedBrowser& b, const std::string& timeout, std::int32_t choices) {
    b.dialogs.inOptions = [&b, timeout, choices](frmOptions& form) {
        b.fake.events.RunFor(b.boxOpenFor);
        form.txtScanPingTimeout = timeout;
        form.chkMinToTray = choices & 1;
        form.chkKeepOnTop = choices >> 1 & 1;
        form.optQuitAfterLaunch = choices % 4 - 1;
        form.cmbNumFavorites = choices % 10 - 1;
        if (b.answer)
            form.cmdOK_Click();
    };
    b.Form().dialogs.mnuExtrasOptions_Click();
}

void UseGameSetup(FuzzedBrowser& b, const std::string& path, std::int32_t choices) {
    b.dialogs.inGamSetup = [&b, path, choices](frmGamSetup& form) {
        b.fake.events.RunFor(b.boxOpenFor);
        if (!form.HasSelection())
            return form.cmdOK_Click();
        const std::size_t item = static_cast<std::size_t>(choices) % form.lvwGameSel.size();
        form.lvwGameSel_ItemClick(form.lvwGameSel[item].key);
        form.txtPath = path;
        form.txtPath_Change();
        form.txtConfig = path;
        form.txtConfig_Change();
        form.chkVisible = choices / 4 % 2;
        form.chkVisible_Click();
        if (choices % 3 == 0)
            form.cmdBrowse_Click();
        if (b.answer)
            form.cmdOK_Click();
    };
    b.Form().dialogs.mnuExtrasGameSetup_Click();
}

void TypeServer(FuzzedBrowser& b, const std::string& address, const std::string& port) {
    b.dialogs.inAddServer = [&b, address, port](frmAddServer& form) {
        b.fake.events.RunFor(b.boxOpenFor);
        form.txtIP = address;
        form.txtPort = port;
        form.cmdOK_Click();
    };
    b.Form().dialogs.mnuServAdd_Click();
}

void SetPassword(FuzzedBrowser& b, const std::string& password) {
    b.dialogs.inSetPassword = [&b, password](frmSetPassword& form) {
        b.fake.events.RunFor(b.boxOpenFor);
        form.txtPass = password;
        if (b.answer)
            form.cmdOK_Click();
    };
    b.Form().dialogs.mnuServSetPass_Click();
}

void ChangeWindow(FuzzedBrowser& b, std::int32_t choice) {
    b.window.innerSize = {choice * 100, choice * 70};
    b.window.SetState(static_cast<WindowState>(choice % 3));
    b.Form().Form_Resize();
}

// NOLINTBEGIN(bugprone-exception-escape): what a captured copy may throw is the fuzzer's to find.
constexpr Entry UserActions[] = {
    {'q',
     [](FuzzedBrowser& b, ByteScript&) -> Action {
         return [&b] { b.Form().tbMain_ButtonClick("querymaster"); };
     }},
    {'a', [](FuzzedBrowser& b, ByteScript&) -> Action { return [&b] { b.RefreshAll(); }; }},
    {'s', [](FuzzedBrowser& b, ByteScript&) -> Action { return [&b] { b.RefreshSelected(); }; }},
    {'x', [](FuzzedBrowser& b, ByteScript&) -> Action { return [&b] { b.Stop(); }; }},
    {'n',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, node = s.Number()] { b.ClickNode(b.AnyNode(node)); };
     }},
    {'r',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         const std::int32_t first = s.Number();
         return [&b, first, last = s.Number()] { SelectRange(b, b.AnyRow(first), b.AnyRow(last)); };
     }},
    {'c',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, row = s.Number()] {
             if (b.AnyRow(row) != 0)
                 b.ClickRow(b.AnyRow(row));
         };
     }},
    {'k',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, key = s.Number()] { b.Form().servers.lvwServers_KeyUp(key); };
     }},
    {'d',
     [](FuzzedBrowser& b, ByteScript&) -> Action {
         return [&b] {
             b.NoteStaleRows();
             b.Form().servers.mnuServDelete_Click();
         };
     }},
    {'C',
     [](FuzzedBrowser& b, ByteScript&) -> Action {
         return [&b] { b.Form().servers.mnuServerListClear_Click(); };
     }},
    {'A',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         std::string address = s.Text();
         return [&b, address, port = s.Text()] { TypeServer(b, address, port); };
     }},
    {'f',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, folder = s.Number()] {
             b.NoteStaleRows();
             b.Form().tree.mnuServAddToFavorites_Click(folder);
         };
     }},
    {'R',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, name = s.Text()] {
             b.text = name;
             b.Form().tree.mnuTreeRename_Click();
         };
     }},
    {'o',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, column = s.Number()] { b.Form().servers.lvwServers_ColumnClick(column); };
     }},
    {'O',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, column = s.Number()] { b.Form().servers.lvwPlayers_ColumnClick(column); };
     }},
    {'y',
     [](FuzzedBrowser& b, ByteScript&) -> Action {
         return [&b] { b.Form().servers.mnuServCopyAddress_Click(); };
     }},
    {'e',
     [](FuzzedBrowser& b, ByteScript&) -> Action {
         return [&b] { b.Form().servers.mnuServerListExport_Click(); };
     }},
    {'l',
     [](FuzzedBrowser& b, ByteScript&) -> Action {
         return [&b] { b.Form().countries.mnuRecheckCountries_Click(); };
     }},
    {'p',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, password = s.Text()] { SetPassword(b, password); };
     }},
    {'j',
     [](FuzzedBrowser& b, ByteScript&) -> Action {
         return [&b] { b.Form().game.mnuServConnectPlay_Click(); };
     }},
    {'J',
     [](FuzzedBrowser& b, ByteScript&) -> Action {
         return [&b] { b.Form().game.mnuServConnectSpec_Click(); };
     }},
    {'m',
     [](FuzzedBrowser& b, ByteScript&) -> Action {
         return [&b] { b.Form().tbMain_ButtonClick("monitor"); };
     }},
    {'i',
     [](FuzzedBrowser& b, ByteScript&) -> Action { return [&b] { b.Form().dialogs.mnuInfoAbout_Click(); }; }},
    {'P',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         const std::int32_t choices = s.Number();
         return [&b, choices, timeout = s.Text()] { UseOptions(b, timeout, choices); };
     }},
    {'g',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         const std::int32_t choices = s.Number();
         return [&b, choices, path = s.Text()] { UseGameSetup(b, path, choices); };
     }},
    {'z',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, choice = s.Number()] { ChangeWindow(b, choice); };
     }},
    {'D',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, row = s.Number()] {
             const std::int32_t clicked = b.AnyRow(row);
             b.Form().lvwServers_DblClick(clicked == 0 ? 0 : b.Controls().lvwServers.Row(clicked).identity);
         };
     }},
};

constexpr Entry OtherActions[] = {
    {'S',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, datagram = s.Text()] { b.Deliver(b.sckServer, datagram); };
     }},
    {'M',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, datagram = s.Text()] { b.Deliver(b.sckMaster, datagram); };
     }},
    {'H',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, body = s.Text()] { b.Deliver(b.sckMaster, MasterReply(b, body)); };
     }},
    {'N',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, datagram = s.Text()] { b.AnswerNextWith(datagram); };
     }},
    {'h',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, row = s.Number()] { PutHonestServer(b, b.AnyRow(row)); };
     }},
    {'t',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, time = s.Number()] { b.fake.events.RunFor(time * 10); };
     }},
    {'T', [](FuzzedBrowser& b, ByteScript&) -> Action { return [&b] { b.Form().scan.tmrTimeout_Timer(); }; }},
    {'w',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, time = s.Number()] {
             b.sckServer.closeMilliseconds = b.sckMaster.closeMilliseconds = time % 50;
             b.sckMaster.lookUpMilliseconds = time;
         };
     }},
    {'v',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, failure = s.Text()] { b.sckMaster.sendFailure = b.sckServer.sendFailure = failure; };
     }},
    {'F',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         const std::int32_t file = s.Number();
         return [&b, file, kind = s.Number()] { FailFile(b, file, kind); };
     }},
    {'L',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         const std::int32_t file = s.Number();
         return [&b, file, content = s.Text()] { b.PutFile(AnyFile(file), content); };
     }},
    {'W',
     [](FuzzedBrowser& b, ByteScript&) -> Action {
         return [&b] { b.fake.clock.SetTickCount(std::numeric_limits<std::int32_t>::max() - 20); };
     }},
    {'V',
     [](FuzzedBrowser& b, ByteScript&) -> Action {
         return [&b] { b.fake.clock.SetNow({2001, 1, 1, 0, 0, 0}); };
     }},
    {'?', [](FuzzedBrowser& b, ByteScript&) -> Action { return [&b] { b.answer = !b.answer; }; }},
    {'b',
     [](FuzzedBrowser& b, ByteScript& s) -> Action {
         return [&b, time = s.Number()] { b.boxOpenFor = time; };
     }},
    {'U', [](FuzzedBrowser& b, ByteScript&) -> Action { return [&b] { b.Form().Unload(); }; }},
    {'E', [](FuzzedBrowser& b, ByteScript&) -> Action { return [&b] { b.Form().EndSession(); }; }},
};
// NOLINTEND(bugprone-exception-escape)

} // namespace

Action ReadAction(FuzzedBrowser& browser, ByteScript& script) {
    const char letter = script.Letter();
    const auto isAsked = [&](const Entry& entry) { return entry.letter == letter; };
    if (const auto user = std::ranges::find_if(UserActions, isAsked); user != std::end(UserActions))
        return [&browser, act = user->make(browser, script)] {
            if (browser.UserCanAct())
                act();
        };
    const auto other = std::ranges::find_if(OtherActions, isAsked);
    return other == std::end(OtherActions) ? Action() : other->make(browser, script);
}

} // namespace quarn::fuzz
