#pragma once

#include <cstdint>

namespace quarn {

// Microseconds of the system's fine, monotonic counter, from an arbitrary start.
std::int64_t PerformanceMicroseconds() noexcept;

} // namespace quarn
