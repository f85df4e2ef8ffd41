#pragma once

// Sizes and positions in twips: 1440 to an inch, 15 to a pixel at 96 dots an inch.

#include <cstdint>

namespace quarn {

struct TwipsRect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t width = 0;
    std::int32_t height = 0;
    bool operator==(const TwipsRect&) const = default;
};

struct TwipsSize {
    std::int32_t width = 0;
    std::int32_t height = 0;
    bool operator==(const TwipsSize&) const = default;
};

} // namespace quarn
