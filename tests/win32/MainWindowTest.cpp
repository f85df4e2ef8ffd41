#include "win32/MainWindow.h"
#include "tests/win32/ShownWindowTest.h"

#include "support/clsAppLog.h"
#include "tests/win32/harness/DialogDriver.h"
#include "tests/win32/harness/Pumping.h"
#include "tests/win32/harness/ReplacedImport.h"
#include "win32/resources/ids.h"

#include <gtest/gtest.h>

#include <commctrl.h>
#include <map>
#include <memory>
#include <set>
#include <shellapi.h>
#include <vector>

namespace quarn {
namespace {

class MainWindowTest : public ShownWindowTest {};

TEST_F(MainWindowTest, ShowsItsCaptionAndAllItsControls) {
    char caption[100] = "";
    GetWindowTextA(window->Handle(), caption, sizeof caption);
    EXPECT_EQ(std::string(caption).substr(0, 6), "Quarn ");
    for (const int id : {ID_trvGames, ID_lvwServers, ID_lvwPlayers, ID_lvwServVars, ID_tbMain, ID_sbMain})
        EXPECT_TRUE(IsWindowVisible(Control(id))) << id;
    EXPECT_TRUE(IsWindowVisible(GetDlgItem(Control(ID_sbMain), ID_pbScanning)));
}

TEST_F(MainWindowTest, PassesOnWhatTheUserDoesInItsLists) {
    const auto notify = [&](int id, UINT code, int column = 0) {
        NMLISTVIEW notification{};
        notification.hdr = {Control(id), static_cast<UINT_PTR>(id), code};
        notification.iSubItem = column;
        SendMessageA(window->Handle(), WM_NOTIFY, static_cast<WPARAM>(id),
                     reinterpret_cast<LPARAM>(&notification));
    };
    ListServers(3);
    program.LastServer = 0;
    Models().lvwServers.NoteSelected(2, 2, true);
    notify(ID_lvwServers, NM_RCLICK); // the button was released
    EXPECT_EQ(program.LastServer, 2);
    EXPECT_NE(program.CurrentServer, 2);
    notify(ID_lvwServers, NM_CLICK);
    EXPECT_EQ(program.CurrentServer, 2);
    Models().lvwServers.SelectOnly(3);
    SendMessageA(Control(ID_lvwServers), WM_KEYUP, VK_DOWN, 1);
    EXPECT_EQ(program.CurrentServer, 3);

    DialogDriver driver(window->Handle(), {[](HWND box) {
                            EXPECT_EQ(DialogDriver::TextOf(box), "Quarn - Error"); // the game is not set up
                            DialogDriver::Press(box, IDOK);
                        }});
    notify(ID_lvwServers, LVN_ITEMACTIVATE);
    RunPendingEvents();
    EXPECT_EQ(driver.StepsLeft(), 0U) << "the server is not joined";

    for (const SortOrder order : {SortOrder::Ascending, SortOrder::Descending}) {
        notify(ID_lvwServers, LVN_COLUMNCLICK); // of the name
        EXPECT_EQ(Models().lvwServers.sortKey, NameColumn);
        EXPECT_EQ(Models().lvwServers.sortOrder, order);
        notify(ID_lvwPlayers, LVN_COLUMNCLICK, 2);
        EXPECT_EQ(Models().lvwPlayers.sortKey, 2);
    }
}

TEST_F(MainWindowTest, BringsTheListUpToDateAtTheFlush) {
    for (int i = 0; i < 300; ++i)
        Models().lvwServers.Add();
    EXPECT_EQ(SendMessageA(Control(ID_lvwServers), LVM_GETITEMCOUNT, 0, 0), 0);
    window->FlushModels();
    EXPECT_EQ(SendMessageA(Control(ID_lvwServers), LVM_GETITEMCOUNT, 0, 0), 300);
}

TEST_F(MainWindowTest, NamesTheFavoritesFoldersAsTheyAreCalled) {
    EXPECT_EQ(CaptionOf(ID_mnuServAddToFavorites1), "Friends && Foes");
    EXPECT_EQ(CaptionOf(ID_mnuServAddToFavorites2), "-");
    EXPECT_EQ(GetMenuState(GetMenu(window->Handle()), ID_mnuServAddToFavorites2, MF_BYCOMMAND) & MF_SEPARATOR,
              0U);
    EXPECT_EQ(CaptionOf(ID_mnuServAddToFavorites3), ""); // there are two folders
}

TEST_F(MainWindowTest, KeepsAnEntryForAFolderWithoutAName) {
    Models().mnuServAddToFavorites[1].caption.clear();
    window->FlushModels();
    const UINT state = GetMenuState(GetMenu(window->Handle()), ID_mnuServAddToFavorites1, MF_BYCOMMAND);
    EXPECT_EQ(state & MF_SEPARATOR, 0U);
    EXPECT_NE(CaptionOf(ID_mnuServAddToFavorites1), "Friends && Foes");
}

TEST_F(MainWindowTest, GraysCommandsThatTheModelsDisable) {
    EXPECT_TRUE(IsEnabled(ID_mnuServerListExport));
    Models().mnuServerListExport.enabled = false;
    Models().mnuServAddToFavorites[1].enabled = false;
    window->FlushModels();
    EXPECT_FALSE(IsEnabled(ID_mnuServerListExport));
    EXPECT_FALSE(IsEnabled(ID_mnuServAddToFavorites1));
    EXPECT_TRUE(IsEnabled(ID_mnuServAddToFavorites2));
}

TEST_F(MainWindowTest, RunsNoCommandOfADisabledMenu) {
    ListServers(3);
    Models().lvwServers.SelectOnly(1);
    DialogDriver driver(window->Handle(), {[](HWND question) { DialogDriver::Press(question, IDYES); }});
    Models().mnuServer.enabled = false;
    window->RunCommand(ID_mnuServDelete);
    EXPECT_EQ(Models().lvwServers.RowCount(), 3);
    Models().mnuServer.enabled = true;
    window->RunCommand(ID_mnuServDelete);
    EXPECT_EQ(Models().lvwServers.RowCount(), 2);

    Models().mnuServerList.enabled = false;
    window->RunCommand(ID_mnuServerListClear);
    EXPECT_EQ(Models().lvwServers.RowCount(), 2);
    EXPECT_EQ(driver.StepsLeft(), 1U);
    Models().mnuServerList.enabled = true;
    window->RunCommand(ID_mnuServerListClear);
    EXPECT_EQ(Models().lvwServers.RowCount(), 0);
    EXPECT_EQ(driver.StepsLeft(), 0U);
}

TEST_F(MainWindowTest, NamesItsColumns) {
    const auto headersOf = [&](int id) {
        const auto header = reinterpret_cast<HWND>(SendMessageA(Control(id), LVM_GETHEADER, 0, 0));
        std::set<std::string> texts;
        for (WPARAM item = 0; item < static_cast<WPARAM>(SendMessageA(header, HDM_GETITEMCOUNT, 0, 0));
             ++item) {
            char text[100] = "";
            HDITEMA query{};
            query.mask = HDI_TEXT;
            query.pszText = text;
            query.cchTextMax = sizeof text;
            SendMessageA(header, HDM_GETITEMA, item, reinterpret_cast<LPARAM>(&query));
            texts.insert(text);
        }
        return texts;
    };
    using Texts = std::set<std::string>;
    EXPECT_EQ(headersOf(ID_lvwServers),
              (Texts{"", "IP Address", "Location", "Name", "Players", "Ping", "Game", "Map", "Last Visit"}));
    EXPECT_EQ(headersOf(ID_lvwPlayers), (Texts{"Name", "Score", "Ping"}));
    EXPECT_EQ(headersOf(ID_lvwServVars), (Texts{"Variable", "Value"}));
}

TEST_F(MainWindowTest, AlignsItsColumns) {
    const ListView& model = Models().lvwServers;
    std::map<std::string, int> shown;
    for (WPARAM subItem = 0; subItem < static_cast<WPARAM>(model.columns.HighestIndex()); ++subItem) {
        char text[100] = "";
        LVCOLUMNA column{};
        column.mask = LVCF_TEXT | LVCF_FMT;
        column.pszText = text;
        column.cchTextMax = sizeof text;
        SendMessageA(Control(ID_lvwServers), LVM_GETCOLUMNA, subItem, reinterpret_cast<LPARAM>(&column));
        shown[text] = column.fmt & LVCFMT_JUSTIFYMASK;
    }
    for (std::int32_t number = 1; number <= model.columns.HighestIndex(); ++number) {
        const ListColumn& column = model.columns[number];
        EXPECT_EQ(shown[column.text], column.alignment == Alignment::Right ? LVCFMT_RIGHT : LVCFMT_LEFT);
    }
    EXPECT_EQ(shown["Ping"], LVCFMT_RIGHT);
    EXPECT_EQ(shown["Name"], LVCFMT_LEFT);
}

TEST_F(MainWindowTest, StopsAtItsListsAndItsFieldWithTab) {
    for (const int id : {ID_trvGames, ID_lvwServers, ID_lvwPlayers, ID_lvwServVars, ID_txtSearch})
        EXPECT_NE(GetWindowLongPtrA(Control(id), GWL_STYLE) & WS_TABSTOP, 0) << id;
}

TEST_F(MainWindowTest, GivesItsControlsTheirImages) {
    EXPECT_NE(SendMessageA(Control(ID_trvGames), TVM_GETIMAGELIST, TVSIL_NORMAL, 0), 0);
    for (const int list : {ID_lvwServers, ID_lvwPlayers}) {
        const LRESULT header = SendMessageA(Control(list), LVM_GETHEADER, 0, 0);
        EXPECT_NE(SendMessageA(reinterpret_cast<HWND>(header), HDM_GETIMAGELIST, 0, 0), 0) << list;
    }
    EXPECT_NE(SendMessageA(Control(ID_tbMain), TB_GETIMAGELIST, 0, 0), 0);
    EXPECT_NE(SendMessageA(Control(ID_tbMain), TB_GETDISABLEDIMAGELIST, 0, 0), 0);
}

TEST_F(MainWindowTest, GraysTheEntriesThatCouldDoNothing) {
    const UINT entries[] = {ID_mnuServConnectPlay, ID_mnuServConnectSpec, ID_mnuServSetPass,
                            ID_mnuServRefresh,     ID_mnuServDelete,      ID_mnuServMonitor,
                            ID_mnuServCopyAddress};
    const HMENU menu = GetSubMenu(GetMenu(window->Handle()), 1);
    const auto open = [&] { SendMessageA(window->Handle(), WM_INITMENUPOPUP, (WPARAM)menu, 1); };
    ListServers(2);
    open();
    for (const UINT entry : entries)
        EXPECT_FALSE(IsEnabled(entry)) << entry;
    for (const UINT entry : {ID_mnuServRefreshAll, ID_mnuServAdd, ID_mnuServFavoritesAdd})
        EXPECT_TRUE(IsEnabled(entry)) << entry;
    Models().lvwServers.SelectOnly(2);
    open();
    for (const UINT entry : entries)
        EXPECT_TRUE(IsEnabled(entry)) << entry;
}

TEST_F(MainWindowTest, GraysRenameOnEveryNodeButAFavoritesFolder) {
    const HMENU menus = LoadMenuA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(IDR_POPUP_MENUS));
    const HMENU menu = GetSubMenu(menus, 1);
    const std::pair<const char*, bool> cases[] = {{"fav1", true},   {"favorites", false}, {"q3", false},
                                                  {"games", false}, {"fltkey", false},    {"png20", false},
                                                  {"fav2", true}};
    for (const auto& [node, canRename] : cases) {
        Models().trvGames.Select(node);
        SendMessageA(window->Handle(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), 0);
        const UINT state = GetMenuState(menu, ID_mnuTreeRename, MF_BYCOMMAND);
        EXPECT_EQ((state & (MF_GRAYED | MF_DISABLED)) == 0, canRename) << node;
    }
    DestroyMenu(menus);
}

// The command of an entry of the bar comes as a message, and a scan may move the selection before.
TEST_F(MainWindowTest, AnEntryOfTheBarActsOnWhatWasSelectedWhenItWasChosen) {
    ListServers(4);
    Models().lvwServers.SelectOnly(2);
    PostMessageA(window->Handle(), WM_COMMAND, ID_mnuServDelete, 0);
    SendMessageA(window->Handle(), WM_EXITMENULOOP, FALSE, 0);
    Models().lvwServers.SelectOnly(4);
    RunPendingEvents();
    EXPECT_EQ(Addresses(), (std::vector<std::string>{"10.0.0.1:1", "10.0.0.3:3", "10.0.0.4:4"}));

    // A menu that was left without a choice has no part in what comes later.
    SendMessageA(window->Handle(), WM_EXITMENULOOP, FALSE, 0);
    RunPendingEvents();
    Models().lvwServers.SelectOnly(1);
    PostMessageA(window->Handle(), WM_COMMAND, ID_mnuServDelete, 0);
    RunPendingEvents();
    EXPECT_EQ(Addresses().front(), "10.0.0.3:3");
}

WNDPROC ownProcedure = nullptr;
WPARAM notedUiState = 0;

// Notes what the window tells the system about the marks of the focus and of access keys.
LRESULT CALLBACK NoteUiState(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CHANGEUISTATE)
        notedUiState = wParam;
    return CallWindowProcA(ownProcedure, window, message, wParam, lParam);
}

