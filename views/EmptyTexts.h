#pragma once

// The texts that the main window's lists show if they have no rows: why they are empty, and what to do.

#include "views/GamesTree.h"
#include "views/MainFormContext.h"

namespace quarn {

// The lists keep a reference to the tree.
void SetEmptyTexts(const MainFormContext& form, const GamesTree& tree);

} // namespace quarn
