#pragma once

// A list as a table for other programs: comma-separated values in UTF-8.

#include "controls/ListView.h"
#include "desktop/LocaleText.h"

#include <string>
#include <string_view>

namespace quarn {

// Whether a file of this name gets the list as CSV: the name ends in ".csv", in upper or lower case.
bool IsCsvName(std::string_view fileName);

// All columns and rows as shown, in display order, with the column headers as the first line; if the first
// column shows an icon, the icon's name. The format is that of RFC 4180 with a byte-order mark: lines end in
// CR LF, and a cell with a comma, a quote or a line end is in quotes, its own quotes doubled. A blank
// precedes a cell that begins like a formula (=, +, -, @ or a tab), so that no spreadsheet evaluates a
// server's name.
std::string CsvOf(const ListView& list, const LocaleText& locale);

} // namespace quarn
