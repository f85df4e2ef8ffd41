#include "views/LayoutRules.h"

#include <algorithm>

namespace quarn {

namespace {

constexpr std::int32_t Gap = 50;          // between tree and list, above and below
constexpr std::int32_t UpperToLower = 75; // from the upper row's height to the lower row's top
constexpr std::int32_t RightMargin = 175; // what two neighbours leave of the width
constexpr std::int32_t BelowUpper = 1650; // what toolbar, status bar and gaps take of the lower half

} // namespace

MainLayout LayOut(TwipsSize inner, std::int32_t toolbarHeight) {
    const std::int32_t width = std::max(inner.width, 0);
    const std::int32_t half = std::max(inner.height / 2, 0);
    const std::int32_t lowerHeight = std::max(half - BelowUpper, 0);
    const std::int32_t upperTop = toolbarHeight + UpperToLower - Gap;
    const std::int32_t lowerTop = toolbarHeight + half + UpperToLower;

    MainLayout layout;
    layout.trvGames = {0, upperTop, TreeWidth, half};
    layout.lvwServers = {TreeWidth + Gap, upperTop, std::max(width - TreeWidth - RightMargin, 0), half};
    layout.lvwPlayers = {0, lowerTop, width / 2, lowerHeight};
    layout.lvwServVars = {width / 2 + Gap, lowerTop,
                          std::max(width - layout.lvwPlayers.width - RightMargin, 0), lowerHeight};
    return layout;
}

} // namespace quarn
