#include "win32/MainWindow.h"

#include "query/clsIPLocation.h"
#include "support/clsAppLog.h"
#include "tests/fakes/Samples.h"
#include "tests/win32/harness/ReplacedImport.h"
#include "tests/win32/harness/TemporaryFolder.h"
#include "win32/resources/ids.h"

#include <gtest/gtest.h>

#include <commctrl.h>
#include <memory>
#include <shellapi.h>

namespace quarn {
namespace {

// The real window with its own folder and one game.
class MainWindowTest : public testing::Test {
  protected:
    MainWindowTest() {
        program.AppPath = folder.Path() + "\\";
        program.AppLog = std::make_unique<clsAppLog>(desktop.Interfaces(), program.AppPath);
        program.IPLocation =
            std::make_unique<clsIPLocation>(desktop.Interfaces().files, program.AppPath + "countryip.dat");

        ResetGames(program, 1);
        program.Games[1].GameShort = "q3";
        program.Games[1].Description = "Quake III Arena";
        program.Games[1].Engine = "q3";
        program.GameVisible[1] = 1;
        program.LastGame = 9; // the game's node
        program.MinToTray = 0;
        program.FavoriteNames[1] = "Friends & Foes";
        program.FavoriteNames[2] = "-";

        window = std::make_unique<MainWindow>(program, desktop);
        window->Show();
        RunPendingEvents();
    }

    void RunPendingEvents() {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) && message.message != WM_QUIT) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        quit = quit || message.message == WM_QUIT;
        window->FlushModels();
    }

    HWND Control(int id) const { return GetDlgItem(window->Handle(), id); }
    MainControls& Models() { return window->Form().controls; }

    RECT BoundsOf(int id) const {
        RECT bounds{};
        GetWindowRect(Control(id), &bounds);
        MapWindowPoints(nullptr, window->Handle(), reinterpret_cast<POINT*>(&bounds), 2);
        return bounds;
    }

    std::string CaptionOf(UINT id) const {
        char caption[100] = "";
        GetMenuStringA(GetMenu(window->Handle()), id, caption, sizeof caption, MF_BYCOMMAND);
        return caption;
    }

    bool IsEnabled(UINT id) const {
        return (GetMenuState(GetMenu(window->Handle()), id, MF_BYCOMMAND) & (MF_GRAYED | MF_DISABLED)) == 0;
    }

    TemporaryFolder folder;
    ProgramState program;
    WindowsDesktop desktop;
    std::unique_ptr<MainWindow> window;
    bool quit = false;
};

TEST_F(MainWindowTest, ShowsItsCaptionAndAllItsControls) {
    char caption[100] = "";
    GetWindowTextA(window->Handle(), caption, sizeof caption);
    EXPECT_EQ(std::string(caption).substr(0, 6), "Quarn ");
    for (const int id : {ID_trvGames, ID_lvwServers, ID_lvwPlayers, ID_lvwServVars, ID_tbMain, ID_sbMain})
        EXPECT_TRUE(IsWindowVisible(Control(id))) << id;
    EXPECT_TRUE(IsWindowVisible(GetDlgItem(Control(ID_sbMain), ID_pbScanning)));
}

TEST_F(MainWindowTest, LaysItsControlsOutWithoutOverlap) {
    const RECT bar = BoundsOf(ID_tbMain);
    const RECT tree = BoundsOf(ID_trvGames);
    const RECT servers = BoundsOf(ID_lvwServers);
    const RECT players = BoundsOf(ID_lvwPlayers);
    const RECT variables = BoundsOf(ID_lvwServVars);
    const RECT status = BoundsOf(ID_sbMain);
    EXPECT_LE(bar.bottom, tree.top);
    EXPECT_LE(tree.right, servers.left);
    EXPECT_LE(servers.bottom, players.top);
    EXPECT_LE(tree.bottom, players.top);
    EXPECT_LE(players.right, variables.left);
    EXPECT_LE(players.bottom, status.top);
    RECT inner{};
    GetClientRect(window->Handle(), &inner);
    EXPECT_LE(servers.right, inner.right);
    EXPECT_EQ(status.bottom, inner.bottom);
}

