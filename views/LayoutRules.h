#pragma once

// Resize rules of the main window: pure arithmetic on twips.

#include "views/MainControls.h"

namespace quarn {

// Fixed by design.
inline constexpr std::int32_t TreeWidth = 3900;
inline constexpr TwipsSize DesignSize = {17700, 10200}; // outer frame of a first start
inline constexpr TwipsSize LeastSize = {8400, 6300};    // of the inner area

// Places the lists below a toolbar of the given height inside a window of the given inner size. Sizes never
// get negative.
MainLayout LayOut(TwipsSize inner, std::int32_t toolbarHeight);

} // namespace quarn
