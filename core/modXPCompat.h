#pragma once

#include "desktop/SystemInformation.h"

namespace quarn {

// Initialises the common controls library, so that the controls use the current visual style. Errors are
// ignored.
void InitCommonControlsVB(SystemInformation& system) noexcept;

} // namespace quarn
