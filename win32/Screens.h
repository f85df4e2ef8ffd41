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

// Sizes are in twips of the screen that shows most of the window, as every length in it. Positions cannot be:
// the same number would be a place on each of two screens of different DPI. They are in twips of the first
// screen, which for a single screen is the same. There is at least one.
TwipsRect StoredPlace(const RECT& window, Dpi dpiOfWindow, const std::vector<Screen>& screens) noexcept;

// The pixels that are stored so. Where the title bar would be out of reach on every screen, as when one has
// gone since, the window is moved onto the first.
RECT PlaceOnScreens(const TwipsRect& stored, const std::vector<Screen>& screens) noexcept;

} // namespace quarn
