#include "win32/controls/ListViewControl.h"

#include "tests/win32/harness/ControlHost.h"
#include "tests/win32/harness/PaintedPixels.h"
#include "win32/SelectionColors.h"

#include <algorithm>
#include <commctrl.h>
#include <gtest/gtest.h>
#include <vector>

namespace quarn {
namespace {

class ListViewControlTest : public testing::Test {
  protected:
    ListViewControlTest() {
        model.columns.Reset(3);
        model.columns[1] = {.width = 450};
        model.columns[2] = {.text = "Address", .width = 1500};
        model.columns[3] = {.text = "Name", .width = 3000};
        control.Create(host.Handle(), 1, "Servers", ListViewControl::Selection::SeveralRows, Dpi(96));
        control.MoveTo({0, 0, 600, 400});
        host.Watch(control);
    }

    void AddRows(std::initializer_list<std::string> names) {
        for (const std::string& name : names) {
            const std::int32_t row = model.Add();
            model.Cell(row, 3).text = name;
        }
        control.Flush();
    }

    void AddManyRows(int count) {
        for (int i = 0; i < count; ++i)
            model.Add();
        control.Flush();
    }

    HWND Header() const {
        return reinterpret_cast<HWND>(SendMessageA(control.Handle(), LVM_GETHEADER, 0, 0));
    }
    int Count() const { return static_cast<int>(SendMessageA(control.Handle(), LVM_GETITEMCOUNT, 0, 0)); }
    int SelectedCount() const {
        return static_cast<int>(SendMessageA(control.Handle(), LVM_GETSELECTEDCOUNT, 0, 0));
    }
    bool IsSelected(std::int32_t row) const { return (StateOf(row) & LVIS_SELECTED) != 0; }
    bool IsFocused(std::int32_t row) const { return (StateOf(row) & LVIS_FOCUSED) != 0; }

    std::string TextOf(std::int32_t row, std::int32_t column) const {
        char text[300] = "";
        LVITEMA item{};
        item.iSubItem = SubItem(column);
        item.pszText = text;
        item.cchTextMax = sizeof text;
        SendMessageA(control.Handle(), LVM_GETITEMTEXTA, static_cast<WPARAM>(row - 1),
                     reinterpret_cast<LPARAM>(&item));
        return text;
    }

    // The control's number of the column that is displayed at this place, from 1.
    int SubItem(std::int32_t column) const {
        int order[3] = {-1, -1, -1};
        SendMessageA(control.Handle(), LVM_GETCOLUMNORDERARRAY, 3, reinterpret_cast<LPARAM>(order));
        return order[column - 1];
    }

    // As the user does it, by the control itself.
    void SelectInControl(std::int32_t row, bool selected = true) {
        LVITEMA item{};
        item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        item.state = selected ? item.stateMask : 0;
        SendMessageA(control.Handle(), LVM_SETITEMSTATE, static_cast<WPARAM>(row - 1),
                     reinterpret_cast<LPARAM>(&item));
    }

    int Find(const char* beginning, int start = -1) const {
        LVFINDINFOA search{};
        search.flags = LVFI_PARTIAL | LVFI_STRING | LVFI_WRAP;
        search.psz = beginning;
        return static_cast<int>(SendMessageA(control.Handle(), LVM_FINDITEMA, static_cast<WPARAM>(start),
                                             reinterpret_cast<LPARAM>(&search))) +
               1;
    }

    // The vertical lines of a cell, counted from its left edge, on which something is painted.
    std::vector<int> PaintedLines(std::int32_t row, std::int32_t column) const {
        RECT cell{LVIR_BOUNDS, 0, 0, 0}; // the whole row
        SendMessageA(control.Handle(), LVM_GETITEMRECT, static_cast<WPARAM>(row - 1),
                     reinterpret_cast<LPARAM>(&cell));
        RECT header{};
        SendMessageA(Header(), HDM_GETITEMRECT, static_cast<WPARAM>(SubItem(column)),
                     reinterpret_cast<LPARAM>(&header));
        cell.left = header.left;
        cell.right = header.right;
        const HDC screen = GetDC(control.Handle());
        const HDC canvas = CreateCompatibleDC(screen);
        const HBITMAP picture = CreateCompatibleBitmap(screen, cell.right, cell.bottom);
        const HGDIOBJ before = SelectObject(canvas, picture);
        SendMessageA(control.Handle(), WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas), PRF_CLIENT);
        const COLORREF ground = GetPixel(canvas, cell.left, cell.top);
        std::vector<int> lines;
        for (int x = cell.left; x < cell.right; ++x) {
            bool painted = false;
            for (int y = cell.top; y < cell.bottom; ++y)
                painted = painted || GetPixel(canvas, x, y) != ground;
            if (painted)
                lines.push_back(x - cell.left);
        }
        SelectObject(canvas, before);
        DeleteObject(picture);
        DeleteDC(canvas);
        ReleaseDC(control.Handle(), screen);
        return lines;
    }