TEST_F(MainWindowTest, ShowsTheFocusMarksOnceTabIsUsed) {
    SetFocus(Control(ID_trvGames));
    ownProcedure = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(window->Handle(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&NoteUiState)));
    notedUiState = 0;
    PressKey(ID_trvGames, VK_TAB);
    EXPECT_EQ(GetFocus(), Control(ID_lvwServers));
    EXPECT_EQ(notedUiState, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS));
    SetWindowLongPtrA(window->Handle(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ownProcedure));
}

TEST_F(MainWindowTest, AKeyThatIsHeldDownGivesItsCommandOnce) {
    ListServers(4);
    Models().lvwServers.SelectOnly(2);
    SetFocus(Control(ID_lvwServers));
    PressKey(ID_lvwServers, VK_DELETE, Repeated);
    EXPECT_EQ(Models().lvwServers.RowCount(), 4);
    PressKey(ID_lvwServers, VK_DELETE);
    PressKey(ID_lvwServers, VK_DELETE, Repeated);
    PressKey(ID_lvwServers, VK_DELETE, Repeated);
    EXPECT_EQ(Models().lvwServers.RowCount(), 3);
    PressKey(ID_lvwServers, VK_DELETE); // the key was released meanwhile
    EXPECT_EQ(Models().lvwServers.RowCount(), 2);
}

