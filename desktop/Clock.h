#pragma once

#include "base/DateTime.h"

#include <cstdint>

namespace quarn {

struct LocalTime {
    DateTime time;
    int milliseconds = 0; // 0..999
};

class Clock {
  public:
    virtual ~Clock() = default;

    // Milliseconds since the system started, true to the millisecond; wraps around at 2^32 and is negative
    // in between. Differences are computed modulo 2^32.
    virtual std::int32_t TickCount() const = 0;

    virtual LocalTime Now() const = 0;
};

} // namespace quarn
