#include "win32/controls/ListViewControl.h"
#include "tests/win32/controls/ListControlTest.h"

#include "tests/win32/harness/ControlHost.h"
#include "tests/win32/harness/PaintedPixels.h"
#include "win32/SelectionColors.h"

#include <algorithm>
#include <commctrl.h>
#include <gtest/gtest.h>
#include <vector>

namespace quarn {
namespace {

class ListViewControlTest : public ListControlTest {};

TEST_F(ListViewControlTest, ShowsARowOnlyAfterAFlush) {
    model.Add();
    EXPECT_EQ(Count(), 0);
    control.Flush();
    EXPECT_EQ(Count(), 1);
}

TEST_F(ListViewControlTest, CountsTheRemainingRows) {
    AddRows({"a", "b", "c"});
    model.Remove(2);
    control.Flush();
    EXPECT_EQ(Count(), 2);
    model.Clear();
    control.Flush();
    EXPECT_EQ(Count(), 0);
}

TEST_F(ListViewControlTest, AsksTheModelForItsTexts) {
    AddRows({"first", "second"});
    EXPECT_EQ(TextOf(2, 3), "second");
    EXPECT_EQ(TextOf(1, 1), "");
    model.Cell(2, 3).text = "other";
    EXPECT_EQ(TextOf(2, 3), "other");
}

TEST_F(ListViewControlTest, EndsAShownTextAtItsNul) {
    AddRows({std::string("shown\0hidden", 12)});
    EXPECT_EQ(TextOf(1, 3), "shown");
}

TEST_F(ListViewControlTest, ShowsNothingForRowsThatTheModelNoLongerHas) {
    AddRows({"first", "second"});
    model.Clear();
    EXPECT_EQ(TextOf(2, 3), "");
    ControlHost::RunPendingEvents(); // and paints them
}

TEST_F(ListViewControlTest, ShowsNothingWhileUpdatesAreLocked) {
    AddRows({"first"});
    model.updatesLocked = true;
    model.Add();
    control.Flush();
    EXPECT_EQ(Count(), 1);
    EXPECT_EQ(TextOf(1, 3), "");
    model.updatesLocked = false;
    control.Flush();
    EXPECT_EQ(Count(), 2);
    EXPECT_EQ(TextOf(1, 3), "first");
}

TEST_F(ListViewControlTest, SelectsSeveralRowsWhereverTheyAreSorted) {
    AddRows({"a", "b", "c", "d"});
    model.NoteSelected(1, 2, true);
    for (const SortOrder order : {SortOrder::Descending, SortOrder::Ascending, SortOrder::Descending}) {
        model.Sort(2, order); // by the names
        control.Flush();
        for (const std::int32_t row : {1, 2, 3, 4}) {
            const bool wanted = model.Row(row).selected;
            EXPECT_EQ(IsSelected(row), wanted) << row;
            EXPECT_EQ(wanted, (order == SortOrder::Ascending) == (row <= 2)) << row;
        }
    }
}

TEST_F(ListViewControlTest, FocusesNoRowWhenTheFocusedOneIsRemoved) {
    AddRows({"a", "b", "c"});
    model.SelectOnly(2);
    control.Flush();
    model.Remove(2);
    control.Flush();
    EXPECT_EQ(model.FocusedRow(), 0);
    for (const std::int32_t row : {1, 2})
        EXPECT_FALSE(IsFocused(row)) << row;
}

TEST_F(ListViewControlTest, SelectsWhatTheModelSelects) {
    AddRows({"a", "b", "c"});
    model.SelectOnly(2);
    control.Flush();
    EXPECT_TRUE(IsSelected(2));
    EXPECT_TRUE(IsFocused(2));
    model.SelectOnly(3);
    control.Flush();
    EXPECT_EQ(SelectedCount(), 1);
    EXPECT_TRUE(IsSelected(3));
    EXPECT_TRUE(IsFocused(3));
}

TEST_F(ListViewControlTest, ReportsTheUsersSelectionToTheModel) {
    AddRows({"a", "b", "c"});
    SelectInControl(1);
    SelectInControl(3);
    EXPECT_TRUE(model.Row(1).selected);
    EXPECT_FALSE(model.Row(2).selected);
    EXPECT_TRUE(model.Row(3).selected);
    EXPECT_EQ(model.FocusedRow(), 3);
    SelectInControl(1, false);
    EXPECT_FALSE(model.Row(1).selected);
}

TEST_F(ListViewControlTest, SelectsOneRowAfterTheUserSelectedOthers) {
    AddRows({"a", "b", "c", "d"});
    model.SelectOnly(1);
    control.Flush();
    SelectInControl(2);
    SelectInControl(4);
    model.SelectOnly(3);
    control.Flush();
    EXPECT_EQ(SelectedCount(), 1);
    EXPECT_TRUE(IsSelected(3));
}

TEST_F(ListViewControlTest, KeepsTheSelectionWithItsRowsWhenOthersAreRemoved) {
    AddRows({"a", "b", "c", "d"});
    SelectInControl(2);
    SelectInControl(4);
    model.Remove(1);
    control.Flush();
    EXPECT_FALSE(IsSelected(2));
    EXPECT_TRUE(IsSelected(1));
    EXPECT_TRUE(IsSelected(3));
    EXPECT_EQ(SelectedCount(), 2);
}

TEST_F(ListViewControlTest, MovesTheSelectionWithASort) {
    AddRows({"b", "c", "a"});
    SelectInControl(1);
    model.Sort(2, SortOrder::Ascending);
    control.Flush();
    EXPECT_FALSE(IsSelected(1));
    EXPECT_TRUE(IsSelected(2));
    EXPECT_TRUE(IsFocused(2));
    EXPECT_EQ(TextOf(1, 3), "a");
}

TEST_F(ListViewControlTest, SelectsEveryRowInBoth) {
    AddManyRows(500);
    control.SelectAll();
    EXPECT_EQ(model.SelectedCount(), 500);
    EXPECT_EQ(SelectedCount(), 500);
}

TEST_F(ListViewControlTest, SelectsNoRowInAnEmptiedAndRefilledList) {
    AddRows({"a", "b"});
    control.SelectAll();
    model.Clear();
    model.Add();
    model.Add();
    control.Flush();
    EXPECT_EQ(SelectedCount(), 0);
}

TEST_F(ListViewControlTest, ScrollsToTheRequestedRow) {
    AddManyRows(1000);
    model.EnsureVisible(900);
    control.Flush();
    const auto top = SendMessageA(control.Handle(), LVM_GETTOPINDEX, 0, 0);
    const auto page = SendMessageA(control.Handle(), LVM_GETCOUNTPERPAGE, 0, 0);
    EXPECT_GT(top + page, 899);
    EXPECT_LE(top, 899);
}

TEST_F(ListViewControlTest, DoesNotScrollWhenRowsAreAdded) {
    AddManyRows(1000);
    model.EnsureVisible(500);
    control.Flush();
    const auto top = SendMessageA(control.Handle(), LVM_GETTOPINDEX, 0, 0);
    AddManyRows(100);
    EXPECT_EQ(SendMessageA(control.Handle(), LVM_GETTOPINDEX, 0, 0), top);
}

TEST_F(ListViewControlTest, RepaintsNoRowWhenRowsAreAddedBelowThem) {
    AddManyRows(1000);
    ControlHost::RunPendingEvents();
    ASSERT_FALSE(GetUpdateRect(control.Handle(), nullptr, FALSE));
    AddManyRows(100);
    RECT row = RowBounds(1);
    RECT damaged{};
    GetUpdateRect(control.Handle(), &damaged, FALSE);
    EXPECT_FALSE(IntersectRect(&row, &row, &damaged));
}

TEST_F(ListViewControlTest, FindsRowsByTheBeginningOfTheirName) {
    AddRows({"Alpha", "Beta", "betamax", "Gamma"});
    EXPECT_EQ(Find("bet"), 2);
    EXPECT_EQ(Find("betam"), 3);
    EXPECT_EQ(Find("a", 2), 1); // wraps around
    EXPECT_EQ(Find("delta"), 0);
    EXPECT_EQ(Find("alphabet"), 0);
    constexpr UINT Substring = 4; // LVFI_SUBSTRING
    for (const UINT flags : {UINT{LVFI_STRING}, Substring, UINT{LVFI_PARTIAL}})
        EXPECT_EQ(Find("bet", -1, flags), 2) << flags;
    EXPECT_EQ(Find("bet", -1, LVFI_PARAM), 0);
}

// Screen readers take the text of the control's first column, wherever that is displayed.
TEST_F(ListViewControlTest, CallsARowByItsName) {
    AddRows({"Alpha", "Beta"});
    model.Cell(2, 2).text = "127.0.0.1:27960";
    char name[100] = "";
    LVITEMA item{};
    item.pszText = name;
    item.cchTextMax = sizeof name;
    SendMessageA(control.Handle(), LVM_GETITEMTEXTA, 1, reinterpret_cast<LPARAM>(&item));
    EXPECT_STREQ(name, "Beta");
    EXPECT_EQ(TextOf(2, 2), "127.0.0.1:27960");
}

TEST_F(ListViewControlTest, DisplaysTheColumnsInTheOrderOfTheModel) {
    const auto header = reinterpret_cast<HWND>(SendMessageA(control.Handle(), LVM_GETHEADER, 0, 0));
    LONG left = 0;
    for (std::int32_t column = 1; column <= 3; ++column) {
        RECT bounds{};
        SendMessageA(header, HDM_GETITEMRECT, static_cast<WPARAM>(SubItem(column)),
                     reinterpret_cast<LPARAM>(&bounds));
        EXPECT_EQ(bounds.left, left) << column;
        EXPECT_EQ(bounds.right - bounds.left, Dpi(96).ToPixels(model.columns[column].width)) << column;
        left = bounds.right;
    }
}

TEST_F(ListViewControlTest, TellsWhichColumnOfTheModelWasClicked) {
    std::vector<std::int32_t> clicked;
    control.ColumnClicked = [&](std::int32_t column) { clicked.push_back(column); };
    for (std::int32_t column = 1; column <= 3; ++column) {
        NMLISTVIEW click{};
        click.hdr = {control.Handle(), 1, static_cast<UINT>(LVN_COLUMNCLICK)};
        click.iItem = -1;
        click.iSubItem = SubItem(column);
        SendMessageA(host.Handle(), WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&click));
    }
    EXPECT_EQ(clicked, (std::vector<std::int32_t>{1, 2, 3}));
}

TEST_F(ListViewControlTest, FindsNothingInAnEmptyList) {
    EXPECT_EQ(Find("a"), 0);
}

TEST_F(ListViewControlTest, ColumnsThatFillTakeWhatTheOthersLeave) {
    model.columns[3].fills = true;
    control.MoveTo({0, 0, 700, 400});
    const int scrollBar = GetSystemMetrics(SM_CXVSCROLL);
    const int edges = 2 * GetSystemMetrics(SM_CXEDGE);
    EXPECT_EQ(ColumnWidth(1), 30);
    EXPECT_EQ(ColumnWidth(2), 100);
    EXPECT_EQ(ColumnWidth(3), 700 - edges - scrollBar - 130);
    AddManyRows(1000);
    EXPECT_EQ(ColumnWidth(3), 700 - edges - scrollBar - 130);
    EXPECT_EQ(GetWindowLongA(control.Handle(), GWL_STYLE) & WS_HSCROLL, 0);
    control.MoveTo({0, 0, 200, 400});
    EXPECT_EQ(ColumnWidth(3), 200) << "its width is the least";
}

TEST_F(ListViewControlTest, LeavesSpaceForTheScrollBarOfItsScreen) {
    model.columns[3].fills = true;
    control.MoveTo({0, 0, 1400, 400});
    control.ChangeDpi(Dpi(192));
    const int scrollBar = 2 * Dpi(96).SystemMetric(SM_CXVSCROLL);
    EXPECT_EQ(ColumnWidth(3), 1400 - 2 * GetSystemMetrics(SM_CXEDGE) - scrollBar - 260);
}

TEST_F(ListViewControlTest, LeavesColumnsAloneOnceTheUserHasChangedOne) {
    model.columns[3].fills = true;
    control.MoveTo({0, 0, 700, 400});
    const auto header = reinterpret_cast<HWND>(SendMessageA(control.Handle(), LVM_GETHEADER, 0, 0));
    SendMessageA(control.Handle(), LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(SubItem(3)), 77);
    NMHEADERA change{};
    change.hdr = {header, 0, static_cast<UINT>(HDN_ENDTRACKA)};
    SendMessageA(control.Handle(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&change));
    control.MoveTo({0, 0, 800, 400});
    EXPECT_EQ(ColumnWidth(3), 77);
}

TEST_F(ListViewControlTest, TakesTheBeginningOfADragForAClick) {
    AddRows({"a", "b"});
    std::vector<std::string> events;
    control.MouseReleased = [&] { events.push_back("released"); };
    control.Clicked = [&] { events.push_back("clicked"); };
    NMLISTVIEW drag{};
    drag.hdr = {control.Handle(), 1, static_cast<UINT>(LVN_BEGINDRAG)};
    SendMessageA(host.Handle(), WM_NOTIFY, 1, reinterpret_cast<LPARAM>(&drag));
    EXPECT_EQ(events, (std::vector<std::string>{"released", "clicked"}));
}

TEST_F(ListViewControlTest, SelectsTheRowUnderTheRightButtonBeforeItTells) {
    AddRows({"a", "b", "c"});
    std::int32_t selectedThen = 0;
    control.RightPressed = [&] { selectedThen = model.SelectedRow(); };
    RECT row{LVIR_BOUNDS, 0, 0, 0};
    SendMessageA(control.Handle(), LVM_GETITEMRECT, 1, reinterpret_cast<LPARAM>(&row));
    SendMessageA(control.Handle(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(50, row.top + 2));
    EXPECT_EQ(selectedThen, 2);
    EXPECT_EQ(model.SelectedCount(), 1);
}

TEST_F(ListViewControlTest, KeepsSeveralRowsSelectedUnderTheRightButton) {
    AddRows({"a", "b", "c"});
    SelectInControl(1);
    SelectInControl(2);
    control.RightPressed = [] {};
    RECT row{LVIR_BOUNDS, 0, 0, 0};
    SendMessageA(control.Handle(), LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row));
    SendMessageA(control.Handle(), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(50, row.top + 2));
    EXPECT_EQ(model.SelectedCount(), 2);
    EXPECT_EQ(model.SelectedRow(), 1);
}

TEST_F(ListViewControlTest, NotesTheWidthThatTheUserGivesAColumn) {
    const auto widen = [&](std::int32_t column, int pixels) {
        SendMessageA(control.Handle(), LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(SubItem(column)), pixels);
    };
    widen(2, 100); // as it is
    EXPECT_EQ(model.columns[2].chosenWidth, 0);
    widen(2, 120);
    EXPECT_EQ(model.columns[2].chosenWidth, 1800);
    EXPECT_EQ(model.columns[1].chosenWidth, 0);
    EXPECT_EQ(model.columns[3].chosenWidth, 0);
    control.ChangeDpi(Dpi(120));
    EXPECT_EQ(model.columns[2].chosenWidth, 1800) << "another DPI is no choice of the user";
    widen(3, 50);
    EXPECT_EQ(model.columns[3].chosenWidth, 600);
}

TEST_F(ListViewControlTest, NotesTheWidthOfAColumnWhoseEdgeIsDragged) {
    const auto header = reinterpret_cast<HWND>(SendMessageA(control.Handle(), LVM_GETHEADER, 0, 0));
    RECT bounds{};
    SendMessageA(header, HDM_GETITEMRECT, static_cast<WPARAM>(SubItem(2)), reinterpret_cast<LPARAM>(&bounds));
    const auto mouse = [&](UINT message, LONG x) {
        SendMessageA(header, message, MK_LBUTTON, MAKELPARAM(x, bounds.bottom / 2));
    };
    mouse(WM_LBUTTONDOWN, bounds.right - 1);
    mouse(WM_MOUSEMOVE, bounds.right + 19);
    mouse(WM_LBUTTONUP, bounds.right + 19);
    EXPECT_EQ(model.columns[2].chosenWidth, 1500 + 20 * 15);
    EXPECT_EQ(model.columns[1].chosenWidth, 0);
    EXPECT_EQ(model.columns[3].chosenWidth, 0);
}

TEST_F(ListViewControlTest, KeepsColumnWidthsInInches) {
    control.ChangeDpi(Dpi(144));
    EXPECT_EQ(SendMessageA(control.Handle(), LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(SubItem(2)), 0), 150);
}

} // namespace
} // namespace quarn
