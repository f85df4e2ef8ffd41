#include "tests/win32/ShownWindowTest.h"

#include "tests/win32/harness/DialogDriver.h"
#include "tests/win32/harness/ReplacedImport.h"

namespace quarn {
namespace {

// Pop-up menus are recorded instead of opened, and the test sets the position of the mouse.
class MainWindowMenusTest : public ShownWindowTest {
  protected:
    struct PopUp {
        int firstCommand;
        POINT at;
    };

    MainWindowMenusTest() {
        popUps.clear();
        chosen = 0;
        whileOpen = nullptr;
        mouse = {321, 234};
        Models().lvwServers.Add();
        window->FlushModels();
    }

    static BOOL WINAPI Note(HMENU menu, UINT flags, int x, int y, HWND, LPTPMPARAMS) {
        EXPECT_EQ(flags & (TPM_CENTERALIGN | TPM_RIGHTALIGN | TPM_VCENTERALIGN | TPM_BOTTOMALIGN), 0U);
        EXPECT_NE(flags & TPM_RETURNCMD, 0U);
        EXPECT_EQ(flags & TPM_RIGHTBUTTON, 0U) << "the release of the button that opened it would choose";
        popUps.push_back({static_cast<int>(GetMenuItemID(menu, 0)), {x, y}});
        if (whileOpen)
            whileOpen();
        return chosen;
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
    inline static int chosen; // the entry, 0: none
    inline static std::function<void()> whileOpen;

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

TEST_F(MainWindowMenusTest, ItsEntryActsOnTheRowForWhichItOpened) {
    Models().lvwServers.Clear();
    ListServers(4);
    whileOpen = [&] { Models().lvwServers.SelectOnly(4); };
    chosen = ID_mnuServDelete;
    Press(Control(ID_lvwServers), WM_RBUTTONDOWN, 0, OnTheFirstRow);
    RunPendingEvents();
    EXPECT_EQ(Addresses(), (std::vector<std::string>{"10.0.0.2:2", "10.0.0.3:3", "10.0.0.4:4"}));
}

TEST_F(MainWindowMenusTest, TheFavoritesOfTheToolbarGetTheRowForWhichTheyOpened) {
    Models().lvwServers.Clear();
    ListServers(4);
    Models().lvwServers.SelectOnly(2);
    whileOpen = [&] { Models().lvwServers.SelectOnly(4); };
    chosen = ID_mnuServAddToFavorites1;
    window->Form().tbMain_ButtonClick("favorites");
    RunPendingEvents();
    const std::string list = program.AppPath + "servers-fav1.dat";
    EXPECT_NE(desktop.Interfaces().files.Read(list).find("10.0.0.2;2;"), std::string::npos);
    DeleteFileA(list.c_str());
}

TEST_F(MainWindowMenusTest, RenameIsForTheNodeForWhichTheMenuOpened) {
    Models().trvGames.Select("fav1");
    whileOpen = [&] { Models().trvGames.Select("fav2"); };
    chosen = ID_mnuTreeRename;
    SendMessageA(window->Handle(), WM_CONTEXTMENU, reinterpret_cast<WPARAM>(Control(ID_trvGames)), -1);
    DialogDriver driver(window->Handle(), {[](HWND box) {
                            SetDlgItemTextA(box, ID_txtInput, "Old friends");
                            DialogDriver::Press(box, IDOK);
                        }});
    RunPendingEvents();
    EXPECT_EQ(program.FavoriteNames[1], "Old friends");
    EXPECT_EQ(program.FavoriteNames[2], "-");
}

TEST_F(MainWindowMenusTest, OutliveNoWindowThatIsClosedBeforeTheSystemReportsThem) {
    whileOpen = [&] {
        SendMessageA(window->Handle(), WM_CLOSE, 0, 0);
        EXPECT_TRUE(IsWindow(window->Handle())) << "the system's loop for the menu would not end";
    };
    window->Form().tbMain_ButtonClick("favorites");
    EXPECT_TRUE(IsGoneSoon());
}

// A loop that looks into the queue, finds nothing, says that it is idle, and waits for new messages.
TEST_F(MainWindowMenusTest, WaitForNoMessageThatHasArrivedWhileTheyBecameIdle) {
    RunPendingEvents();
    PostMessageA(Control(ID_lvwServers), WM_NULL, 0, 0);
    SendMessageA(window->Handle(), WM_ENTERIDLE, MSGF_MENU, 0);
    EXPECT_NE(LOWORD(GetQueueStatus(QS_POSTMESSAGE)), 0) << "a wait would not end";
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
