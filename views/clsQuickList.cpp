#include "views/clsQuickList.h"

#include "support/Trap.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>
#include <vector>

namespace quarn {

namespace {

constexpr const char* ClassName = "clsQuickList";

// A whole number as every locale writes it, and no longer than a double holds exactly.
bool IsPlainNumber(const std::string& text) {
    constexpr std::size_t PreciseDigits = 15;
    return !text.empty() && text.size() <= PreciseDigits &&
           text.find_first_not_of("0123456789") == std::string::npos;
}

// Twenty digits, a point and ten decimals, so that numbers of any usual size compare as text.
std::string FormatNumberPattern(const std::string& digits) {
    constexpr std::size_t WholeDigits = 20;
    std::string text = "00000000000000000000.0000000000";
    return text.replace(WholeDigits - digits.size(), digits.size(), digits);
}

std::string FormatNumberPattern(double value) {
    const int length = std::snprintf(nullptr, 0, "%031.10f", value);
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::snprintf(text.data(), text.size(), "%031.10f", value);
    text.pop_back();
    return text;
}

// Keeps the window from painting the list for as long as it lives.
class UpdateLock {
  public:
    explicit UpdateLock(ListView& list) : list_(list) { list_.updatesLocked = true; }
    ~UpdateLock() { list_.updatesLocked = false; }
    UpdateLock(const UpdateLock&) = delete;
    UpdateLock& operator=(const UpdateLock&) = delete;

  private:
    ListView& list_;
};

} // namespace

ListView& clsQuickList::Target() const {
    if (target_ == nullptr)
        throw RunTimeError(ErrorNumber::ObjectVariableNotSet);
    return *target_;
}

void clsQuickList::SortList(std::int16_t intIndex) {
    Trapped(log_, ClassName, "SortList", OnError::Log, [&] {
        const UpdateLock lock(Target());
        SortColumn(intIndex);
    });
}

void clsQuickList::SortColumn(std::int32_t column) {
    if (!Target().columns.Holds(column))
        throw RunTimeError(ErrorNumber::SubscriptOutOfRange);
    const std::string& sortType = Target().columns[column].tag;
    if (sortType == "PICTURE" && column == 1)
        SortByPicture();
    else if (sortType == "STRING")
        SetSortOrder(column, [this](const std::string& text) { return desktop_.locale.SortKey(text); });
    else if (sortType == "NUMBER")
        SortByKeys(column, [this](const std::string& text) { return NumberKey(text); });
    else if (sortType == "DATE")
        SortByKeys(column, [this](const std::string& text) { return DateKey(text); });
}

void clsQuickList::SortByPicture() {
    ListView& list = Target();
    for (std::int32_t row = 1; row <= list.RowCount(); ++row)
        list.Cell(row, 1).text = list.Row(row).smallIcon;
    SetSortOrder(1);
    for (std::int32_t row = 1; row <= list.RowCount(); ++row)
        list.Cell(row, 1).text.clear();
}

void clsQuickList::SortByKeys(std::int32_t column, const KeyOf& keyOf) {
    ListView& list = Target();
    std::vector<std::string> keys; // all made before any cell is touched: a cell without a key ends the sort
    keys.reserve(static_cast<std::size_t>(list.RowCount()));
    for (std::int32_t row = 1; row <= list.RowCount(); ++row)
        keys.push_back(keyOf(std::as_const(list).Cell(row, column).text));

    for (std::int32_t row = 1; row <= list.RowCount(); ++row) {
        ListCell& cell = list.Cell(row, column);
        cell.tag = cell.text + '\0' + cell.tag;
        cell.text = std::move(keys[static_cast<std::size_t>(row) - 1]);
    }
    SetSortOrder(column);
    RestoreCellTexts(column);
}

void clsQuickList::RestoreCellTexts(std::int32_t column) {
    ListView& list = Target();
    for (std::int32_t row = 1; row <= list.RowCount(); ++row) {
        ListCell& cell = list.Cell(row, column);
        const std::size_t end = cell.tag.find('\0');
        cell.text = cell.tag.substr(0, end);
        cell.tag.erase(0, end + 1);
    }
}

void clsQuickList::SetSortOrder(std::int32_t column, const KeyOf& orderOf) {
    ListView& list = Target();
    const bool ascending = list.sortOrder == SortOrder::Descending;
    list.Sort(column - 1, ascending ? SortOrder::Ascending : SortOrder::Descending, orderOf);
    if (lastColumn_ != 0)
        list.columns[lastColumn_].headerIcon.clear();
    list.columns[column].headerIcon = ascending ? "ascending" : "descending";
    lastColumn_ = column;
}

std::string clsQuickList::NumberKey(const std::string& text) const {
    // So is nearly every cell, and asking the locale would cost more than all the rest of a sort.
    if (IsPlainNumber(text))
        return FormatNumberPattern(text);
    if (!desktop_.locale.IsNumeric(text))
        return {};
    const double value = desktop_.locale.ToDouble(text);
    const std::string magnitude = FormatNumberPattern(std::fabs(value));
    // "&" stands before the digits, and the complement of each digit reverses the order of the magnitudes.
    return value < 0 ? "&" + InvertDigits(magnitude) : magnitude;
}

std::string clsQuickList::DateKey(const std::string& text) const {
    return SortableDateText(desktop_.locale.ToDate(text));
}

std::string clsQuickList::InvertDigits(std::string text) {
    for (char& character : text) {
        if (character == '-')
            character = ' ';
        else if (character >= '0' && character <= '9')
            character = static_cast<char>('0' + '9' - character);
    }
    return text;
}

void clsQuickList::SaveListToFile(const std::string& strFileName) {
    const ListView& list = Target();
    std::string content;
    for (std::int32_t row = 1; row <= list.RowCount(); ++row)
        content += list.Row(row).main.text + "\r\n";
    desktop_.files.Replace(strFileName, content);
}

} // namespace quarn
