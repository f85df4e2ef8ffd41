#include "controls/ListView.h"

#include "tests/fakes/Errors.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();

// A list of three columns whose rows have these main texts.
ListView ListOf(const std::vector<std::string>& texts) {
    ListView list;
    list.columns.Reset(3);
    for (const std::string& text : texts)
        list.Cell(list.Add(), 1).text = text;
    return list;
}

std::vector<std::string> Texts(const ListView& list) {
    std::vector<std::string> texts;
    for (std::int32_t row = 1; row <= list.RowCount(); ++row)
        texts.push_back(list.Row(row).main.text);
    return texts;
}

std::vector<std::int32_t> SelectedRows(const ListView& list) {
    std::vector<std::int32_t> rows;
    for (std::int32_t row = 1; row <= list.RowCount(); ++row)
        if (list.Row(row).selected)
            rows.push_back(row);
    return rows;
}

TEST(ListViewTest, GivesANewRowAnEmptyCellForEachColumn) {
    ListView list = ListOf({"a"});
    EXPECT_EQ(list.Add(), 2);
    for (const std::int32_t column : {1, 2, 3}) {
        EXPECT_EQ(std::as_const(list).Cell(2, column).text, "") << column;
        EXPECT_EQ(std::as_const(list).Cell(2, column).tag, "") << column;
        EXPECT_EQ(std::as_const(list).Cell(2, column).reportIcon, "") << column;
    }
}

TEST(ListViewTest, HasOnlyTheMainTextWithoutColumns) {
    ListView list;
    const std::int32_t row = list.Add();
    list.Cell(row, 1).text = "a";
    EXPECT_EQ(list.Row(row).main.text, "a");
    EXPECT_EQ(ErrorOf([&] { list.Cell(row, 2); }), ErrorNumber::IndexOutOfBounds);
}

TEST(ListViewTest, ThrowsForAPositionThatDoesNotExist) {
    ListView list = ListOf({"a", "b"});
    for (const std::int32_t row : {0, -1, 3, Lowest, Highest}) {
        EXPECT_EQ(ErrorOf([&] { list.Row(row); }), ErrorNumber::IndexOutOfBounds) << row;
        EXPECT_EQ(ErrorOf([&] { list.Edit(row); }), ErrorNumber::IndexOutOfBounds) << row;
        EXPECT_EQ(ErrorOf([&] { list.Cell(row, 1); }), ErrorNumber::IndexOutOfBounds) << row;
        EXPECT_EQ(ErrorOf([&] { std::as_const(list).Cell(row, 1); }), ErrorNumber::IndexOutOfBounds) << row;
        EXPECT_EQ(ErrorOf([&] { list.Remove(row); }), ErrorNumber::IndexOutOfBounds) << row;
        EXPECT_EQ(ErrorOf([&] { list.SelectOnly(row); }), ErrorNumber::IndexOutOfBounds) << row;
        EXPECT_EQ(ErrorOf([&] { list.EnsureVisible(row); }), ErrorNumber::IndexOutOfBounds) << row;
    }
    for (const std::int32_t column : {0, -1, 4, Lowest, Highest}) {
        EXPECT_EQ(ErrorOf([&] { list.Cell(1, column); }), ErrorNumber::IndexOutOfBounds) << column;
        EXPECT_EQ(ErrorOf([&] { std::as_const(list).Cell(1, column); }), ErrorNumber::IndexOutOfBounds)
            << column;
    }
    EXPECT_THAT(Texts(list), ElementsAre("a", "b"));
}

TEST(ListViewTest, RemovesNothingWhenOneOfTheRowsDoesNotExist) {
    ListView list = ListOf({"a", "b"});
    EXPECT_EQ(ErrorOf([&] { list.RemoveRows({1, 3}); }), ErrorNumber::IndexOutOfBounds);
    EXPECT_THAT(Texts(list), ElementsAre("a", "b"));
}