TEST_F(MainWindowTest, ReportsTheToolbarsHeightBeforeItLaysOut) {
    EXPECT_EQ(Models().tbMain.height, Dpi::OfWindow(window->Handle()).ToTwips(BoundsOf(ID_tbMain).bottom));
    EXPECT_GT(Models().tbMain.height, 0);
}

TEST_F(MainWindowTest, FollowsTheWindowsSize) {
    const LONG before = BoundsOf(ID_lvwServers).right;
    RECT bounds{};
    GetWindowRect(window->Handle(), &bounds);
    SetWindowPos(window->Handle(), nullptr, 0, 0, bounds.right - bounds.left - 100,
                 bounds.bottom - bounds.top, SWP_NOMOVE | SWP_NOZORDER);
    RunPendingEvents();
    EXPECT_EQ(BoundsOf(ID_lvwServers).right, before - 100);
}

// As the system does where a window arrives on a screen of twice the dots.
HWND arriving = nullptr;

BOOL WINAPI ArriveOnAnotherScreen(HWND window, HWND, int x, int y, int width, int height, UINT) {
    MoveWindow(window, x, y, width, height, TRUE);
    if (window != arriving)
        return TRUE;
    arriving = nullptr;
    RECT suggested = {x, y, x + 2 * width, y + 2 * height};
    SendMessageA(window, WM_DPICHANGED, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&suggested));
    return TRUE;
}

TEST_F(MainWindowTest, HasItsStoredSizeAlsoOnAScreenOfAnotherDpi) {
    arriving = window->Handle();
    {
        const ReplacedImport move(&SetWindowPos, &ArriveOnAnotherScreen);
        static_cast<FormWindow&>(*window).SetBounds({15 * 40, 15 * 30, 15 * 700, 15 * 500});
    }
    EXPECT_EQ(arriving, nullptr);
    RECT bounds{};
    GetWindowRect(window->Handle(), &bounds);
    const RECT expected = {40, 30, 740, 530};
    EXPECT_TRUE(EqualRect(&bounds, &expected))
        << bounds.right - bounds.left << " by " << bounds.bottom - bounds.top;
}

