#pragma once

// The status bar's panels, numbered from 1. The window reports the geometry, in twips; the program sets the
// texts.

#include "base/Geometry.h"
#include "base/OneBased.h"

#include <string>
#include <vector>

namespace quarn {

struct StatusPanel {
    enum class Kind { Text, CapsLock, NumLock, ScrollLock };

    std::string text;
    std::string tag;
    std::string toolTip;
    Kind kind = Kind::Text;
    std::int32_t designWidth = 0; // twips; 0: the first such panel takes the space that the others leave
    std::int32_t leastWidth = 0;  // when the panel that takes the rest needs space
    std::int32_t left = 0;
    std::int32_t width = 0;
};

struct StatusBar {
    OneBased<StatusPanel> panels;
    std::int32_t top = 0;
    std::int32_t height = 0;
    bool redraw = false; // dock at the bottom again and repaint at the next flush
};

// The widths of the panels in a bar of the given width, all in twips. Where the panel that takes what is left
// would have less than its least width, the others shrink to theirs, the second one first.
std::vector<std::int32_t> PanelWidths(const StatusBar& bar, std::int32_t width);

} // namespace quarn
