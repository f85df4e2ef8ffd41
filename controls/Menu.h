#pragma once

#include <string>

namespace quarn {

// A menu entry that changes while the program runs. Entries that never change are only in the menu resource.
struct MenuEntry {
    std::string caption;
    bool enabled = true;
    bool visible = true;
    bool operator==(const MenuEntry&) const = default;
};

} // namespace quarn
