#pragma once

// The monitors, for a window that wants back to where it stood in an earlier run.

#include "win32/Dpi.h"

#include <vector>

namespace quarn {

struct Screen {
    RECT workArea; // without the taskbar
    Dpi dpi;
};

// The primary one first; never none.
std::vector<Screen> ConnectedScreens();

// The rectangle of a window in pixels of the screen it is on. Where its title bar would be out of reach on
// every screen, as when one has gone since, it is moved onto the first. There is at least one.
RECT PlaceOnScreens(const TwipsRect& window, const std::vector<Screen>& screens) noexcept;

} // namespace quarn
