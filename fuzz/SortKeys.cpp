// Cells of any text, sorted by a column of any type in either direction: the rows are in the order of their
// cells' values, equal ones in their former order, and every row keeps its texts and tags, except that a NUL
// in a number or date splits them. A sort that fails changes nothing.
//
// The input's first byte chooses type and direction; the lines after it are the cells.

#include "base/RunTimeError.h"
#include "core/modStringHelper.h"
#include "fuzz/Require.h"
#include "support/clsAppLog.h"
#include "tests/fakes/FakeDesktop.h"
#include "views/clsQuickList.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quarn::fuzz {

namespace {

enum Type { Picture, String, Number, Date, TypeCount };
constexpr const char* TypeNames[] = {"PICTURE", "STRING", "NUMBER", "DATE"};

// The largest number that the key's digits distinguish from its neighbours.
constexpr double LargestOrdered = 1e15;

struct SortCase {
    Type type;
    bool ascending;
    std::vector<std::string> cells;
    std::int32_t column = 0;
};

// Unlike a number or a date, a tag may contain anything.
std::string TagOf(const std::string& cell) {
    return cell + '\0' + cell;
}

ListView ListOf(const SortCase& sort) {
    ListView list;
    list.columns.Reset(2);
    list.columns[sort.column].tag = TypeNames[sort.type];
    for (const std::string& cell : sort.cells) {
        const std::int32_t row = list.Add();
        list.Cell(row, 1).tag = std::to_string(row);
        if (sort.type == Picture) {
            list.Edit(row).smallIcon = cell;
        } else {
            list.Cell(row, sort.column).text = cell;
            list.Cell(row, sort.column).tag = TagOf(cell);
        }
    }
    list.sortOrder = sort.ascending ? SortOrder::Descending : SortOrder::Ascending;
    return list;
}

// The former positions of the rows, from their own tags.
std::vector<std::size_t> Order(const ListView& list) {
    std::vector<std::size_t> order;
    for (std::int32_t row = 1; row <= list.RowCount(); ++row)
        order.push_back(std::stoul(list.Row(row).main.tag) - 1);
    return order;
}

// Each cell has its own text and tag, split at the first NUL if they were parked in the tag.
void RequireOwnTexts(const ListView& list, const SortCase& sort, bool wereParked) {
    const std::vector<std::size_t> order = Order(list);
    for (std::int32_t row = 1; row <= list.RowCount(); ++row) {
        const std::string& cell = sort.cells[order[static_cast<std::size_t>(row) - 1]];
        if (sort.type == Picture) {
            Require(list.Row(row).smallIcon == cell, "a row keeps its picture");
            Require(list.Row(row).main.text.empty(), "no text beside a picture");
        } else {
            const std::string textAndTag = cell + '\0' + TagOf(cell);
            const std::size_t end = wereParked ? textAndTag.find('\0') : cell.size();
            Require(list.Cell(row, sort.column).text == textAndTag.substr(0, end), "a cell keeps its text");
            Require(list.Cell(row, sort.column).tag == textAndTag.substr(end + 1), "a cell keeps its tag");
        }
    }
}

// -1, 0 or 1 by the cells' values; nothing if the key cannot distinguish them.
std::optional<int> Compare(const ClassicLocale& locale, Type type, const std::string& a,
                           const std::string& b) {
    const auto sign = [](auto left, auto right) { return left < right ? -1 : left > right ? 1 : 0; };
    if (type == Picture)
        return sign(a, b);
    if (type == String)
        return sign(locale.SortKey(a), locale.SortKey(b));
    if (type == Date)
        return sign(locale.ToDate(a), locale.ToDate(b));
    const bool numbers[] = {locale.IsNumeric(a), locale.IsNumeric(b)};
    if (!numbers[0] || !numbers[1])
        return sign(numbers[0], numbers[1]);
    const double left = locale.ToDouble(a);
    const double right = locale.ToDouble(b);
    const bool told = std::fabs(left) < LargestOrdered && std::fabs(right) < LargestOrdered &&
                      std::fabs(left - right) > 1e-9;
    return told ? std::optional(sign(left, right)) : std::nullopt;
}

void RequireOrder(const ListView& list, const SortCase& sort, const ClassicLocale& locale) {
    const std::vector<std::size_t> order = Order(list);
    for (std::size_t i = 1; i < order.size(); ++i) {
        const std::optional<int> compared =
            Compare(locale, sort.type, sort.cells[order[i - 1]], sort.cells[order[i]]);
        if (!compared)
            continue;
        Require(sort.ascending ? *compared <= 0 : *compared >= 0, "the order of what the cells mean");
        Require(*compared != 0 || order[i - 1] < order[i], "equal cells stay in their order");
    }
}

} // namespace

} // namespace quarn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quarn;
    using namespace quarn::fuzz;
    if (size == 0)
        return 0;
    SortCase sort{static_cast<Type>(data[0] % TypeCount), (data[0] / TypeCount) % 2 == 0, {}};
    sort.column = sort.type == Picture ? 1 : 2;
    for (const std::string_view cell : Split({reinterpret_cast<const char*>(data) + 1, size - 1}, '\n'))
        sort.cells.emplace_back(cell);

    FakeDesktop fake;
    clsAppLog log(fake.desktop, "C:\\Quarn\\");
    clsQuickList sorter(log, fake.desktop);
    ListView list = ListOf(sort);
    const SortOrder before = list.sortOrder;
    sorter.SetTargetList(list);
    const bool sorted = sorter.SortList(static_cast<std::int16_t>(sort.column));

    Require(!list.updatesLocked, "the list is painted again");
    const bool hasKeyTexts = sort.type == Number || sort.type == Date;
    RequireOwnTexts(list, sort, hasKeyTexts && sorted);
    if (sorted) {
        Require(list.sortOrder != before, "the order flips");
        RequireOrder(list, sort, fake.locale);
        return 0;
    }
    Require(hasKeyTexts, "only numbers and dates can fail");
    Require(log.ErrorCount() == (sort.type == Number ? 1 : 0), "the failure of a date is not counted");
    Require(list.sortOrder == before, "the order as before");
    const std::vector<std::size_t> order = Order(list);
    for (std::size_t i = 0; i < order.size(); ++i)
        Require(order[i] == i, "the rows as before");
    return 0;
}
