#include "win32/desktop/EventPumpWin.h"

#include "win32/PerformanceCounter.h"

#include <algorithm>

namespace quarn {

namespace {

// An empty look into the message queue is not free, and loops over many records call for each of them.
constexpr std::int64_t RestAfterEvents = 10'000; // microseconds, as below

// While events come in, the windows follow the models after rests of this length: the dearer an update was,
// the longer, so that no more than a twentieth of the time goes into them on a slow display either.
constexpr std::int64_t ShortestRestAfterUpdate = 100'000;
constexpr std::int64_t LongestRestAfterUpdate = 1'000'000;
constexpr std::int64_t RestsForEachUpdate = 19;

// An update at the start of a wait is over before a reply comes; one that falls due later lets it come first.
constexpr std::int64_t TimeForReplies = 50'000;

// Events may bring further events; what has not run by then waits for the next call.
constexpr std::int64_t LongestTurn = 50'000;

// What the user does reaches visible windows; sockets and timers have windows of their own that nobody sees.
bool IsActOfTheUser(const MSG& message) noexcept {
    switch (message.message) {
    case WM_PAINT:
    case WM_TIMER:
    case WM_MOUSEMOVE:
    case WM_NCMOUSEMOVE:
        return false;
    default:
        return message.hwnd && (GetWindowLongA(message.hwnd, GWL_STYLE) & WS_VISIBLE) != 0;
    }
}

} // namespace

EventPumpWin::EventPumpWin() noexcept
    : nextUpdateAt_(PerformanceMicroseconds()), eventsRanAt_(PerformanceMicroseconds() - RestAfterEvents) {}

int EventPumpWin::Run() {
    while (!quit_) {
        handlerWaited_ = false;
        SleepAndRunNext();
        // A command that took its time has come to its end: what it leaves is shown at once.
        if (handlerWaited_)
            nextUpdateAt_ = PerformanceMicroseconds();
    }
    MSG putBack;
    PeekMessageA(&putBack, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    return exitCode_;
}

void EventPumpWin::DoEvents() {
    const std::int64_t start = PerformanceMicroseconds();
    if (quit_ || start - eventsRanAt_ < RestAfterEvents)
        return;
    handlerWaited_ = true;
    updatePending_ = true;
    if (start >= nextUpdateAt_)
        UpdateWindows();
    while (RunNext() && PerformanceMicroseconds() - start < LongestTurn) {
    }
    eventsRanAt_ = PerformanceMicroseconds();
}

void EventPumpWin::WaitForEvent() {
    handlerWaited_ = true;
    if (!quit_)
        SleepAndRunNext();
}

void EventPumpWin::SleepAndRunNext() {
    Sleep();
    RunNext();
    eventsRanAt_ = PerformanceMicroseconds();
}

void EventPumpWin::Sleep() {
    DWORD woken = WAIT_TIMEOUT;
    while (woken == WAIT_TIMEOUT) {
        const std::int64_t rest = nextUpdateAt_ - PerformanceMicroseconds();
        if (updatePending_ && rest <= 0)
            UpdateWindows();
        const DWORD timeout = updatePending_ ? static_cast<DWORD>((rest + TimeForReplies) / 1000) : INFINITE;
        woken = MsgWaitForMultipleObjectsEx(0, nullptr, timeout, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
}

void EventPumpWin::UpdateWindows() {
    const std::int64_t start = PerformanceMicroseconds();
    if (updateWindows)
        updateWindows();
    updatePending_ = false;
    const std::int64_t end = PerformanceMicroseconds();
    nextUpdateAt_ =
        end + std::clamp((end - start) * RestsForEachUpdate, ShortestRestAfterUpdate, LongestRestAfterUpdate);
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
    if (updatePending_ && IsActOfTheUser(message))
        UpdateWindows();
    updatePending_ = true;
    if (!preTranslate || !preTranslate(message)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    // Also where the windows were brought up to date in the middle of the handler: it went on after that.
    updatePending_ = true;
    return true;
}

} // namespace quarn
