#pragma once

#include <algorithm>
#include <cstdint>

namespace quarn {

// The index from 1 to `highest` that matches and is nearest to `likely`; 0 if none matches.
template<class Matches>
std::int32_t NearestIndex(std::int32_t highest, std::int32_t likely, Matches&& matches) {
    const std::int32_t start = std::clamp(likely, 1, std::max(highest, 1));
    for (std::int32_t distance = 0; distance < highest; ++distance) {
        if (start - distance >= 1 && matches(start - distance))
            return start - distance;
        if (start + distance <= highest && matches(start + distance))
            return start + distance;
    }
    return 0;
}

} // namespace quarn
