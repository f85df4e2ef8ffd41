#pragma once

// A toolbar's buttons, numbered from 1, including the separators.

#include "base/OneBased.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace quarn {

struct ToolbarButton {
    std::string key; // empty: a separator
    std::string label;
    std::string toolTip;
    bool enabled = true;
};

struct Toolbar {
    OneBased<ToolbarButton> buttons;

    // Position of the button with this key, 0 if there is none.
    std::int32_t PositionOf(std::string_view key) const {
        for (std::int32_t position = 1; position <= buttons.HighestIndex(); ++position)
            if (!key.empty() && buttons[position].key == key)
                return position;
        return 0;
    }

    std::int32_t height = 0; // twips, reported by the window
};

} // namespace quarn
