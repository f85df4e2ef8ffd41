#include "win32/desktop/ClockWin.h"

#include "win32/PerformanceCounter.h"
#include "win32/WindowsHeaders.h"

namespace quarn {

ClockWin::ClockWin() noexcept : ticks_(GetTickCount(), PerformanceMicroseconds()) {}

std::int32_t ClockWin::TickCount() const {
    return static_cast<std::int32_t>(ticks_.At(GetTickCount(), PerformanceMicroseconds()));
}

LocalTime ClockWin::Now() const {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return {DateTime::From({now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond}),
            now.wMilliseconds};
}

} // namespace quarn
