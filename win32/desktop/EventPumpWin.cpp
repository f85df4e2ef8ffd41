#include "win32/desktop/EventPumpWin.h"

#include "win32/PerformanceCounter.h"

namespace quarn {

namespace {

// An empty look into the message queue is not free, and loops over many records call for each of them.
constexpr std::int64_t RestAfterEvents = 10'000; // microseconds, as below

// Events may bring further events; what has not run by then waits for the next call.
constexpr std::int64_t LongestTurn = 50'000;

} // namespace

EventPumpWin::EventPumpWin() noexcept : eventsRanAt_(PerformanceMicroseconds() - RestAfterEvents) {}

int EventPumpWin::Run() {
    while (!quit_)
        WaitForEvent();
    MSG putBack;
    PeekMessageA(&putBack, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    return exitCode_;
}

void EventPumpWin::DoEvents() {
    const std::int64_t start = PerformanceMicroseconds();
    if (quit_ || start - eventsRanAt_ < RestAfterEvents)
        return;
    UpdateWindows();
    while (RunNext() && PerformanceMicroseconds() - start < LongestTurn) {
    }
    eventsRanAt_ = PerformanceMicroseconds();
}

void EventPumpWin::WaitForEvent() {
    if (quit_)
        return;
    UpdateWindows();
    MsgWaitForMultipleObjectsEx(0, nullptr, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    RunNext();
    eventsRanAt_ = PerformanceMicroseconds();
}

void EventPumpWin::UpdateWindows() {
    if (beforeWait)
        beforeWait();
}

bool EventPumpWin::RunNext() {
    // Looking also runs what other threads and programs have sent to our windows.
    MSG message;
    if (!PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
        return false;
    if (message.message == WM_QUIT) {
        quit_ = true;
        exitCode_ = static_cast<int>(message.wParam);
        PostQuitMessage(exitCode_);
        return false;
    }
    if (!preTranslate || !preTranslate(message)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return true;
}

} // namespace quarn