TEST_F(MainWindowTest, AKeyThatIsHeldDownStillMovesTheSelection) {
    ListServers(4);
    Models().lvwServers.SelectOnly(1);
    window->FlushModels();
    SetFocus(Control(ID_lvwServers));
    PressKey(ID_lvwServers, VK_DOWN, Repeated);
    PressKey(ID_lvwServers, VK_DOWN, Repeated);
    EXPECT_EQ(Models().lvwServers.SelectedRow(), 3);
}

TEST_F(MainWindowTest, TheProgressBarTellsWhatAScanWaitsFor) {
    struct Case {
        const char* name;
        UINT message;
        WPARAM wParam;
        bool pauses;
    };
    const Case cases[] = {{"a dialog", WM_ENTERIDLE, MSGF_DIALOGBOX, false},
                          {"a menu", WM_ENTERIDLE, MSGF_MENU, true},
                          {"moving the window", WM_ENTERSIZEMOVE, 0, true}};
    window->Form().servers.AddServer("127.0.0.1", "9"); // does not answer
    program.PingTimeout = 200;
    window->Form().RefreshInterface();
    Timer timer;
    const TimerWin ticking(timer);
    int looks = 0;
    timer.Tick = [&] {
        timer.SetEnabled(false);
        for (const Case& c : cases) {
            Models().pbScanning.toolTip = "text";
            SendMessageA(window->Handle(), c.message, c.wParam, 0);
            EXPECT_EQ(Models().pbScanning.toolTip != "text", c.pauses) << c.name;
            ++looks;
        }
    };
    timer.SetInterval(1);
    timer.SetEnabled(true);
    window->Form().scan.mnuServRefreshAll_Click();
    EXPECT_EQ(looks, 3);
}

