#include "controls/ListView.h"

#include "base/NearestIndex.h"

#include <algorithm>
#include <utility>

namespace quarn {

std::size_t ListView::Checked(std::int32_t row) const {
    if (row < 1 || row > RowCount())
        throw RunTimeError(ErrorNumber::IndexOutOfBounds);
    return static_cast<std::size_t>(row) - 1;
}

void ListView::MarkDirty(std::int32_t first, std::int32_t last) noexcept {
    if (last < first)
        return;
    changes_.firstDirty = changes_.firstDirty == 0 ? first : std::min(changes_.firstDirty, first);
    changes_.lastDirty = std::max(changes_.lastDirty, last);
}

ListRow& ListView::Edit(std::int32_t row) {
    ListRow& edited = *rows_[Checked(row)];
    MarkDirty(row, row);
    return edited;
}

std::int32_t ListView::Add() {
    auto row = std::make_unique<ListRow>();
    row->identity = nextIdentity_++;
    row->subItems.resize(static_cast<std::size_t>(std::max(columns.HighestIndex() - 1, 0)));
    rows_.push_back(std::move(row));
    changes_.rows = true;
    MarkDirty(RowCount(), RowCount());
    return RowCount();
}

void ListView::Remove(std::int32_t row) {
    RemoveRows({row});
}

void ListView::RemoveRows(const std::vector<std::int32_t>& ascending) {
    if (ascending.empty())
        return;
    for (const std::int32_t row : ascending)
        Checked(row);
    MarkDirty(ascending.front(), RowCount());

    auto next = ascending.begin();
    std::size_t kept = Checked(ascending.front());
    std::int32_t focused = focused_;
    for (std::int32_t row = ascending.front(); row <= RowCount(); ++row) {
        std::unique_ptr<ListRow>& current = rows_[static_cast<std::size_t>(row) - 1];
        if (next == ascending.end() || *next != row) {
            rows_[kept++] = std::move(current);
            continue;
        }
        ++next;
        if (current->selected)
            --selectedCount_;
        if (focused_ == row)
            focused = 0;
        else if (focused_ > row)
            --focused;
    }
    rows_.resize(kept);
    focused_ = focused;
    changes_.rows = true;
    changes_.selection = true;
}

void ListView::Clear() {
    TakeRows();
}

ListView::Rows ListView::TakeRows() {
    Rows taken = std::exchange(rows_, {});
    if (taken.empty())
        return taken;
    focused_ = 0;
    selectedCount_ = 0;
    changes_ = {};
    changes_.rows = true;
    changes_.selection = true;
    return taken;
}

std::int32_t ListView::RowOf(std::uint32_t identity, std::int32_t likely) const noexcept {
    return NearestIndex(RowCount(), likely, [&](std::int32_t row) {
        return rows_[static_cast<std::size_t>(row) - 1]->identity == identity;
    });
}

std::int32_t ListView::RowShowing(std::uint32_t subject, std::int32_t likely) const noexcept {
    return NearestIndex(RowCount(), likely, [&](std::int32_t row) {
        return rows_[static_cast<std::size_t>(row) - 1]->subject == subject;
    });
}

const ListCell& ListView::Cell(std::int32_t row, std::int32_t column) const {
    const ListRow& owner = Row(row);
    if (column < 1 || static_cast<std::size_t>(column) > owner.subItems.size() + 1)
        throw RunTimeError(ErrorNumber::IndexOutOfBounds);
    return column == 1 ? owner.main : owner.subItems[static_cast<std::size_t>(column) - 2];
}

ListCell& ListView::Cell(std::int32_t row, std::int32_t column) {
    ListRow& owner = Edit(row);
    if (column < 1 || static_cast<std::size_t>(column) > owner.subItems.size() + 1)
        throw RunTimeError(ErrorNumber::IndexOutOfBounds);
    return column == 1 ? owner.main : owner.subItems[static_cast<std::size_t>(column) - 2];
}

std::int32_t ListView::SelectedRow() const noexcept {
    if (selectedCount_ == 0)
        return 0;
    if (focused_ >= 1 && focused_ <= RowCount() && rows_[static_cast<std::size_t>(focused_) - 1]->selected)
        return focused_;
    const auto first =
        std::find_if(rows_.begin(), rows_.end(), [](const auto& row) { return row->selected; });
    return static_cast<std::int32_t>(first - rows_.begin()) + 1;
}

void ListView::SelectOnly(std::int32_t row) {
    const std::size_t index = Checked(row);
    if (selectedCount_ == 1 && rows_[index]->selected && focused_ == row)
        return;
    if (selectedCount_ == 1 && focused_ >= 1 && focused_ <= RowCount() &&
        rows_[static_cast<std::size_t>(focused_) - 1]->selected)
        rows_[static_cast<std::size_t>(focused_) - 1]->selected = false;
    else if (selectedCount_ != 0)
        for (const std::unique_ptr<ListRow>& other : rows_)
            other->selected = false;
    rows_[index]->selected = true;
    selectedCount_ = 1;
    focused_ = row;
    changes_.selection = true;
}

void ListView::EnsureVisible(std::int32_t row) {
    Checked(row);
    changes_.ensureVisible = row;
}

void ListView::Sort(std::int32_t key, SortOrder sorting) {
    SortKeys keys;
    for (std::int32_t row = 1; row <= RowCount(); ++row)
        keys.Add(std::as_const(*this).Cell(row, key + 1).text);
    Sort(key, sorting, keys);
}

void ListView::Sort(std::int32_t key, SortOrder sorting, const SortKeys& keys) {
    if (keys.Count() != RowCount())
        throw RunTimeError(ErrorNumber::IndexOutOfBounds);
    const std::vector<std::uint32_t> order = keys.Sorted(sorting);
    Rows sorted;
    sorted.reserve(rows_.size());
    sortKey = key;
    sortOrder = sorting;

    std::int32_t focused = 0;
    for (const std::uint32_t index : order) {
        if (static_cast<std::int32_t>(index) + 1 == focused_)
            focused = static_cast<std::int32_t>(sorted.size()) + 1;
        sorted.push_back(std::move(rows_[index]));
    }
    rows_ = std::move(sorted);
    focused_ = focused;
    changes_.rows = true;
    changes_.selection = true;
    Refresh();
}

ListView::Changes ListView::TakeChanges() noexcept {
    Changes taken = changes_;
    changes_ = {};
    taken.lastDirty = std::min(taken.lastDirty, RowCount());
    if (taken.lastDirty < taken.firstDirty)
        taken.firstDirty = taken.lastDirty = 0;
    if (taken.ensureVisible > RowCount())
        taken.ensureVisible = 0;
    return taken;
}

void ListView::NoteSelected(std::int32_t firstRow, std::int32_t lastRow, bool selected) {
    for (std::int32_t row = std::max(firstRow, 1); row <= std::min(lastRow, RowCount()); ++row) {
        bool& state = rows_[static_cast<std::size_t>(row) - 1]->selected;
        if (state == selected)
            continue;
        selectedCount_ += selected ? 1 : -1;
        ++selectionsByUser_;
        state = selected;
    }
}

} // namespace quarn
