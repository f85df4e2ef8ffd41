#pragma once

// What every part of the main form works with.

#include "core/modDefinitions.h"
#include "desktop/Desktop.h"
#include "desktop/FormWindow.h"
#include "views/CommandGate.h"
#include "views/MainControls.h"

namespace quarn {

struct MainFormContext {
    ProgramState& program;
    Desktop& desktop;
    FormWindow& window;
    MainControls& controls;
    CommandGate& gate;
};

// The name under which every part of the main form logs its errors.
inline constexpr const char* MainFormName = "frmMain";

} // namespace quarn
