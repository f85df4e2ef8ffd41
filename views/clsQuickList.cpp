#include "views/clsQuickList.h"

#include "base/Scope.h"
#include "support/Trap.h"
#include "views/CsvText.h"
#include "views/GeneralDates.h"

#include <cmath>
#include <cstdio>
#include <utility>

namespace quarn {

namespace {

constexpr const char* ClassName = "clsQuickList";

// A whole number as every locale writes it, and short enough that a double is exact.
bool IsPlainNumber(const std::string& text) {
    constexpr std::size_t PreciseDigits = 15;
    return !text.empty() && text.size() <= PreciseDigits &&
           text.find_first_not_of("0123456789") == std::string::npos;
}

// Twenty digits, a point and ten decimals, so that numbers of any usual size compare as text.
void FormatNumberPattern(const std::string& digits, std::string& key) {
    constexpr std::string_view Zero = "00000000000000000000.0000000000";
    constexpr std::size_t WholeDigits = Zero.find('.');
    key = Zero;
    key.replace(WholeDigits - digits.size(), digits.size(), digits);
}

std::string FormatNumberPattern(double value) {
    const int length = std::snprintf(nullptr, 0, "%031.10f", value);
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::snprintf(text.data(), text.size(), "%031.10f", value);
    text.pop_back();
    return text;
}

} // namespace

ListView& clsQuickList::Target() const {
    if (target_ == nullptr)
        throw RunTimeError(ErrorNumber::ObjectVariableNotSet);
    return *target_;
}

bool clsQuickList::SortList(std::int16_t intIndex) {
    // A date column fails at the first empty cell, that of a server never visited: that is not an error to
    // report.
    const bool isDates =
        target_ != nullptr && target_->columns.Holds(intIndex) && target_->columns[intIndex].tag == "DATE";
    return Trapped(log_, ClassName, "SortList", isDates ? OnError::LogUncounted : OnError::Log, [&] {
        ListView& list = Target();
        list.updatesLocked = true;
        const Finally unlock([&] { list.updatesLocked = false; });
        SortColumn(intIndex);
    });
}

void clsQuickList::SortColumn(std::int32_t column) {
    if (!Target().columns.Holds(column))
        throw RunTimeError(ErrorNumber::SubscriptOutOfRange);
    const std::string& sortType = Target().columns[column].tag;
    if (sortType == "PICTURE" && column == 1) {
        SortByPicture();
    } else if (sortType == "STRING") {
        const SortKeys keys = KeysOf(column, [this](const std::string& text, std::string& key) {
            key = desktop_.locale.SortKey(text);
        });
        SetSortOrder(column, &keys);
    } else if (sortType == "NUMBER") {
        SortByKeyTexts(column, [this](const std::string& text, std::string& key) {
            if (naturalOrder)
                MakeCountKey(text, key);
            else
                MakeNumberKey(text, key);
        });
    } else if (sortType == "DATE") {
        GeneralDates dates(desktop_.locale);
        SortByKeyTexts(column,
                       [&](const std::string& text, std::string& key) { key = DateKey(dates, text); });
    }
}

std::string clsQuickList::DateKey(GeneralDates& dates, const std::string& text) const {
    if (naturalOrder && text.empty())
        return {};
    const DateTime date = dates.Read(text);
    return naturalOrder && date.IsZero() ? std::string() : SortableDateText(date);
}

void clsQuickList::SortAgain() {
    if (!HasArrow())
        return;
    ListView& list = Target();
    const SortOrder order = list.sortOrder;
    list.sortOrder = order == SortOrder::Ascending ? SortOrder::Descending : SortOrder::Ascending;
    if (SortList(static_cast<std::int16_t>(lastColumn_)))
        return;
    list.sortOrder = order;
    ClearArrow();
}

void clsQuickList::SortByPicture() {
    ListView& list = Target();
    const Finally clear([&] {
        for (std::int32_t row = 1; row <= list.RowCount(); ++row)
            list.Cell(row, 1).text.clear();
    });
    for (std::int32_t row = 1; row <= list.RowCount(); ++row)
        list.Cell(row, 1).text = list.Row(row).smallIcon;
    SetSortOrder(1);
}

void clsQuickList::SortByKeyTexts(std::int32_t column, const MakeKey& makeKey) {
    const SortKeys keys = KeysOf(column, makeKey);
    std::vector<ListCell*> parked; // a sort moves rows in the list, not in memory
    parked.reserve(static_cast<std::size_t>(keys.Count()));
    const Finally restore([&] { RestoreCellTexts(parked); });
    for (std::int32_t row = 1; row <= keys.Count(); ++row) {
        ListCell& cell = Target().Cell(row, column);
        ParkCellText(cell, keys.Key(static_cast<std::size_t>(row) - 1));
        parked.push_back(&cell);
    }
    SetSortOrder(column);
}

// All keys are made before anything is changed: a cell without a key ends the sort.
SortKeys clsQuickList::KeysOf(std::int32_t column, const MakeKey& makeKey) const {
    ListView& list = Target();
    SortKeys keys;
    std::string key;
    for (std::int32_t row = 1; row <= list.RowCount(); ++row) {
        makeKey(std::as_const(list).Cell(row, column).text, key);
        keys.Add(key);
        if (betweenRows_) {
            list.updatesLocked = false;
            betweenRows_();
            list.updatesLocked = true;
        }
    }
    return keys;
}

// The tag becomes the text, a NUL and the old tag. Memory is allocated first, so that a cell is parked
// completely or not at all.
void clsQuickList::ParkCellText(ListCell& cell, std::string_view key) {
    cell.text.reserve(key.size());
    cell.tag.reserve(cell.text.size() + 1 + cell.tag.size());
    cell.tag.insert(0, 1, '\0').insert(0, cell.text);
    cell.text = key;
}

// Each tag is split at its first NUL. The cells had these texts and tags before, so no memory is needed.
void clsQuickList::RestoreCellTexts(const std::vector<ListCell*>& cells) {
    for (ListCell* const cell : cells) {
        const std::size_t end = cell->tag.find('\0');
        cell->text.assign(cell->tag, 0, end);
        cell->tag.erase(0, end + 1);
    }
}

void clsQuickList::SetSortOrder(std::int32_t column, const SortKeys* keys) {
    ListView& list = Target();
    const bool ascending = list.sortOrder == SortOrder::Descending;
    const SortOrder order = ascending ? SortOrder::Ascending : SortOrder::Descending;
    if (keys == nullptr)
        list.Sort(column - 1, order);
    else
        list.Sort(column - 1, order, *keys);
    ClearArrow();
    list.columns[column].headerIcon = ascending ? "ascending" : "descending";
    lastColumn_ = column;
}

void clsQuickList::ClearArrow() {
    if (lastColumn_ != 0)
        Target().columns[lastColumn_].headerIcon.clear();
    lastColumn_ = 0;
}

void clsQuickList::MakeNumberKey(const std::string& text, std::string& key) const {
    // Fast path: nearly every cell is a plain number, and the locale call would dominate the sort.
    if (IsPlainNumber(text)) {
        FormatNumberPattern(text, key);
    } else if (!desktop_.locale.IsNumeric(text)) {
        key.clear();
    } else {
        const double value = desktop_.locale.ToDouble(text);
        key = FormatNumberPattern(std::fabs(value));
        // "&" precedes the digits, and the complement of each digit reverses the order of the magnitudes.
        if (value < 0)
            key = "&" + InvertDigits(key);
    }
}

// By the number before the separator, then by the one after it. A text without a separator is one number.
void clsQuickList::MakeCountKey(const std::string& text, std::string& key) const {
    constexpr std::string_view Separator = " / ";
    const std::size_t end = text.find(Separator);
    MakeNumberKey(text.substr(0, end), key);
    if (end == std::string::npos)
        return;
    std::string maximum;
    MakeNumberKey(text.substr(end + Separator.size()), maximum);
    key += maximum;
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
    if (IsCsvName(strFileName))
        return desktop_.files.Replace(strFileName, CsvOf(list, desktop_.locale));
    std::string content;
    for (std::int32_t row = 1; row <= list.RowCount(); ++row)
        content += list.Row(row).main.text + "\r\n";
    desktop_.files.Replace(strFileName, content);
}

} // namespace quarn
