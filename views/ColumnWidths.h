#pragma once

// The column widths that the user has set in the three lists, in the form of the settings file: a number of
// twips for each column, separated by commas, in the order servers, players, variables. 0 means the designed
// width.

#include "views/MainControls.h"

#include <string>

namespace quarn {

// Empty if the user has set none.
std::string ColumnWidthsText(const MainControls& controls);

// A missing, damaged or invalid number gives its column the designed width.
void ApplyColumnWidths(const std::string& text, MainControls& controls);

} // namespace quarn
