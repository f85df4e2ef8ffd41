#include "win32/desktop/ClockWin.h"

#include "win32/PerformanceCounter.h"
#include "win32/WindowsHeaders.h"

namespace quarn {

namespace {

// The thread may be interrupted between the two readings. At the start the coarse counter is read last, and
// later first, so that such a gap can only make the coarse counter look late, which it is anyway.
ContinuousTicks StartedTicks() noexcept {
    const std::int64_t fine = PerformanceMicroseconds();
    return {GetTickCount(), fine};
}

} // namespace

ClockWin::ClockWin() noexcept : ticks_(StartedTicks()) {}

std::int32_t ClockWin::TickCount() const {
    const DWORD coarse = GetTickCount();
    return static_cast<std::int32_t>(ticks_.At(coarse, PerformanceMicroseconds()));
}

LocalTime ClockWin::Now() const {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return {DateTime::From({now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond}),
            now.wMilliseconds};
}

} // namespace quarn