TEST_F(MainWindowTest, ShowsChangesWhileAMessageBoxIsOpen) {
    DialogDriver driver(window->Handle(), {[&](HWND box) {
                            Models().lvwServers.Add();
                            EXPECT_TRUE(PumpUntil([&] {
                                return SendMessageA(Control(ID_lvwServers), LVM_GETITEMCOUNT, 0, 0) == 1;
                            }));
                            DialogDriver::Press(box, IDOK);
                        }});
    desktop.Prompts().ShowError("text", "title");
    EXPECT_EQ(driver.StepsLeft(), 0U);
    EXPECT_FALSE(KillTimer(window->Handle(), 2)); // it is needed no more
}

TEST_F(MainWindowTest, EndsTheProgramWhenItIsClosed) {
    PostMessageA(window->Handle(), WM_CLOSE, 0, 0);
    RunPendingEvents();
    EXPECT_EQ(window->Handle(), nullptr);
    EXPECT_TRUE(quit);
}

TEST_F(MainWindowTest, ClosesABoxThatIsOpenBeforeItself) {
    PostMessageA(window->Handle(), WM_CLOSE, 0, 0);
    const bool answer = desktop.Prompts().AskYesNo("Are you sure you want to proceed?", "Clear server list");
    EXPECT_FALSE(answer);
    EXPECT_TRUE(IsGoneSoon());
    EXPECT_TRUE(quit);
}