TEST_F(MainWindowTest, HasTenPositionsInItsToolbarAndTheirToolTips) {
    EXPECT_EQ(SendMessageA(Control(ID_tbMain), TB_BUTTONCOUNT, 0, 0), 10);
    const std::pair<int, const char*> tips[] = {
        {1, "Get new server list from Master"}, {3, "Refresh all servers in list"},
        {4, "Refresh selected server(s)"},      {5, "Stop current operation"},
        {7, "Join server as player"},           {8, "Monitor server with Velmar"},
        {10, "Add server to favorites"}};
    for (const auto& [position, expected] : tips) {
        char text[100] = "";
        NMTBGETINFOTIPA query{};
        query.hdr = {Control(ID_tbMain), ID_tbMain, static_cast<UINT>(TBN_GETINFOTIPA)};
        query.pszText = text;
        query.cchTextMax = sizeof text;
        query.iItem = ID_tbMainButton + position;
        SendMessageA(window->Handle(), WM_NOTIFY, ID_tbMain, reinterpret_cast<LPARAM>(&query));
        EXPECT_STREQ(text, expected) << position;
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
    Models().lvwServers.Add();
    Models().lvwServers.Edit(1).main.tag = "1";
    Models().lvwServers.SelectOnly(1);
    Models().mnuServer.enabled = false;
    window->RunCommand(ID_mnuServDelete);
    EXPECT_EQ(Models().lvwServers.RowCount(), 1);
}

TEST_F(MainWindowTest, EndsTheProgramWhenItIsClosed) {
    PostMessageA(window->Handle(), WM_CLOSE, 0, 0);
    RunPendingEvents();
    EXPECT_EQ(window->Handle(), nullptr);
    EXPECT_TRUE(quit);
}

TEST_F(MainWindowTest, ClosesAnOpenMessageBoxFirst) {
    PostMessageA(window->Handle(), WM_CLOSE, 0, 0);
    const bool answer = desktop.Prompts().AskYesNo("Are you sure you want to proceed?", "Clear server list");
    EXPECT_FALSE(answer);
    RunPendingEvents();
    EXPECT_EQ(window->Handle(), nullptr);
    EXPECT_TRUE(quit);
}

TEST_F(MainWindowTest, EndsWithoutAQuestionWhenWindowsEnds) {
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

// Pop-up menus are recorded instead of opened, and the test sets the position of the mouse.
class MainWindowMenusTest : public MainWindowTest {
  protected:
    struct PopUp {
        int firstCommand;
        POINT at;
    };

    MainWindowMenusTest() {
        popUps.clear();
        mouse = {321, 234};
        Models().lvwServers.Add();
        window->FlushModels();
    }

    static BOOL WINAPI Note(HMENU menu, UINT flags, int x, int y, HWND, LPTPMPARAMS) {
        EXPECT_EQ(flags & (TPM_CENTERALIGN | TPM_RIGHTALIGN | TPM_VCENTERALIGN | TPM_BOTTOMALIGN), 0U);
        popUps.push_back({static_cast<int>(GetMenuItemID(menu, 0)), {x, y}});
        return TRUE;
    }
    static BOOL WINAPI TellMouse(POINT* position) {
        *position = mouse;
        return TRUE;
    }

    // The release is posted first, because controls wait for it inside the press.
    void Press(HWND control, UINT press, UINT release, LPARAM position) {
        PostMessageA(control, press, 0, position);
        if (release != 0)
            PostMessageA(control, release, 0, position);
        RunPendingEvents();
    }
    void ExpectOnePopUp(int firstCommand, POINT at) {
        ASSERT_EQ(popUps.size(), 1U);
        EXPECT_EQ(popUps[0].firstCommand, firstCommand);
        EXPECT_EQ(popUps[0].at.x, at.x);
        EXPECT_EQ(popUps[0].at.y, at.y);
    }

    static constexpr LPARAM OnTheFirstLine = MAKELPARAM(60, 8);
    static constexpr LPARAM OnTheFirstRow = MAKELPARAM(60, 30); // below the headers

    inline static std::vector<PopUp> popUps;
    inline static POINT mouse;

  private:
    ReplacedImport trackPopupMenu_{&TrackPopupMenuEx, &Note};
    ReplacedImport getCursorPos_{&GetCursorPos, &TellMouse};
};

TEST_F(MainWindowMenusTest, OpensTheServerMenuAtTheMouseWhenTheRightButtonGoesDown) {
    Press(Control(ID_lvwServers), WM_RBUTTONDOWN, 0, OnTheFirstRow);
    ExpectOnePopUp(ID_mnuServConnectPlay, mouse);
}

TEST_F(MainWindowMenusTest, OpensTheTreesMenuAtTheMouseWhenTheRightButtonComesUp) {
    Press(Control(ID_trvGames), WM_RBUTTONDOWN, WM_RBUTTONUP, OnTheFirstLine);
    ExpectOnePopUp(ID_mnuTreeRename, mouse);
}

TEST_F(MainWindowMenusTest, OpensNoMenuForTheOtherButtons) {
    for (const auto& [press, release] : {std::pair{WM_LBUTTONDOWN, WM_LBUTTONUP},
                                         {WM_MBUTTONDOWN, WM_MBUTTONUP},
                                         {WM_XBUTTONDOWN, WM_XBUTTONUP}}) {
        Press(Control(ID_lvwServers), press, release, OnTheFirstRow);
        EXPECT_TRUE(Models().mnuServer.enabled);
    }
    Press(Control(ID_trvGames), WM_MBUTTONDOWN, WM_MBUTTONUP, OnTheFirstLine);
    Press(Control(ID_trvGames), WM_XBUTTONDOWN, WM_XBUTTONUP, OnTheFirstLine);
    Press(Control(ID_trvGames), WM_LBUTTONDOWN, WM_LBUTTONUP, OnTheFirstLine);
    EXPECT_TRUE(popUps.empty());
}

TEST_F(MainWindowMenusTest, OpensTheFoldersBelowTheirButton) {
    window->Form().tbMain_ButtonClick("favorites");
    RECT button{};
    SendMessageA(Control(ID_tbMain), TB_GETITEMRECT, 9, reinterpret_cast<LPARAM>(&button));
    POINT below{button.left, button.bottom};
    ClientToScreen(Control(ID_tbMain), &below);
    ExpectOnePopUp(ID_mnuServAddToFavorites1, below);
}

} // namespace
} // namespace quarn
