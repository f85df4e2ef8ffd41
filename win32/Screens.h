#pragma once

// The monitors, for restoring a window's position of an earlier run.

#include "win32/Dpi.h"

#include <vector>

namespace quarn {

struct Screen {
    RECT workArea; // without the taskbar
    Dpi dpi;
};

// The primary one first; never empty.
std::vector<Screen> ConnectedScreens();

// Sizes are in twips of the screen that shows most of the window, like every length in it. Positions are in
// twips of the first screen, because the same number of the own screen's twips could mean a place on each of
// two screens of different DPI. For a single screen this is the same. There is at least one screen.
TwipsRect StoredPlace(const RECT& window, Dpi dpiOfWindow, const std::vector<Screen>& screens) noexcept;

// The pixels of a stored rectangle. If the title bar would be out of reach on every screen, for example after
// a monitor was removed, the window is moved to the first screen.
RECT PlaceOnScreens(const TwipsRect& stored, const std::vector<Screen>& screens) noexcept;

} // namespace quarn