TEST_F(MainWindowTest, ClosesBoxesOnTopOfEachOther) {
    bool inner = true;
    DialogDriver driver(window->Handle(),
                        {[&](HWND) { inner = desktop.Prompts().AskYesNo("inner", "Inner"); },
                         [&](HWND) { PostMessageA(window->Handle(), WM_CLOSE, 0, 0); }});
    EXPECT_EQ(desktop.Prompts().AskText("outer", "Outer"), "");
    EXPECT_FALSE(inner);
    EXPECT_TRUE(IsGoneSoon());
}

TEST_F(MainWindowTest, OpensNoBoxOnceItIsToBeClosed) {
    DialogDriver driver(window->Handle(), {[&](HWND) {
                            SendMessageA(window->Handle(), WM_CLOSE, 0, 0);
                            EXPECT_FALSE(desktop.Prompts().AskYesNo("another", "Another"));
                        }});
    EXPECT_FALSE(desktop.Prompts().AskYesNo("first", "First"));
    EXPECT_TRUE(IsGoneSoon());
}

TEST_F(MainWindowTest, ClosesAMenuThatIsOpenBeforeItself) {
    PostMessageA(window->Handle(), WM_CLOSE, 0, 0);
    window->Form().tbMain_ButtonClick("favorites"); // returns when the menu is gone
    EXPECT_NE(window->Handle(), nullptr) << "only the end of the window has ended the menu";
    EXPECT_TRUE(IsGoneSoon());
    EXPECT_TRUE(quit);
}

// What the system tells while the user moves a window, until that is cancelled.
HWND movedWindow = nullptr;

BOOL WINAPI TellThatAWindowMoves(DWORD, GUITHREADINFO* state) {
    state->flags = movedWindow != nullptr ? GUI_INMOVESIZE : 0;
    state->hwndMoveSize = movedWindow;
    return TRUE;
}

