#pragma once

// Resize rules of the main window: pure arithmetic on twips.

#include "views/MainControls.h"

namespace quarn {

// Fixed by design.
inline constexpr std::int32_t TreeWidth = 3900;
inline constexpr TwipsSize DesignSize = {17700, 10200}; // outer frame of a first start
inline constexpr TwipsSize LeastSize = {8400, 6300};    // of the inner area

// Places the lists below a toolbar of the given height in a window of the given inner size. Sizes are never
// negative.
MainLayout LayOut(TwipsSize inner, std::int32_t toolbarHeight);

// Where the search box lies in the toolbar, and how much higher it makes it.
struct SearchBoxPlace {
    TwipsRect box;
    std::int32_t addedHeight = 0;
    bool operator==(const SearchBoxPlace&) const = default;
};

// At the right end of the toolbar, in the middle of its height; below the buttons where they leave too little
// width. `buttons` is where the last button ends, and how high the toolbar is without the box.
SearchBoxPlace PlaceSearchBox(std::int32_t innerWidth, TwipsSize buttons, std::int32_t boxHeight);

// Shortens the lower lists where they reach below this line: a higher toolbar pushes them down.
void EndAbove(MainLayout& layout, std::int32_t bottom);

} // namespace quarn
