#pragma once

#include <cstdint>

namespace quarn {

// Microseconds of the system's high-resolution monotonic counter, from an arbitrary start.
std::int64_t PerformanceMicroseconds() noexcept;

} // namespace quarn