LRESULT CALLBACK StopMoving(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CANCELMODE)
        movedWindow = nullptr;
    return DefWindowProcA(window, message, wParam, lParam);
}

TEST_F(MainWindowTest, EndsTheMovingOfAWindowBeforeItCloses) {
    const WindowHandle moved(
        CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr));
    SetWindowLongPtrA(moved.Get(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&StopMoving));
    movedWindow = moved.Get();
    const ReplacedImport state(&GetGUIThreadInfo, &TellThatAWindowMoves);
    SendMessageA(window->Handle(), WM_CLOSE, 0, 0);
    EXPECT_EQ(movedWindow, nullptr);
    EXPECT_TRUE(IsGoneSoon());
    EXPECT_TRUE(quit);
}

TEST_F(MainWindowTest, EndsThoughADialogStaysOpenAtTheHundredthAttempt) {
    const WindowHandle dialog(CreateWindowExA(0, "#32770", "", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50,
                                              window->Handle(), nullptr, nullptr, nullptr));
    const ReplacedImport endDialog(
        &EndDialog, +[](HWND, INT_PTR) -> BOOL { return FALSE; });
    SendMessageA(window->Handle(), WM_CLOSE, 0, 0);
    for (int attempts = 1; attempts < 100; ++attempts) {
        SendMessageA(window->Handle(), WM_TIMER, 1, 0);
        ASSERT_NE(window->Handle(), nullptr) << attempts;
    }
    SendMessageA(window->Handle(), WM_TIMER, 1, 0);
    EXPECT_EQ(window->Handle(), nullptr);
}

TEST_F(MainWindowTest, EndsWithWindowsThoughABoxIsOpen) {
    PostMessageA(window->Handle(), WM_ENDSESSION, TRUE, 0);
    EXPECT_FALSE(desktop.Prompts().AskYesNo("Are you sure?", "Question"));
    EXPECT_TRUE(IsGoneSoon());
    EXPECT_EQ(GetFileAttributesA((program.AppPath + "Quarn.ini").c_str()) & FILE_ATTRIBUTE_DIRECTORY, 0U);
}

TEST_F(MainWindowTest, EndsWithWindowsWithoutAQuestion) {
    program.AppLog->Log("test", "test", 5, "an error that a report could be about");
    EXPECT_EQ(SendMessageA(window->Handle(), WM_QUERYENDSESSION, 0, 0), TRUE);
    SendMessageA(window->Handle(), WM_ENDSESSION, TRUE, 0);
    EXPECT_EQ(window->Handle(), nullptr);
}

TEST_F(MainWindowTest, StaysWhenWindowsDoesNotEndAfterAll) {
    SendMessageA(window->Handle(), WM_ENDSESSION, FALSE, 0);
    EXPECT_NE(window->Handle(), nullptr);
}

TEST_F(MainWindowTest, AddsItsIconToANewTaskbar) {
    window->Form().SysTray.MinToSysTray();
    NOTIFYICONDATAA icon{};
    icon.cbSize = NOTIFYICONDATAA_V1_SIZE;
    icon.hWnd = FindWindowExA(window->Handle(), nullptr, "Static", nullptr);
    icon.uID = 1;
    // The icon is lost with the old taskbar.
    ASSERT_TRUE(Shell_NotifyIconA(NIM_DELETE, &icon));
    SendMessageA(window->Handle(), RegisterWindowMessageA("TaskbarCreated"), 0, 0);
    EXPECT_TRUE(Shell_NotifyIconA(NIM_DELETE, &icon));
}

TEST_F(MainWindowTest, FlushesNothingAfterItsEnd) {
    PostMessageA(window->Handle(), WM_CLOSE, 0, 0);
    RunPendingEvents();
    Models().lvwServers.Add();
    window->FlushModels();
    EXPECT_EQ(desktop.Events().updateWindows, nullptr);
}

} // namespace
} // namespace quarn
