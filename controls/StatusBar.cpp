#include "controls/StatusBar.h"

#include <algorithm>

namespace quarn {

std::vector<std::int32_t> PanelWidths(const StatusBar& bar, std::int32_t width) {
    std::vector<std::int32_t> widths;
    std::int32_t wanted = 0; // by all panels, the one that takes what is left at its least
    for (std::int32_t panel = 1; panel <= bar.panels.HighestIndex(); ++panel) {
        const StatusPanel& measured = bar.panels[panel];
        widths.push_back(measured.designWidth);
        wanted += measured.designWidth == 0 ? measured.leastWidth : measured.designWidth;
    }
    std::int32_t missing = std::max(wanted - width, 0);
    std::int32_t taken = 0;
    for (std::size_t index = 0; index < widths.size(); ++index) {
        const StatusPanel& panel = bar.panels[static_cast<std::int32_t>(index) + 1];
        const std::int32_t given = std::clamp(panel.designWidth - panel.leastWidth, 0, missing);
        widths[index] -= given;
        missing -= given;
        taken += widths[index];
    }
    for (std::size_t index = 0; index < widths.size(); ++index)
        if (bar.panels[static_cast<std::int32_t>(index) + 1].designWidth == 0) {
            widths[index] = std::max(width - taken, 0);
            break;
        }
    return widths;
}

} // namespace quarn
