#include "views/LayoutRules.h"

#include <algorithm>
#include <initializer_list>

namespace quarn {

namespace {

constexpr std::int32_t Gap = 50;          // between tree and list, above and below
constexpr std::int32_t UpperToLower = 75; // from the upper row's height to the lower row's top
constexpr std::int32_t RightMargin = 175; // the space between and beside two neighbours
constexpr std::int32_t BelowUpper = 1650; // the height of toolbar, status bar and gaps in the lower half

// Of the search box.
constexpr std::int32_t BoxMargin = 120;
constexpr std::int32_t WidestBox = 3300;
constexpr std::int32_t NarrowestBox = 1650; // next to the buttons

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

void EndAbove(MainLayout& layout, std::int32_t bottom) {
    for (TwipsRect* const list : {&layout.lvwPlayers, &layout.lvwServVars})
        list->height = std::clamp(bottom - list->top, 0, list->height);
}

SearchBoxPlace PlaceSearchBox(std::int32_t innerWidth, TwipsSize buttons, std::int32_t boxHeight) {
    const std::int32_t right = std::max(innerWidth, 0) - BoxMargin;
    const std::int32_t leftMost = buttons.width + BoxMargin;
    SearchBoxPlace place;
    place.box.height = boxHeight;
    if (right - leftMost >= NarrowestBox) {
        place.box.left = std::max(leftMost, right - WidestBox);
        place.box.top = (buttons.height - boxHeight) / 2;
    } else {
        place.box.left = std::max(BoxMargin, right - WidestBox);
        place.box.top = buttons.height;
        place.addedHeight = boxHeight + BoxMargin;
    }
    place.box.width = std::max(right - place.box.left, 0);
    return place;
}

} // namespace quarn
