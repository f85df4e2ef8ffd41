#pragma once

// The toolbar's buttons: one table contains the name, icon and command of each. The key is also the name of
// its icon resource.

#include "controls/Toolbar.h"

#include <string_view>

namespace quarn {

class frmMain;

void AddToolbarButtons(Toolbar& toolbar);

// Runs the command of the button. An unknown key does nothing.
void RunToolbarButton(std::string_view key, frmMain& form);

} // namespace quarn