TEST(ListViewTest, RemovesRowsAndLetsFocusAndSelectionFollowTheirRow) {
    struct Case {
        std::vector<std::int32_t> removed;
        std::vector<std::string> left;
        std::int32_t focusBefore;
        std::int32_t focusAfter;
        std::int32_t selectedAfter; // rows 2 and 4 are selected before
    };
    const Case cases[] = {
        {{}, {"a", "b", "c", "d", "e"}, 4, 4, 4}, {{1}, {"b", "c", "d", "e"}, 4, 3, 3},
        {{5}, {"a", "b", "c", "d"}, 4, 4, 4},     {{4}, {"a", "b", "c", "e"}, 4, 0, 2},
        {{2, 4}, {"a", "c", "e"}, 4, 0, 0},       {{2}, {"a", "c", "d", "e"}, 1, 1, 3},
        {{1, 2, 3}, {"d", "e"}, 4, 1, 1},         {{1, 3, 5}, {"b", "d"}, 2, 1, 1},
        {{1, 2, 3, 4, 5}, {}, 5, 0, 0},
    };
    for (const Case& c : cases) {
        ListView list = ListOf({"a", "b", "c", "d", "e"});
        list.NoteSelected(2, 2, true);
        list.NoteSelected(4, 4, true);
        list.NoteFocused(c.focusBefore);
        list.RemoveRows(c.removed);
        EXPECT_EQ(Texts(list), c.left);
        EXPECT_EQ(list.FocusedRow(), c.focusAfter) << c.removed.size();
        EXPECT_EQ(list.SelectedRow(), c.selectedAfter) << c.removed.size();
    }
}

TEST(ListViewTest, PrefersTheFocusedRowAmongTheSelectedOnes) {
    struct Case {
        std::int32_t focused;
        std::int32_t expected; // rows 2 and 3 of 4 are selected
    };
    for (const Case& c : {Case{2, 2}, Case{3, 3}, Case{1, 2}, Case{4, 2}, Case{0, 2}, Case{5, 2}, Case{-1, 2},
                          Case{Highest, 2}}) {
        ListView list = ListOf({"a", "b", "c", "d"});
        list.NoteSelected(2, 3, true);
        list.NoteFocused(c.focused);
        EXPECT_EQ(list.SelectedRow(), c.expected) << c.focused;
    }
}

TEST(ListViewTest, SelectsNothingByItself) {
    ListView list = ListOf({"a", "b"});
    list.NoteFocused(1);
    EXPECT_EQ(list.SelectedRow(), 0);
    EXPECT_EQ(ListView().SelectedRow(), 0);
}

TEST(ListViewTest, SelectingOneRowDeselectsAllOthers) {
    ListView list = ListOf({"a", "b", "c", "d"});
    list.NoteSelected(1, 3, true);
    list.SelectOnly(4);
    EXPECT_THAT(SelectedRows(list), ElementsAre(4));
    EXPECT_EQ(list.FocusedRow(), 4);
    list.SelectOnly(1);
    EXPECT_THAT(SelectedRows(list), ElementsAre(1));
    list.NoteSelected(3, 3, true); // the focused row and one other
    list.SelectOnly(1);
    EXPECT_THAT(SelectedRows(list), ElementsAre(1));
    // The user moved the focus away from the only selected row.
    list.NoteFocused(3);
    list.SelectOnly(2);
    EXPECT_THAT(SelectedRows(list), ElementsAre(2));
    // The control reports a row that no longer exists, or none.
    for (const std::int32_t nowhere : {Lowest, -1, 0, 5, Highest}) {
        list.NoteFocused(nowhere);
        list.SelectOnly(nowhere == 0 ? 3 : 4);
        EXPECT_THAT(SelectedRows(list), ElementsAre(nowhere == 0 ? 3 : 4));
    }
}

TEST(ListViewTest, LimitsTheUsersSelectionToItsRows) {
    ListView list = ListOf({"a", "b", "c"});
    list.NoteSelected(Lowest, Highest, true);
    EXPECT_THAT(SelectedRows(list), ElementsAre(1, 2, 3));
    list.NoteSelected(2, 2, true); // once more
    list.NoteSelected(0, 2, false);
    list.NoteSelected(3, 2, false); // an empty range
    EXPECT_THAT(SelectedRows(list), ElementsAre(3));
    list.NoteSelected(3, 9, false);
    EXPECT_EQ(list.SelectedRow(), 0);
}

TEST(ListViewTest, FindsARowByItsIdentityWhereverItHasMoved) {
    ListView list = ListOf({"a", "b", "c", "d", "e"});
    const std::uint32_t third = list.Row(3).identity;
    for (const std::int32_t likely : {Lowest, -1, 0, 1, 2, 3, 4, 5, 6, 1000, Highest})
        EXPECT_EQ(list.RowOf(third, likely), 3) << likely;
    list.Remove(1);
    EXPECT_EQ(list.RowOf(third, 3), 2);
    list.Remove(2);
    for (const std::int32_t likely : {Lowest, 0, 1, 2, 3, Highest})
        EXPECT_EQ(list.RowOf(third, likely), 0) << likely;
    list.Clear();
    EXPECT_EQ(list.RowOf(third, 1), 0);
}

