#pragma once

// A report-style list view: columns with a sort type, rows with a main text and one cell for each further
// column. The rows live here once; the window's control is virtual and asks for what it paints. Rows are
// numbered from 1 in display order; a row that does not exist is error 35600.
//
// The model notes what changed since the window last took its changes, so that the window repaints once
// before it waits instead of at every step.

#include "core/OneBased.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

struct ListColumn {
    std::string text;
    std::string tag;        // the sort type: "PICTURE", "STRING", "NUMBER", "DATE" or empty
    std::string headerIcon; // "ascending", "descending" or empty
};

struct ListCell {
    std::string text;
    std::string tag;
    std::string reportIcon;
};

struct ListRow {
    std::string text;
    std::string tag;
    std::string mainTag; // tag of the main text, as a cell has one
    std::string smallIcon;
    std::vector<ListCell> cells; // the sub items 1..
    std::uint32_t identity = 0;  // never used again after the row is gone
    bool selected = false;
};

enum class SortOrder : std::int32_t { Ascending = 0, Descending = 1 };

class ListView {
  public:
    OneBased<ListColumn> columns;

    std::int32_t RowCount() const noexcept { return static_cast<std::int32_t>(rows_.size()); }
    const ListRow& Row(std::int32_t row) const { return rows_[Checked(row)]; }

    // For changing a row; marks it for repainting.
    ListRow& Edit(std::int32_t row);

    // Adds an empty row at the end, also while the list is sorted, and returns its number.
    std::int32_t Add();
    void Remove(std::int32_t row);
    void Clear();

    // Number of the row with this identity, 0 when it is gone. `near` is where it is looked for first.
    std::int32_t RowOf(std::uint32_t identity, std::int32_t near) const noexcept;

    // The text of a row in a column from 1: the main text for column 1, the sub item column - 1 beyond it.
    const std::string& CellText(std::int32_t row, std::int32_t column) const;
    std::string& CellText(std::int32_t row, std::int32_t column);
    std::string& CellTag(std::int32_t row, std::int32_t column);

    // Selection. "The selected row" is the focused row if it is selected, else the first selected one;
    // 0: none.
    std::int32_t SelectedRow() const noexcept;
    std::int32_t FocusedRow() const noexcept { return focused_; }
    void SetSelected(std::int32_t row, bool selected);
    void SetFocused(std::int32_t row);
    void SelectOnly(std::int32_t row); // and focuses it
    void EnsureVisible(std::int32_t row);

    // Sorting: by the texts of column sortKey + 1 through `order`, which maps a text to bytes that compare;
    // rows of equal keys keep their order.
    SortOrder sortOrder = SortOrder::Ascending;
    std::int32_t sortKey = 0;
    void Sort(const std::function<std::string(const std::string&)>& order);

    // While updates are locked the window paints nothing of this list.
    bool updatesLocked = false;

    void Refresh() { MarkAll(); }

    // What the window has to bring up to date.
    struct Changes {
        bool rowCount = false;
        bool selection = false;
        std::int32_t firstDirty = 0; // 0: no row
        std::int32_t lastDirty = 0;
        std::int32_t ensureVisible = 0; // 0: none
    };
    Changes TakeChanges();

    // Selection as the user changed it in the control; marks nothing.
    void NoteSelected(std::int32_t firstRow, std::int32_t lastRow, bool selected);
    void NoteFocused(std::int32_t row);

  private:
    std::size_t Checked(std::int32_t row) const;
    void MarkDirty(std::int32_t first, std::int32_t last) noexcept;
    void MarkAll() noexcept { MarkDirty(1, RowCount()); }

    std::vector<ListRow> rows_;
    std::uint32_t nextIdentity_ = 1;
    std::int32_t focused_ = 0;
    Changes changes_;
};

} // namespace quarn