    // What is on the screen, and what a repaint of everything makes of it.
    void ExpectNothingLeftToRepaint() {
        ControlHost::RunPendingEvents();
        const PaintedPixels shown(control.Handle());
        RedrawWindow(control.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
        EXPECT_EQ(shown, PaintedPixels(control.Handle()));
    }

    RECT RowBounds(std::int32_t row) const {
        RECT bounds{LVIR_BOUNDS, 0, 0, 0};
        SendMessageA(control.Handle(), LVM_GETITEMRECT, static_cast<WPARAM>(row - 1),
                     reinterpret_cast<LPARAM>(&bounds));
        return bounds;
    }

    int ColumnWidth(std::int32_t column) const {
        return static_cast<int>(
            SendMessageA(control.Handle(), LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(SubItem(column)), 0));
    }

    // The tooltip for the place under the mouse, which is a number of pixels right of a column's edge.
    std::string ToolTipOver(std::int32_t row, std::int32_t column, int right = 5) const {
        const auto header = reinterpret_cast<HWND>(SendMessageA(control.Handle(), LVM_GETHEADER, 0, 0));
        RECT bounds{};
        SendMessageA(header, HDM_GETITEMRECT, static_cast<WPARAM>(SubItem(column)),
                     reinterpret_cast<LPARAM>(&bounds));
        SendMessageA(control.Handle(), WM_MOUSEMOVE, 0,
                     MAKELPARAM(bounds.left + right, RowBounds(row).top + 3));
        for (HWND tip = nullptr; (tip = FindWindowExA(nullptr, tip, TOOLTIPS_CLASSA, nullptr)) != nullptr;) {
            char text[300] = "";
            TTTOOLINFOA tool{};
            tool.cbSize = TTTOOLINFOA_V1_SIZE;
            tool.hwnd = control.Handle();
            tool.uId = 1;
            tool.lpszText = text;
            DWORD process = 0;
            GetWindowThreadProcessId(tip, &process);
            if (process == GetCurrentProcessId() &&
                SendMessageA(tip, TTM_GETTOOLINFOA, 0, reinterpret_cast<LPARAM>(&tool)) != 0) {
                SendMessageA(tip, TTM_GETTEXTA, sizeof text, reinterpret_cast<LPARAM>(&tool));
                return text;
            }
        }
        return "no tooltip";
    }

    int HeaderFormat(std::int32_t column) const {
        HDITEMA header{};
        header.mask = HDI_FORMAT;
        SendMessageA(Header(), HDM_GETITEMA, static_cast<WPARAM>(SubItem(column)),
                     reinterpret_cast<LPARAM>(&header));
        return header.fmt;
    }

    ListView model;
    ListViewControl control{model, 3};
    ControlHost host;

  private:
    UINT StateOf(std::int32_t row) const {
        return static_cast<UINT>(SendMessageA(control.Handle(), LVM_GETITEMSTATE,
                                              static_cast<WPARAM>(row - 1), LVIS_SELECTED | LVIS_FOCUSED));
    }
};

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

TEST_F(ListViewControlTest, FindsRowsByTheBeginningOfTheirName) {
    AddRows({"Alpha", "Beta", "betamax", "Gamma"});
    EXPECT_EQ(Find("bet"), 2);
    EXPECT_EQ(Find("betam"), 3);
    EXPECT_EQ(Find("a", 2), 1); // wraps around
    EXPECT_EQ(Find("delta"), 0);
    EXPECT_EQ(Find("alphabet"), 0);
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

TEST_F(ListViewControlTest, ShowsTheArrowInTheSortedHeaderOnly) {
    const Images pictures(16, {"ascending", "descending"});
    control.SetImages(pictures, ListViewControl::Pictures::OfHeaders);
    model.columns[2].headerIcon = "ascending";
    control.Flush();
    EXPECT_NE(HeaderFormat(2) & HDF_IMAGE, 0);
    model.columns[2].headerIcon.clear();
    model.columns[3].headerIcon = "descending";
    control.Flush();
    EXPECT_EQ(HeaderFormat(2) & HDF_IMAGE, 0);
    EXPECT_NE(HeaderFormat(3) & HDF_IMAGE, 0);
}

TEST_F(ListViewControlTest, PaintsACountrysFlagAfterItsCode) {
    Images pictures(16, {});
    pictures.AddFlags();
    control.SetImages(pictures, ListViewControl::Pictures::OfRowsAndHeaders);
    AddRows({""});
    model.Cell(1, 2).text = "GB";
    control.Flush();
    const std::vector<int> code = PaintedLines(1, 2);
    model.Cell(1, 2).reportIcon = "GB";
    control.Flush();
    const std::vector<int> codeAndFlag = PaintedLines(1, 2);

    ASSERT_FALSE(code.empty());
    ASSERT_GT(codeAndFlag.size(), code.size() + 8);
    EXPECT_TRUE(std::equal(code.begin(), code.end(), codeAndFlag.begin())) << "the code is not painted over";
    EXPECT_GT(codeAndFlag[code.size()], code.back() + 1);
    EXPECT_LT(codeAndFlag.back() - code.back(), 32);
}

TEST_F(ListViewControlTest, PaintsTheImageOfARowInTheMiddleOfTheFirstColumn) {
    const Images pictures(16, {"locked"});
    control.SetImages(pictures, ListViewControl::Pictures::OfRowsAndHeaders);
    AddRows({"Alpha"});
    EXPECT_TRUE(PaintedLines(1, 1).empty());
    const std::vector<int> name = PaintedLines(1, 3);
    model.Edit(1).smallIcon = "locked";
    control.Flush();
    const std::vector<int> lock = PaintedLines(1, 1);
    ASSERT_FALSE(lock.empty());
    EXPECT_GE(lock.front(), 7);
    EXPECT_LT(lock.back(), 7 + 16);
    EXPECT_EQ(PaintedLines(1, 3), name);
    EXPECT_LT(name.front(), 12) << "no room for an image";
}

TEST_F(ListViewControlTest, LeavesNoLockOnRowsThatMovedAway) {
    const Images pictures(16, {"locked"});
    control.SetImages(pictures, ListViewControl::Pictures::OfRowsAndHeaders);
    AddRows({"g", "b", "f", "a", "e", "c", "d"});
    for (const std::int32_t row : {1, 2, 5})
        model.Edit(row).smallIcon = "locked";
    control.Flush();
    ExpectNothingLeftToRepaint();
    model.Sort(2, SortOrder::Ascending);
    control.Flush();
    ExpectNothingLeftToRepaint();
    for (std::int32_t row = 1; row <= 7; ++row)
        model.Edit(row).smallIcon.clear();
    control.Flush();
    ExpectNothingLeftToRepaint();
}

TEST_F(ListViewControlTest, ShowsEachRowOnceAfterItHasGrownAtItsEnd) {
    for (int i = 0; i < 60; ++i) {
        const std::int32_t row = model.Add();
        model.Cell(row, 3).text = "Server " + std::to_string(row);
    }
    control.Flush();
    ControlHost::RunPendingEvents();
    SetFocus(control.Handle());
    SendMessageA(control.Handle(), WM_KEYDOWN, VK_END, 1);
    control.Flush();
    ExpectNothingLeftToRepaint();
    control.MoveTo({0, 0, 600, 540});
    ExpectNothingLeftToRepaint();
}

TEST_F(ListViewControlTest, MarksItsSelectionAlsoWithoutTheFocus) {
    AddRows({"a", "b", "c"});
    SelectInControl(2);
    const auto ground = [&](std::int32_t row) {
        ControlHost::RunPendingEvents();
        const RECT bounds = RowBounds(row);
        // Between the texts.
        return PaintedPixels(control.Handle()).At(bounds.right - 60, (bounds.top + bounds.bottom) / 2);
    };
    SetFocus(host.Handle());
    EXPECT_EQ(ground(2), ColorsOfUnfocusedSelection().ground);
    EXPECT_EQ(ground(1), GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(ground(3), GetSysColor(COLOR_WINDOW));
    SetFocus(control.Handle());
    EXPECT_EQ(ground(2), GetSysColor(COLOR_HIGHLIGHT));
    SetFocus(host.Handle());
    EXPECT_EQ(ground(2), ColorsOfUnfocusedSelection().ground);
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

TEST_F(ListViewControlTest, TellsTheWholeTextOfACellThatIsCut) {
    const std::string longName = "A server whose name is much longer than any column of the list may be";
    AddRows({"short", longName});
    EXPECT_EQ(ToolTipOver(2, 3), longName);
    EXPECT_EQ(ToolTipOver(1, 3), "");
    EXPECT_EQ(ToolTipOver(2, 2), "");
    model.Cell(1, 2).text = "255.255.255.255:65535 and more";
    EXPECT_EQ(ToolTipOver(1, 2), "255.255.255.255:65535 and more");
    EXPECT_EQ(ToolTipOver(2, 3, 500), "") << "right of the last column";
    model.Clear();
    control.Flush();
    EXPECT_EQ(ToolTipOver(1, 3), "");
}

TEST_F(ListViewControlTest, SaysWhatToDoWhereItHasNoRows) {
    const auto greyPixels = [&] {
        ControlHost::RunPendingEvents();
        const PaintedPixels shown(control.Handle());
        return shown.Count({0, 20, shown.Width(), 120}, GetSysColor(COLOR_GRAYTEXT));
    };
    EXPECT_EQ(greyPixels(), 0);
    std::string text = "Press Renew.";
    model.emptyText = [&] { return text; };
    control.Flush();
    EXPECT_GT(greyPixels(), 20);
    EXPECT_EQ(Count(), 0);
    ExpectNothingLeftToRepaint();
    text = "M";
    control.Flush();
    ExpectNothingLeftToRepaint();
    AddRows({"Alpha"});
    EXPECT_EQ(greyPixels(), 0);
    model.Clear();
    control.Flush();
    EXPECT_GT(greyPixels(), 1);
    text.clear();
    control.Flush();
    EXPECT_EQ(greyPixels(), 0);
}

// A small slip before the release makes a drag of a click.
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