TEST(ListViewTest, FindsTheNearestRowThatShowsASubject) {
    ListView list = ListOf({"a", "b", "c", "d", "e"});
    for (const std::int32_t row : {1, 5})
        list.Edit(row).subject = 7;
    EXPECT_EQ(list.RowShowing(7, 1), 1);
    EXPECT_EQ(list.RowShowing(7, 2), 1);
    EXPECT_EQ(list.RowShowing(7, 4), 5);
    EXPECT_EQ(list.RowShowing(70, 4), 0);
    EXPECT_EQ(ListView().RowShowing(7, 1), 0);
}

TEST(ListViewTest, NeverUsesAnIdentityAgain) {
    ListView list = ListOf({"a", "b"});
    const std::uint32_t first = list.Row(1).identity;
    const std::uint32_t second = list.Row(2).identity;
    list.Clear();
    list.Add();
    EXPECT_NE(list.Row(1).identity, first);
    EXPECT_NE(list.Row(1).identity, second);
    EXPECT_EQ(list.RowOf(first, 1), 0);
}

TEST(ListViewTest, ReturnsItsRowsAndIsEmptyAfterwards) {
    ListView list = ListOf({"a", "b"});
    list.SelectOnly(2);
    list.TakeChanges();
    const ListView::Rows rows = list.TakeRows();
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[1]->main.text, "b");
    EXPECT_EQ(list.RowCount(), 0);
    EXPECT_EQ(list.FocusedRow(), 0);
    EXPECT_EQ(list.SelectedCount(), 0);
    EXPECT_TRUE(list.TakeChanges().rows);
    EXPECT_THAT(list.TakeRows(), IsEmpty());
    EXPECT_FALSE(list.TakeChanges().rows);
}

TEST(ListViewTest, KeepsTheOrderOfEqualKeysInBothDirections) {
    ListView list = ListOf({"b1", "a1", "b2", "a2", "c"});
    const auto sortByFirstLetter = [&](SortOrder order) {
        SortKeys keys;
        for (const std::string& text : Texts(list))
            keys.Add(text.substr(0, 1));
        list.Sort(0, order, keys);
    };
    sortByFirstLetter(SortOrder::Ascending);
    EXPECT_THAT(Texts(list), ElementsAre("a1", "a2", "b1", "b2", "c"));
    sortByFirstLetter(SortOrder::Descending);
    EXPECT_THAT(Texts(list), ElementsAre("c", "b1", "b2", "a1", "a2"));
}

TEST(ListViewTest, SortsByTheCellsOfTheKeyAndMovesWholeRows) {
    ListView list = ListOf({"a", "b", "c"});
    const char* const texts[] = {"2", "3", "1"};
    for (const std::int32_t row : {1, 2, 3}) {
        list.Cell(row, 3).text = texts[row - 1];
        list.Edit(row).main.tag = std::to_string(row);
    }
    list.SelectOnly(3);
    list.Sort(2, SortOrder::Ascending);
    EXPECT_THAT(Texts(list), ElementsAre("c", "a", "b"));
    EXPECT_EQ(list.Row(1).main.tag, "3");
    EXPECT_EQ(list.sortKey, 2);
    EXPECT_THAT(SelectedRows(list), ElementsAre(1));
    EXPECT_EQ(list.FocusedRow(), 1);
}

TEST(ListViewTest, ComparesKeysAsUnsignedBytes) {
    ListView list = ListOf({"\xE4", "z", "", "&9", "0"});
    list.Sort(0, SortOrder::Ascending);
    EXPECT_THAT(Texts(list), ElementsAre("", "&9", "0", "z", "\xE4"));
}

TEST(ListViewTest, IsUnchangedByASortThatFails) {
    ListView list = ListOf({"b", "a"});
    list.Sort(0, SortOrder::Descending);
    SortKeys tooFew;
    tooFew.Add("a");
    EXPECT_EQ(ErrorOf([&] { list.Sort(1, SortOrder::Ascending, tooFew); }), ErrorNumber::IndexOutOfBounds);
    EXPECT_EQ(ErrorOf([&] { list.Sort(3, SortOrder::Ascending); }), ErrorNumber::IndexOutOfBounds);
    EXPECT_THAT(Texts(list), ElementsAre("b", "a"));
    EXPECT_EQ(list.sortKey, 0);
    EXPECT_EQ(list.sortOrder, SortOrder::Descending);
}

