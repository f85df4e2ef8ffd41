#pragma once

// Sorts one list view by a column according to the column's sort type, with an arrow in the header, and
// writes the rows to a file.
//
// A list view orders its rows by their texts. So that numbers and dates stand in their own order, keys that
// compare as text take the place of the column's texts while it sorts, and the texts wait in the cells' tags.
// The keys are made first, beside the cells, while events may run; parking, sorting and restoring are one
// stroke. A failed sort leaves texts, tags, order and arrow as they were, and is logged.

#include "controls/ListView.h"
#include "desktop/Desktop.h"
#include "support/clsAppLog.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quarn {

class GeneralDates;

class clsQuickList {
  public:
    // `betweenRows`, if given, is called while a sort builds its keys, so that events can run; rows and texts
    // must still be the same afterwards.
    clsQuickList(clsAppLog& log, const Desktop& desktop, std::function<void()> betweenRows = {})
        : log_(log), desktop_(desktop), betweenRows_(std::move(betweenRows)) {}

    // Counts such as "3 / 16" sort by both numbers, and an empty or zero date before all others. Otherwise
    // such counts are no numbers, and an empty date fails the sort.
    bool naturalOrder = false;

    // The list to sort. It must outlive this object.
    void SetTargetList(ListView& list) { target_ = &list; }

    // Sorts by the column with this 1-based index. The order is reversed at every call, whatever the column.
    // False if it failed.
    bool SortList(std::int16_t intIndex);

    // Whether a column shows the arrow.
    bool HasArrow() const noexcept { return lastColumn_ != 0; }

    // Sorts by the column with the arrow, in the same order again. A failed sort takes the arrow away.
    void SortAgain();

    // Removes the arrow: the rows are no longer in the order of the last sort. The next sort still reverses
    // the order.
    void ClearArrow();

    // The main text of each row, in display order, one a line; all columns as CSV if that is what the name
    // asks for. A file of that name is replaced as one step. Errors are left to the caller.
    void SaveListToFile(const std::string& strFileName);

  private:
    using MakeKey = std::function<void(const std::string& text, std::string& key)>;

    ListView& Target() const;
    void SortColumn(std::int32_t column);
    void SortByPicture();
    void SortByKeyTexts(std::int32_t column, const MakeKey& makeKey);
    SortKeys KeysOf(std::int32_t column, const MakeKey& makeKey) const;
    static void ParkCellText(ListCell& cell, std::string_view key);
    static void RestoreCellTexts(const std::vector<ListCell*>& cells);
    void SetSortOrder(std::int32_t column, const SortKeys* keys = nullptr); // empty: sort by the texts
    void MakeNumberKey(const std::string& text, std::string& key) const;
    void MakeCountKey(const std::string& text, std::string& key) const;
    std::string DateKey(GeneralDates& dates, const std::string& text) const;
    static std::string InvertDigits(std::string text);

    clsAppLog& log_;
    const Desktop& desktop_;
    std::function<void()> betweenRows_;
    ListView* target_ = nullptr;
    std::int32_t lastColumn_ = 0;
};

} // namespace quarn
