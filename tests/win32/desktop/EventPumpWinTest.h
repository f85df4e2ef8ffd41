#pragma once

// An event pump, and a window whose messages are counted.

#include "tests/win32/harness/Pumping.h"
#include "win32/MessageWindow.h"
#include "win32/PerformanceCounter.h"
#include "win32/desktop/EventPumpWin.h"

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>

namespace quarn {

inline void Spend(std::int64_t microseconds) {
    const std::int64_t start = PerformanceMicroseconds();
    while (PerformanceMicroseconds() - start < microseconds) {
    }
}

class EventPumpWinTest : public ::testing::Test {
  protected:
    // Messages from the creation of windows are not part of the test.
    EventPumpWinTest() {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
    }

    void Post(int count) {
        for (int i = 0; i < count; ++i)
            PostMessageA(window.Handle(), WM_APP, 0, 0);
    }

    // Yields like a loop over many records.
    bool DoEventsUntil(const std::function<bool()>& condition) {
        const ULONGLONG start = GetTickCount64();
        while (!condition() && GetTickCount64() - start < PatienceMilliseconds)
            pump.DoEvents();
        return condition();
    }

    static std::int64_t ProcessorMicroseconds() {
        FILETIME created, exited, kernel, user;
        GetProcessTimes(GetCurrentProcess(), &created, &exited, &kernel, &user);
        const auto microseconds = [](const FILETIME& t) {
            return (std::int64_t{t.dwHighDateTime} << 32 | t.dwLowDateTime) / 10;
        };
        return microseconds(kernel) + microseconds(user);
    }

    std::function<void()> onMessage = [] {};
    int handled = 0;
    MessageWindow window{[this](UINT message, WPARAM, LPARAM) {
        if (message != WM_APP)
            return;
        ++handled;
        onMessage();
    }};
    EventPumpWin pump;
};

} // namespace quarn
