#pragma once

#include "base/Geometry.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace quarn {

// A bar that is filled from 0 to its maximum. A value outside this range is clamped.
class ProgressBar {
  public:
    std::int32_t Maximum() const noexcept { return maximum_; }
    void SetMaximum(std::int32_t maximum) {
        maximum_ = std::max(maximum, 0);
        SetValue(value_);
    }

    std::int32_t Value() const noexcept { return value_; }
    void SetValue(std::int32_t value) { value_ = std::clamp(value, 0, maximum_); }

    bool active = false; // work is in progress
    std::string toolTip;

    TwipsRect bounds; // in the window's inner area
    bool flat = false;
    bool inFront = false;

  private:
    std::int32_t maximum_ = 100;
    std::int32_t value_ = 0;
};

} // namespace quarn
