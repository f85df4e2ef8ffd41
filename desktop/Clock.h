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

    // Milliseconds since the system started, exact to the millisecond. The value wraps around at 2^32 and is
    // negative for the upper half. Differences are computed modulo 2^32.
    virtual std::int32_t TickCount() const = 0;

    virtual LocalTime Now() const = 0;
};

// Milliseconds from one reading of the tick counter to a later one, also across its wrap at 2^32.
constexpr std::int32_t TicksBetween(std::int32_t from, std::int32_t to) noexcept {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(to) - static_cast<std::uint32_t>(from));
}

} // namespace quarn
