#pragma once

// A toolbar's buttons, numbered from 1 with the separators counted.

#include "base/OneBased.h"

#include <string>

namespace quarn {

struct ToolbarButton {
    std::string key; // empty: a separator
    std::string toolTip;
    bool enabled = true;
};

struct Toolbar {
    OneBased<ToolbarButton> buttons;
    std::int32_t height = 0; // twips, reported by the window
};

} // namespace quarn
