#pragma once

// A report-style list view: columns with a sort type, rows with a main text and one cell for each further
// column. Only this model stores the rows; the window's control is virtual and asks for what it paints. Rows
// are numbered from 1 in display order; a row or cell that does not exist is error 35600.
//
// The model notes what has changed since the window last read its changes, so that the window repaints once
// before it waits, not at every step.

#include "base/OneBased.h"
#include "controls/SortKeys.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

enum class Alignment { Left, Right };

struct ListColumn {
    std::string text;
    std::string tag;        // the sort type: "PICTURE", "STRING", "NUMBER", "DATE" or empty
    std::int32_t width = 0; // by design, in twips
    Alignment alignment = Alignment::Left;
    std::string headerIcon;       // "ascending", "descending" or empty
    bool fills = false;           // grows over what the other columns leave; its width is the least
    std::int32_t chosenWidth = 0; // that the user gave it, in twips; 0: none

    std::int32_t Width() const noexcept { return chosenWidth > 0 ? chosenWidth : width; }
};

struct ListCell {
    std::string text;
    std::string tag;
    std::string reportIcon;
};

struct ListRow {
    ListCell main; // column 1; its tag is the row's
    std::string smallIcon;
    std::vector<ListCell> subItems; // columns 2 and on
    std::uint32_t identity = 0;     // never reused after the row is removed
    std::uint32_t subject = 0;      // number of the object that the row shows, if the program sets one
    bool selected = false;
};

class ListView {
  public:
    OneBased<ListColumn> columns;

    std::int32_t RowCount() const noexcept { return static_cast<std::int32_t>(rows_.size()); }
    const ListRow& Row(std::int32_t row) const { return *rows_[Checked(row)]; }

    // For changing a row; marks it for repainting.
    ListRow& Edit(std::int32_t row);

    // Adds a row with empty cells at the end, also while the list is sorted, and returns its number.
    std::int32_t Add();
    void Remove(std::int32_t row);
    void RemoveRows(const std::vector<std::int32_t>& ascending);
    void Clear();

    // Clears the list and returns its rows, so that the caller can free a long list in steps.
    using Rows = std::vector<std::unique_ptr<ListRow>>;
    Rows TakeRows();

    // Rows that are added from now on have this identity or a higher one.
    std::uint32_t NextIdentity() const noexcept { return nextIdentity_; }

    // Number of the row with this identity, or of the nearest that shows this subject; 0 when there is none.
    // Looked for from row `likely` outwards.
    std::int32_t RowOf(std::uint32_t identity, std::int32_t likely) const noexcept;
    std::int32_t RowShowing(std::uint32_t subject, std::int32_t likely) const noexcept;

    // The cell of a row in a column from 1.
    const ListCell& Cell(std::int32_t row, std::int32_t column) const;
    ListCell& Cell(std::int32_t row, std::int32_t column);

    // The focused row if it is selected, else the first selected one, else 0.
    std::int32_t SelectedRow() const noexcept;
    std::int32_t SelectedCount() const noexcept { return selectedCount_; }
    std::int32_t FocusedRow() const noexcept { return focused_; }
    void SelectOnly(std::int32_t row); // and focuses it
    void EnsureVisible(std::int32_t row);

    SortOrder sortOrder = SortOrder::Ascending;
    std::int32_t sortKey = 0; // the sub item sorted by, 0: the main text

    // Sets key and order and sorts the rows by the texts of the key's cells, or by the given keys, one for
    // each row. Rows with equal keys keep their order, in both directions.
    void Sort(std::int32_t key, SortOrder order);
    void Sort(std::int32_t key, SortOrder order, const SortKeys& keys);

    // What an empty list says in place of rows. The window asks whenever it is updated.
    std::function<std::string()> emptyText;

    // While updates are locked, the window does not paint this list.
    bool updatesLocked = false;

    // Requests a repaint of the whole list.
    void Refresh() noexcept { MarkDirty(1, RowCount()); }

    // What the window has to update.
    struct Changes {
        bool rows = false; // rows were added, removed or reordered
        bool selection = false;
        std::int32_t firstDirty = 0; // 0: no row
        std::int32_t lastDirty = 0;
        std::int32_t ensureVisible = 0; // 0: none
    };
    Changes TakeChanges() noexcept;

    // What the user selected or focused in the control.
    void NoteSelected(std::int32_t firstRow, std::int32_t lastRow, bool selected);
    void NoteFocused(std::int32_t row) noexcept { focused_ = row; }

    // Incremented whenever the user changes the selection.
    std::uint32_t SelectionsByUser() const noexcept { return selectionsByUser_; }

  private:
    std::size_t Checked(std::int32_t row) const;
    void MarkDirty(std::int32_t first, std::int32_t last) noexcept;

    Rows rows_; // stored separately, so that a sort need not move them
    std::uint32_t nextIdentity_ = 1;
    std::int32_t focused_ = 0;
    std::int32_t selectedCount_ = 0;
    std::uint32_t selectionsByUser_ = 0;
    Changes changes_;
};

} // namespace quarn
