#include "win32/PerformanceCounter.h"

#include "win32/WindowsHeaders.h"

namespace quarn {

std::int64_t PerformanceMicroseconds() noexcept {
    static const std::int64_t frequency = [] {
        LARGE_INTEGER perSecond;
        QueryPerformanceFrequency(&perSecond);
        return perSecond.QuadPart;
    }();
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    // Whole seconds are converted separately, because the count times a million would overflow after some
    // days.
    return now.QuadPart / frequency * 1000000 + now.QuadPart % frequency * 1000000 / frequency;
}

} // namespace quarn
