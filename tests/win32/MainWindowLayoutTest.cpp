#include "tests/win32/ShownWindowTest.h"

#include "tests/win32/harness/Pumping.h"
#include "tests/win32/harness/ReplacedImport.h"
#include "win32/resources/ids.h"

#include <gtest/gtest.h>

#include <commctrl.h>
#include <vector>

namespace quarn {
namespace {

class MainWindowLayoutTest : public ShownWindowTest {};

TEST_F(MainWindowLayoutTest, LaysItsControlsOutWithoutOverlap) {
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

TEST_F(MainWindowLayoutTest, ReportsTheToolbarsHeightBeforeItLaysOut) {
    EXPECT_EQ(Models().tbMain.height, Dpi::OfWindow(window->Handle()).ToTwips(BoundsOf(ID_tbMain).bottom));
    EXPECT_GT(Models().tbMain.height, 0);
}

TEST_F(MainWindowLayoutTest, ShowsTheSearchBoxInTheToolbarAtOnce) {
    EXPECT_FALSE(IsWindowVisible(Control(ID_txtSearch)));
    const LONG bottom = BoundsOf(ID_tbMain).bottom;
    const auto choose = [&](std::int32_t on) {
        program.SearchBox = on;
        window->Form().RefreshInterface();
        RunPendingEvents();
    };
    choose(1);
    EXPECT_TRUE(IsWindowVisible(Control(ID_txtSearch)));
    RECT inside{};
    const RECT box = BoundsOf(ID_txtSearch);
    const RECT bar = BoundsOf(ID_tbMain);
    IntersectRect(&inside, &box, &bar);
    EXPECT_TRUE(EqualRect(&inside, &box));
    EXPECT_EQ(bar.bottom, bottom);
    SetFocus(Control(ID_txtSearch));
    choose(0);
    EXPECT_FALSE(IsWindowVisible(Control(ID_txtSearch)));
    EXPECT_EQ(GetFocus(), Control(ID_lvwServers));
}

TEST_F(MainWindowLayoutTest, PlacesTheSearchBoxInTheFlushThatShowsIt) {
    Models().txtSearch.visible = true;
    window->FlushModels();
    const RECT box = BoundsOf(ID_txtSearch);
    EXPECT_GT(box.right, box.left);
    EXPECT_GT(box.bottom, box.top);
    SetFocus(Control(ID_txtSearch));
    Models().txtSearch.visible = false;
    window->FlushModels();
    EXPECT_EQ(GetFocus(), Control(ID_lvwServers));
}

TEST_F(MainWindowLayoutTest, ANarrowWindowHasTheSearchBoxBelowTheButtons) {
    program.SearchBox = 1;
    window->Form().RefreshInterface();
    RunPendingEvents();
    const LONG bottom = BoundsOf(ID_tbMain).bottom;
    SetWindowPos(window->Handle(), nullptr, 0, 0, 450, 600, SWP_NOMOVE | SWP_NOZORDER);
    RunPendingEvents();
    EXPECT_GT(BoundsOf(ID_tbMain).bottom, bottom);
    EXPECT_GE(BoundsOf(ID_txtSearch).top, bottom - 6); // the buttons end above the edge
    EXPECT_GE(BoundsOf(ID_trvGames).top, BoundsOf(ID_tbMain).bottom);
    EXPECT_LE(BoundsOf(ID_txtSearch).bottom, BoundsOf(ID_tbMain).bottom);
}

TEST_F(MainWindowLayoutTest, ATextInTheSearchBoxNarrowsTheList) {
    program.SearchBox = 1;
    window->Form().RefreshInterface();
    ListServers(3);
    SetWindowTextA(Control(ID_txtSearch), "10.0.0.2");
    RunPendingEvents();
    EXPECT_EQ(Models().lvwServers.RowCount(), 1);
    SetFocus(Control(ID_txtSearch));
    PostMessageA(Control(ID_txtSearch), WM_CHAR, '9', 1);
    RunPendingEvents();
    EXPECT_EQ(Models().lvwServers.RowCount(), 0);
    SetWindowTextA(Control(ID_txtSearch), "");
    RunPendingEvents();
    EXPECT_EQ(Models().lvwServers.RowCount(), 3);
}

// Their order is that of the Tab key, and the search box lies in front of the toolbar.
TEST_F(MainWindowLayoutTest, KeepsTheOrderOfItsControlsInEveryLayout) {
    program.SearchBox = 1;
    window->Form().RefreshInterface();
    RunPendingEvents();
    SetWindowPos(window->Handle(), nullptr, 0, 0, 800, 600, SWP_NOMOVE | SWP_NOZORDER);
    RunPendingEvents();
    std::vector<int> order;
    for (HWND child = GetWindow(window->Handle(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        if (const int id = GetDlgCtrlID(child); id != 0)
            order.push_back(id);
    EXPECT_EQ(order, (std::vector<int>{ID_trvGames, ID_lvwServers, ID_lvwPlayers, ID_lvwServVars,
                                       ID_txtSearch, ID_tbMain, ID_sbMain}));
}

TEST_F(MainWindowLayoutTest, ShowsEachHeaderOfTheServersWithItsSortArrow) {
    const auto font = reinterpret_cast<HFONT>(SendMessageA(Control(ID_lvwServers), WM_GETFONT, 0, 0));
    constexpr int ArrowAndMargins = 16 + 20;
    const Dpi dpi = Dpi::OfWindow(window->Handle());
    const ListView& list = Models().lvwServers;
    for (std::int32_t column = 2; column <= list.columns.HighestIndex(); ++column)
        EXPECT_GE(dpi.ToPixels(list.columns[column].width),
                  TextWidth(font, list.columns[column].text) + dpi.Scaled(ArrowAndMargins))
            << list.columns[column].text;
}

TEST_F(MainWindowLayoutTest, FollowsTheWindowsSize) {
    const LONG before = BoundsOf(ID_lvwServers).right;
    RECT bounds{};
    GetWindowRect(window->Handle(), &bounds);
    SetWindowPos(window->Handle(), nullptr, 0, 0, bounds.right - bounds.left - 100,
                 bounds.bottom - bounds.top, SWP_NOMOVE | SWP_NOZORDER);
    RunPendingEvents();
    EXPECT_EQ(BoundsOf(ID_lvwServers).right, before - 100);
}

TEST_F(MainWindowLayoutTest, CanBeMovedSizedMinimizedAndMaximized) {
    const LONG style = GetWindowLongA(window->Handle(), GWL_STYLE);
    for (const LONG part : {WS_CAPTION, WS_SYSMENU, WS_THICKFRAME, WS_MINIMIZEBOX, WS_MAXIMIZEBOX})
        EXPECT_EQ(style & part, part);
}

TEST_F(MainWindowLayoutTest, HasNoTaskbarButtonAsAToolWindow) {
    for (const bool shown : {false, true}) {
        static_cast<FormWindow&>(*window).SetShownInTaskbar(shown);
        RunPendingEvents();
        EXPECT_EQ((GetWindowLongA(window->Handle(), GWL_EXSTYLE) & WS_EX_TOOLWINDOW) == 0, shown);
        EXPECT_TRUE(IsWindowVisible(window->Handle()));
    }
}

TEST_F(MainWindowLayoutTest, PaintsChangesAtOnce) {
    const HWND list = Control(ID_lvwServers);
    for (const HWND changed : {window->Handle(), list, ListView_GetHeader(list)}) {
        InvalidateRect(changed, nullptr, TRUE);
        ASSERT_TRUE(GetUpdateRect(changed, nullptr, FALSE));
        desktop.Events().updateWindows();
        EXPECT_FALSE(GetUpdateRect(changed, nullptr, FALSE));
    }
}

TEST_F(MainWindowLayoutTest, BecomesTopMostWhereItIs) {
    const auto isTopMost = [&] {
        return (GetWindowLongPtrA(window->Handle(), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
    };
    RECT before{};
    GetWindowRect(window->Handle(), &before);
    for (const bool topMost : {true, false}) {
        static_cast<FormWindow&>(*window).SetTopMost(topMost);
        RunPendingEvents();
        EXPECT_EQ(isTopMost(), topMost);
        RECT bounds{};
        GetWindowRect(window->Handle(), &bounds);
        EXPECT_TRUE(EqualRect(&bounds, &before));
    }
}

// As the system does where a window arrives on a screen of twice the dots.
HWND arriving = nullptr;

BOOL WINAPI ArriveOnAnotherScreen(HWND window, HWND, int x, int y, int width, int height, UINT flags) {
    MoveWindow(window, x, y, width, height, TRUE);
    if (GetParent(window) == nullptr) {
        EXPECT_EQ(flags, UINT{SWP_NOZORDER | SWP_NOACTIVATE}) << "it comes to the front";
    }
    if (window != arriving)
        return TRUE;
    arriving = nullptr;
    RECT suggested = {x, y, x + 2 * width, y + 2 * height};
    SendMessageA(window, WM_DPICHANGED, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&suggested));
    return TRUE;
}

TEST_F(MainWindowLayoutTest, HasItsStoredSizeAlsoOnAScreenOfAnotherDpi) {
    arriving = window->Handle();
    {
        const ReplacedImport move(&SetWindowPos, &ArriveOnAnotherScreen);
        static_cast<FormWindow&>(*window).SetBounds({15 * 40, 15 * 30, 15 * 1200, 15 * 950});
    }
    EXPECT_EQ(arriving, nullptr);
    RECT bounds{};
    GetWindowRect(window->Handle(), &bounds);
    const RECT expected = {40, 30, 1240, 980};
    EXPECT_TRUE(EqualRect(&bounds, &expected))
        << bounds.right - bounds.left << " by " << bounds.bottom - bounds.top;
}

TEST_F(MainWindowLayoutTest, HasTenPositionsInItsToolbarAndTheirToolTips) {
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

TEST_F(MainWindowLayoutTest, ShowsEveryColumnOfTheServersInItsFirstSize) {
    ListServers(200);
    EXPECT_EQ(GetWindowLongA(Control(ID_lvwServers), GWL_STYLE) & WS_HSCROLL, 0);
    const auto list = Control(ID_lvwServers);
    const auto header = reinterpret_cast<HWND>(SendMessageA(list, LVM_GETHEADER, 0, 0));
    LONG right = 0;
    for (int item = 0; item <= LastVisitColumn; ++item) {
        RECT bounds{};
        SendMessageA(header, HDM_GETITEMRECT, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&bounds));
        right = std::max(right, bounds.right);
    }
    RECT inner{};
    GetClientRect(list, &inner);
    EXPECT_EQ(right, inner.right) << "the columns fill the list";
    constexpr std::pair<int, const char*> LongestTexts[] = {{AddressColumn, "255.255.255.255:65535"},
                                                            {LastVisitColumn, "12/31/2026 10:58:58 PM"}};
    for (const auto& [column, text] : LongestTexts) {
        const LRESULT item = SendMessageA(header, HDM_ORDERTOINDEX, static_cast<WPARAM>(column), 0);
        EXPECT_GE(SendMessageA(list, LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(item), 0),
                  SendMessageA(list, LVM_GETSTRINGWIDTHA, 0, reinterpret_cast<LPARAM>(text)) + 12)
            << text;
    }
}

TEST_F(MainWindowLayoutTest, GetsNoSmallerThanItsButtonsAndAFewRows) {
    SetWindowPos(window->Handle(), nullptr, 0, 0, 10, 10, SWP_NOMOVE | SWP_NOZORDER);
    RECT inner{};
    GetClientRect(window->Handle(), &inner);
    RECT favorites{};
    SendMessageA(Control(ID_tbMain), TB_GETITEMRECT, 9, reinterpret_cast<LPARAM>(&favorites));
    EXPECT_GE(inner.right, favorites.right);
    for (const int list : {ID_trvGames, ID_lvwServers, ID_lvwPlayers, ID_lvwServVars})
        EXPECT_GE(BoundsOf(list).bottom - BoundsOf(list).top, 80) << list;
    EXPECT_GE(Models().sbMain.panels[MessagePanel].width, 200 * 15);
}

} // namespace
} // namespace quarn
