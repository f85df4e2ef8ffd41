#pragma once

// What the lists of the main window say in place of rows: why there are none, and what to do about it.

#include "views/GamesTree.h"
#include "views/MainFormContext.h"

namespace quarn {

// The lists keep a reference to the tree.
void SetEmptyTexts(const MainFormContext& form, const GamesTree& tree);

} // namespace quarn
