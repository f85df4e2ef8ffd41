#pragma once

// The toolbar's buttons: one table holds what each is called, what it shows and what it does. The key also
// names its icon resource.

#include "controls/Toolbar.h"

#include <string_view>

namespace quarn {

class frmMain;

void AddToolbarButtons(Toolbar& toolbar);

// Runs the command of the button. An unknown key does nothing.
void RunToolbarButton(std::string_view key, frmMain& form);

} // namespace quarn
