#include "tests/win32/controls/ListControlTest.h"

#include "win32/SelectionColors.h"

#include <algorithm>

namespace quarn {
namespace {

class ListViewControlPaintingTest : public ListControlTest {};

TEST_F(ListViewControlPaintingTest, ShowsTheArrowInTheSortedHeaderOnly) {
    const Images pictures(16, {"ascending", "descending"});
    control.SetImages(pictures, ListViewControl::Pictures::OfHeaders);
    model.columns[2].headerIcon = "ascending";
    control.Flush();
    EXPECT_NE(HeaderFormat(2) & HDF_IMAGE, 0);
    EXPECT_NE(HeaderFormat(2) & HDF_STRING, 0) << "beside the text";
    EXPECT_EQ(HeaderImage(2), pictures.IndexOf("ascending"));
    model.columns[2].headerIcon.clear();
    model.columns[3].headerIcon = "descending";
    control.Flush();
    EXPECT_EQ(HeaderFormat(2) & HDF_IMAGE, 0);
    EXPECT_NE(HeaderFormat(3) & HDF_IMAGE, 0);
    EXPECT_EQ(HeaderImage(3), pictures.IndexOf("descending"));
}

TEST_F(ListViewControlPaintingTest, PaintsACountrysFlagAfterItsCode) {
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
    // Flags lie in one column, after the widest code and a text's margins.
    const auto widest = static_cast<int>(
        SendMessageA(control.Handle(), LVM_GETSTRINGWIDTHA, 0, reinterpret_cast<LPARAM>("WW")));
    EXPECT_GE(codeAndFlag[code.size()], 12 + widest);
    EXPECT_LT(codeAndFlag.back(), 12 + widest + 16);
    EXPECT_LT(codeAndFlag.back() - code.back(), 32);
}

TEST_F(ListViewControlPaintingTest, PaintsTheImageOfARowInTheMiddleOfTheFirstColumn) {
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

TEST_F(ListViewControlPaintingTest, LeavesNoLockOnRowsThatMovedAway) {
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

TEST_F(ListViewControlPaintingTest, ShowsEachRowOnceAfterItHasGrownAtItsEnd) {
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

TEST_F(ListViewControlPaintingTest, MarksItsSelectionAlsoWithoutTheFocus) {
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

TEST_F(ListViewControlPaintingTest, MarksASelectedRowWithoutAGap) {
    const Images pictures(16, {"locked"});
    control.SetImages(pictures, ListViewControl::Pictures::OfRowsAndHeaders);
    AddRows({"a", "b"});
    SelectInControl(2);
    for (const bool focused : {true, false}) {
        SetFocus(focused ? control.Handle() : host.Handle());
        ControlHost::RunPendingEvents();
        RECT row = RowBounds(2);
        InflateRect(&row, 0, -2); // the focus mark
        row.left += ColumnWidth(1);
        row.right = row.left + ColumnWidth(2) + 8;
        EXPECT_EQ(PaintedPixels(control.Handle()).Count(row, GetSysColor(COLOR_WINDOW)), 0) << focused;
    }
}

TEST_F(ListViewControlPaintingTest, TellsTheWholeTextOfACellThatIsCut) {
    const std::string longName = "A server whose name is much longer than any column of the list may be";
    AddRows({"short", longName});
    EXPECT_EQ(ToolTipOver(2, 3), longName);
    EXPECT_GT(greatestToolTipWidth, 0) << "a longer text has several lines";
    EXPECT_EQ(ToolTipOver(1, 3), "");
    EXPECT_EQ(ToolTipOver(2, 2), "");
    model.Cell(1, 2).text = "255.255.255.255:65535 and more";
    EXPECT_EQ(ToolTipOver(1, 2), "255.255.255.255:65535 and more");
    EXPECT_EQ(ToolTipOver(2, 3, 500), "") << "right of the last column";
    model.Clear();
    control.Flush();
    EXPECT_EQ(ToolTipOver(1, 3), "");
}

TEST_F(ListViewControlPaintingTest, SaysWhatToDoWhereItHasNoRows) {
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

TEST_F(ListViewControlPaintingTest, SaysItInTheMiddleInAsManyLinesAsItTakes) {
    std::string text = "Press Renew.";
    model.emptyText = [&] { return text; };
    const auto greyBounds = [&] {
        control.Flush();
        ControlHost::RunPendingEvents();
        const PaintedPixels shown(control.Handle());
        RECT bounds = {shown.Width(), shown.Height(), 0, 0};
        for (LONG y = 20; y < shown.Height(); ++y)
            for (LONG x = 0; x < shown.Width(); ++x)
                if (shown.At(x, y) == GetSysColor(COLOR_GRAYTEXT))
                    bounds = {std::min(bounds.left, x), std::min(bounds.top, y),
                              std::max(bounds.right, x + 1), std::max(bounds.bottom, y + 1)};
        return bounds;
    };
    RECT inner{};
    GetClientRect(control.Handle(), &inner);
    const RECT line = greyBounds();
    EXPECT_NEAR(line.left, inner.right - line.right, 8);
    for (int i = 0; i < 4; ++i)
        text += " " + text;
    const RECT lines = greyBounds();
    EXPECT_GT(lines.bottom - lines.top, 2 * (line.bottom - line.top));
    EXPECT_GT(lines.left, 0);
    EXPECT_LT(lines.right, inner.right);
    text = "A&B";
    const RECT ampersand = greyBounds();
    text = "AB";
    const RECT none = greyBounds();
    EXPECT_GT(ampersand.right - ampersand.left, none.right - none.left + 4) << "more than an underline";
}

} // namespace
} // namespace quarn
