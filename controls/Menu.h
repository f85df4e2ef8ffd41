#pragma once

#include <string>

namespace quarn {

// A menu entry that changes while the program runs. What never changes stands in the menu resource alone.
struct MenuEntry {
    std::string caption;
    bool enabled = true;
    bool visible = true;
    bool operator==(const MenuEntry&) const = default;
};

} // namespace quarn
