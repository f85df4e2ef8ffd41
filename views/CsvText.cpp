#include "views/CsvText.h"

#include "core/modStringHelper.h"

namespace quarn {

namespace {

constexpr const char* ByteOrderMark = "\xEF\xBB\xBF";

// A NUL ends a text, as in the list.
std::string CellOf(const std::string& text, const LocaleText& locale) {
    std::string cell = locale.ToUtf8(text.substr(0, text.find('\0')));
    if (!cell.empty() && std::string_view("=+-@\t").find(cell.front()) != std::string_view::npos)
        cell.insert(0, 1, ' ');
    if (cell.find_first_of(",\"\r\n") == std::string::npos)
        return cell;
    ReplaceAll(cell, "\"", "\"\"");
    return '"' + cell + '"';
}

} // namespace

bool IsCsvName(std::string_view fileName) {
    return LowerCase(fileName).ends_with(".csv");
}

std::string CsvOf(const ListView& list, const LocaleText& locale) {
    std::string csv = ByteOrderMark;
    const std::int32_t columns = list.columns.HighestIndex();
    const auto append = [&](std::int32_t column, const std::string& text) {
        csv += CellOf(text, locale);
        csv += column < columns ? "," : "\r\n";
    };
    for (std::int32_t column = 1; column <= columns; ++column)
        append(column, list.columns[column].text);
    for (std::int32_t row = 1; row <= list.RowCount(); ++row) {
        const ListRow& shown = list.Row(row);
        append(1, shown.main.text.empty() ? shown.smallIcon : shown.main.text);
        for (std::int32_t column = 2; column <= columns; ++column)
            append(column, list.Cell(row, column).text);
    }
    return csv;
}

} // namespace quarn