TEST(ListViewTest, AddsAtTheEndEvenIfItIsSorted) {
    ListView list = ListOf({"b", "c"});
    list.Sort(0, SortOrder::Ascending);
    list.Cell(list.Add(), 1).text = "a";
    EXPECT_THAT(Texts(list), ElementsAre("b", "c", "a"));
}

TEST(ListViewTest, RecordsWhatTheWindowHasToRepaint) {
    ListView list = ListOf({"a", "b", "c", "d"});
    ListView::Changes changes = list.TakeChanges();
    EXPECT_TRUE(changes.rows);
    EXPECT_EQ(changes.firstDirty, 1);
    EXPECT_EQ(changes.lastDirty, 4);

    changes = list.TakeChanges(); // taken already
    EXPECT_FALSE(changes.rows);
    EXPECT_FALSE(changes.selection);
    EXPECT_EQ(changes.firstDirty, 0);

    list.Edit(3);
    list.Cell(2, 1).text = "x";
    list.SelectOnly(4);
    list.EnsureVisible(4);
    changes = list.TakeChanges();
    EXPECT_FALSE(changes.rows);
    EXPECT_TRUE(changes.selection);
    EXPECT_EQ(changes.firstDirty, 2);
    EXPECT_EQ(changes.lastDirty, 3);
    EXPECT_EQ(changes.ensureVisible, 4);

    list.Refresh();
    EXPECT_EQ(list.TakeChanges().lastDirty, 4);
}

TEST(ListViewTest, ReportsNoSelectionThatWasThereBefore) {
    ListView list = ListOf({"a", "b"});
    list.SelectOnly(2);
    list.TakeChanges();
    list.SelectOnly(2);
    EXPECT_FALSE(list.TakeChanges().selection);
}

TEST(ListViewTest, ReportsNoRemovedRowToTheWindow) {
    ListView list = ListOf({"a", "b", "c", "d"});
    list.TakeChanges();
    list.Edit(4);
    list.EnsureVisible(4);
    list.Remove(4);
    const ListView::Changes changes = list.TakeChanges();
    EXPECT_TRUE(changes.rows);
    EXPECT_EQ(changes.ensureVisible, 0);
    EXPECT_EQ(changes.firstDirty, 0);

    list.Edit(2);
    list.EnsureVisible(2);
    list.Clear();
    const ListView::Changes cleared = list.TakeChanges();
    EXPECT_TRUE(cleared.rows);
    EXPECT_EQ(cleared.ensureVisible, 0);
    EXPECT_EQ(cleared.firstDirty, 0);
}

TEST(ListViewTest, RepaintsNothingForAnEmptyList) {
    ListView list;
    list.Refresh();
    list.Clear();
    const ListView::Changes changes = list.TakeChanges();
    EXPECT_FALSE(changes.rows);
    EXPECT_EQ(changes.firstDirty, 0);
}

// The count of selected rows is stored separately from the rows and must always agree with them.
TEST(ListViewTest, KeepsTheCountOfItsSelectedRowsCorrect) {
    std::mt19937 random(20261121);
    const auto below = [&](std::int32_t limit) { return static_cast<std::int32_t>(random() % limit); };
    ListView list;
    list.columns.Reset(1);
    for (int step = 0; step < 20'000; ++step) {
        const std::int32_t count = list.RowCount();
        switch (below(8)) {
        case 0:
        case 1:
            list.Cell(list.Add(), 1).text = std::to_string(below(100));
            break;
        case 2:
            if (count > 0)
                list.Remove(1 + below(count));
            break;
        case 3:
            list.NoteSelected(below(count + 2), below(count + 2), below(2) == 0);
            break;
        case 4:
            list.NoteFocused(below(count + 1));
            break;
        case 5:
            if (count > 0)
                list.SelectOnly(1 + below(count));
            break;
        case 6:
            list.Sort(0, below(2) == 0 ? SortOrder::Ascending : SortOrder::Descending);
            break;
        default:
            if (below(50) == 0)
                list.Clear();
            break;
        }
        const std::vector<std::int32_t> selected = SelectedRows(list);
        const std::int32_t focused = list.FocusedRow();
        ASSERT_LE(focused, list.RowCount());
        std::int32_t expected = selected.empty() ? 0 : selected.front();
        if (focused > 0 && list.Row(focused).selected)
            expected = focused;
        ASSERT_EQ(list.SelectedRow(), expected) << "step " << step;
    }
}

} // namespace
} // namespace quarn
