#include "tests/fakes/UserActions.h"

#include <algorithm>
#include <stdexcept>

namespace quarn {

namespace {

// Without a key, one of the tree's nodes by number. The tree may have lost the node of a key.
void ClickNode(HeadlessBrowser& b, const ActionArguments& node) {
    const TreeView& tree = b.Controls().trvGames;
    const std::string key = node.text.empty() ? tree.At(node.number % tree.Count() + 1).key : node.text;
    if (tree.Has(key))
        b.ClickNode(key);
}

void SelectRange(HeadlessBrowser& b, const ActionArguments& range) {
    ListView& list = b.Controls().lvwServers;
    const std::int32_t first = b.AnyRow(range.number);
    const std::int32_t last = b.AnyRow(range.last);
    list.NoteSelected(1, list.RowCount(), false);
    if (first == 0)
        return;
    list.NoteSelected(std::min(first, last), std::max(first, last), true);
    list.NoteFocused(first);
}

void ClickRow(HeadlessBrowser& b, const ActionArguments& row) {
    if (b.RowCount() > 0)
        b.ClickRow(b.AnyRow(row.number));
}

void DoubleClickRow(HeadlessBrowser& b, const ActionArguments& row) {
    const std::int32_t clicked = b.AnyRow(row.number);
    b.Form().lvwServers_DblClick(clicked == 0 ? 0 : b.Controls().lvwServers.Row(clicked).identity);
}

// The user changes every field. The bits and remainders of the number choose the values.
void UseOptions(HeadlessBrowser& b, const ActionArguments& choices) {
    b.dialogs.inOptions = [choices](frmOptions& form) {
        form.txtScanPingTimeout = choices.text;
        form.chkMinToTray = choices.number & 1;
        form.chkKeepOnTop = choices.number >> 1 & 1;
        form.optQuitAfterLaunch = choices.number % 4 - 1;
        form.cmbNumFavorites = choices.number % 10 - 1;
        if (choices.accept)
            form.cmdOK_Click();
    };
    b.Form().dialogs.mnuExtrasOptions_Click();
}

// The user changes one game. The number chooses which one and what is clicked.
void UseGameSetup(HeadlessBrowser& b, const ActionArguments& choices) {
    b.dialogs.inGamSetup = [choices](frmGamSetup& form) {
        if (!form.HasSelection())
            return form.cmdOK_Click();
        const std::size_t item = static_cast<std::size_t>(choices.number) % form.lvwGameSel.size();
        form.lvwGameSel_ItemClick(form.lvwGameSel[item].key);
        form.txtPath = choices.text;
        form.txtPath_Change();
        form.txtConfig = choices.text;
        form.txtConfig_Change();
        form.chkVisible = choices.number / 4 % 2;
        form.chkVisible_Click();
        if (choices.number % 3 == 0)
            form.cmdBrowse_Click();
        if (choices.accept)
            form.cmdOK_Click();
    };
    b.Form().dialogs.mnuExtrasGameSetup_Click();
}

void TypeServer(HeadlessBrowser& b, const ActionArguments& server) {
    b.dialogs.inAddServer = [server](frmAddServer& form) {
        form.txtIP = server.text;
        form.txtPort = server.secondText;
        form.cmdOK_Click();
    };
    b.Form().dialogs.mnuTreeAddServer_Click("fav2");
}

void TypePassword(HeadlessBrowser& b, const ActionArguments& password) {
    b.dialogs.inSetPassword = [password](frmSetPassword& form) {
        form.txtPass = password.text;
        if (password.accept)
            form.cmdOK_Click();
    };
    b.Form().dialogs.mnuServSetPass_Click();
}

// The new name is the answer to a prompt. The second text is the key of a node to select before.
void Rename(HeadlessBrowser& b, const ActionArguments& node) {
    if (!node.secondText.empty())
        b.Controls().trvGames.Select(node.secondText);
    b.Form().tree.mnuTreeRename_Click();
}

// In the box that the options show.
void Search(HeadlessBrowser& b, const ActionArguments& sought) {
    b.Controls().txtSearch.visible = true;
    b.Controls().txtSearch.text = sought.text;
    b.Form().servers.txtSearch_Change();
}

void ChangeWindow(HeadlessBrowser& b, const ActionArguments& choice) {
    b.window.innerSize = {choice.number * 100, choice.number * 70};
    b.window.SetState(static_cast<WindowState>(choice.number % 3));
    b.Form().Form_Resize();
}

void GoIntoTheTrayAndBack(HeadlessBrowser& b, const ActionArguments&) {
    b.window.SetState(WindowState::Minimized);
    b.Form().mnuSysOpen_Click();
}

using B = HeadlessBrowser;
using A = ActionArguments;

} // namespace

const std::vector<UserAction>& UserActions() {
    static const std::vector<UserAction> actions = {
        {"refresh all", 'a', [](B& b, const A&) { b.RefreshAll(); }},
        {"refresh selected", 's', [](B& b, const A&) { b.RefreshSelected(); }},
        {"stop", 'x', [](B& b, const A&) { b.Stop(); }},
        {"renew", 'q', [](B& b, const A&) { b.Form().tbMain_ButtonClick("querymaster"); }},
        {"clear", 'C', [](B& b, const A&) { b.Form().servers.mnuServerListClear_Click(); }},
        {"export", 'e', [](B& b, const A&) { b.Form().servers.mnuServerListExport_Click(); }},
        {"recheck", 'l', [](B& b, const A&) { b.Form().countries.mnuRecheckCountries_Click(); }},
        {"delete", 'd', [](B& b, const A&) { b.Form().servers.mnuServDelete_Click(); }, "", {}, true},
        {"copy the address", 'y', [](B& b, const A&) { b.Form().servers.mnuServCopyAddress_Click(); }},
        {"join", 'j', [](B& b, const A&) { b.Form().tbMain_ButtonClick("join"); }},
        {"spectate", 'J', [](B& b, const A&) { b.Form().game.mnuServConnectSpec_Click(); }},
        {"monitor", 'm', [](B& b, const A&) { b.Form().tbMain_ButtonClick("monitor"); }},
        {"about", 'i', [](B& b, const A&) { b.Form().dialogs.mnuInfoAbout_Click(); }},
        {"help", 'B', [](B& b, const A&) { b.Form().mnuInfoHelp_Click(); }},
        {"start the program again", 'G', [](B& b, const A&) { b.Form().StartedAgain(); }},
        {"into the tray and back", 'Y', GoIntoTheTrayAndBack},
        {"change the window", 'z', ChangeWindow, "n", {{"resize", {.number = 90}}}},
        {"click a node",
         'n',
         ClickNode,
         "n",
         {{"another game", {.text = "d3"}},
          {"a third game", {.text = "hl"}},
          {"the game", {.text = "q3"}},
          {"a MOD", {.text = "mod1"}},
          {"a favorites folder", {.text = "fav2"}},
          {"a folder", {.text = "games"}},
          {"the lock filter", {.text = "fltkey"}},
          {"a ping filter", {.text = "png100"}},
          {"the ping folder", {.text = "fltping"}}}},
        {"rename", 'R', Rename, "t", {{"rename", {.text = "Renamed", .secondText = "fav1"}}}},
        {"select rows", 'r', SelectRange, "nn", {{"select all rows", {.last = -1}}}},
        {"click a row", 'c', ClickRow, "n", {{"click the last row", {.number = -1}}}},
        {"double-click a row", 'D', DoubleClickRow, "n", {{"double-click the first row", {}}}},
        {"press a key",
         'k',
         [](B& b, const A& key) { b.Form().servers.lvwServers_KeyUp(key.number); },
         "n",
         {{"press the Down key", {.number = 40}}}},
        {"sort",
         'o',
         [](B& b, const A& column) { b.Form().servers.lvwServers_ColumnClick(column.number); },
         "n",
         {{"sort", {.number = 4}}}},
        {"sort the players",
         'O',
         [](B& b, const A& column) { b.Form().servers.lvwPlayers_ColumnClick(column.number); },
         "n",
         {{"sort the players", {.number = 3}}}},
        {"search", 'K', Search, "t", {{"search", {.text = "live"}}}},
        {"add to a folder",
         'f',
         [](B& b, const A& folder) { b.Form().tree.mnuServAddToFavorites_Click(folder.number); },
         "n",
         {{"add to a folder", {.number = 1}}},
         true},
        {"type a server",
         'A',
         TypeServer,
         "tt",
         {{"type a server", {.text = "typed.example", .secondText = "27960"}}}},
        {"type a password", 'p', TypePassword, "t", {{"type a password", {.text = "secret"}}}},
        {"options",
         'P',
         UseOptions,
         "nt",
         {{"options", {.number = 33, .text = "700"}}, {"options, cancelled", {.accept = false}}}},
        {"game setup",
         'g',
         UseGameSetup,
         "nt",
         {{"game setup", {.number = 4, .text = "C:\\Arena"}},
          {"game setup, cancelled", {.number = 1, .accept = false}}}},
    };
    return actions;
}

void Act(HeadlessBrowser& browser, std::string_view name, const ActionArguments& arguments) {
    const auto action = std::ranges::find(UserActions(), name, &UserAction::name);
    if (action == UserActions().end())
        throw std::invalid_argument("no such action: " + std::string(name));
    action->run(browser, arguments);
}

} // namespace quarn
