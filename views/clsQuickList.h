#pragma once

// Sorts one list view by a column according to the column's sort type, with an arrow in the header, and
// writes the rows' main texts to a file.
//
// The list orders its rows by text. To make numbers, dates and pictures sort right, the texts of the sort
// column are parked in the cells' tags and replaced by keys that compare as text; after the sort the texts
// come back. A failed sort leaves texts, tags, order and arrow as they were, and is logged.

#include "controls/ListView.h"
#include "desktop/Desktop.h"
#include "support/clsAppLog.h"

#include <cstdint>
#include <functional>
#include <string>

namespace quarn {

class clsQuickList {
  public:
    clsQuickList(clsAppLog& log, const Desktop& desktop) : log_(log), desktop_(desktop) {}

    // The list to sort. It must outlive this object.
    void SetTargetList(ListView& list) { target_ = &list; }

    // Sorts by the column with this 1-based index. The order flips at every call, whatever the column.
    void SortList(std::int16_t intIndex);

    // The main text of each row, in display order, one a line. Errors are left to the caller.
    void SaveListToFile(const std::string& strFileName);

  private:
    using KeyOf = std::function<std::string(const std::string&)>;

    ListView& Target() const;
    void SortColumn(std::int32_t column);
    void SortByPicture();
    void SortByKeys(std::int32_t column, const KeyOf& keyOf);
    void SetSortOrder(std::int32_t column, const KeyOf& orderOf = {});
    void RestoreCellTexts(std::int32_t column);
    std::string NumberKey(const std::string& text) const;
    std::string DateKey(const std::string& text) const;
    static std::string InvertDigits(std::string text);

    clsAppLog& log_;
    const Desktop& desktop_;
    ListView* target_ = nullptr;
    std::int32_t lastColumn_ = 0;
};

} // namespace quarn
