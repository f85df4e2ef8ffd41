#pragma once

// The widths that the user gave the columns of the three lists, as the settings file keeps them: a number of
// twips for each column, separated by commas, in the order servers, players, variables. A 0 is a column that
// has the width of its design.

#include "views/MainControls.h"

#include <string>

namespace quarn {

// Empty if the user changed none.
std::string ColumnWidthsText(const MainControls& controls);

// A number that is missing, damaged, or no width leaves its column as designed.
void ApplyColumnWidths(const std::string& text, MainControls& controls);

} // namespace quarn
