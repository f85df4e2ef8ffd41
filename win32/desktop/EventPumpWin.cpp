#include "win32/desktop/EventPumpWin.h"

#include "win32/MessageWindow.h"
#include "win32/PerformanceCounter.h"

#include <algorithm>
#include <array>

namespace quarn {

namespace {

// Looking into an empty message queue costs time, and loops over many records call this for each of them.
constexpr std::int64_t RestAfterEvents = 10'000; // microseconds, as below

// Minimum pause between two window updates. It grows with the cost of the last update, so that updates take
// at most 5 % of the time.
constexpr std::int64_t ShortestRestAfterUpdate = 100'000;
constexpr std::int64_t LongestRestAfterUpdate = 1'000'000;
constexpr std::int64_t RestsForEachUpdate = 19;

// An update due later than this after the start of a wait is postponed until the reply has been handled.
constexpr std::int64_t TimeForReplies = 50'000;

// Events may cause further events; those that have not run by then wait for the next call.
constexpr std::int64_t LongestTurn = 50'000;

// The queue delivers posted messages before input, input before painting and painting before timers. A
// flooded socket posts without end, so each of the later kinds is looked for separately if the queue has not
// delivered one for this long.
constexpr std::int64_t LongestWithoutTurn = 10'000;

struct Kind {
    UINT status; // of GetQueueStatus
    UINT flags;  // of PeekMessage
    UINT message;
};
constexpr std::array<Kind, 3> LaterKinds = {{
    {QS_INPUT, PM_QS_INPUT, 0},
    {QS_PAINT, PM_QS_PAINT, 0},
    {QS_TIMER, 0, WM_TIMER},
}};

// How many of the later kinds the queue has reached when it delivers this message.
std::size_t KindsReached(UINT message) noexcept {
    switch (message) {
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_SYSKEYDOWN:
    case WM_SYSKEYUP:
        return 1;
    case WM_PAINT:
        return 2;
    case WM_TIMER:
        return 3;
    default:
        const bool isMouse = (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
                             (message >= WM_NCMOUSEMOVE && message <= WM_NCXBUTTONDBLCLK);
        return isMouse ? 1 : 0;
    }
}

bool Take(MSG& message, const Kind& kind) noexcept {
    // A key's character is posted when the key is translated, and must precede the key's release. This range
    // contains both, and posted messages come first. (PM_QS_POSTMESSAGE alone would miss the character if a
    // message sent by another program were handled before.)
    if (kind.status == QS_INPUT && PeekMessageA(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE))
        return true;
    return PeekMessageA(&message, nullptr, kind.message, kind.message, PM_REMOVE | kind.flags) != FALSE;
}

// User input goes to visible windows; sockets and timers have invisible windows of their own.
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
        // A command that took a while has ended: its result is shown at once.
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

bool EventPumpWin::TakeOverdue(MSG& message) noexcept {
    const std::int64_t now = PerformanceMicroseconds();
    const auto isOverdue = [now](std::int64_t turn) { return now - turn >= LongestWithoutTurn; };
    if (std::none_of(turns_.begin(), turns_.end(), isOverdue))
        return false;
    const UINT waiting = HIWORD(GetQueueStatus(QS_INPUT | QS_PAINT | QS_TIMER));
    for (std::size_t kind = 0; kind < turns_.size(); ++kind) {
        if (!isOverdue(turns_[kind]))
            continue;
        turns_[kind] = now;
        if ((waiting & LaterKinds[kind].status) != 0 && Take(message, LaterKinds[kind]))
            return true;
    }
    return false;
}

bool EventPumpWin::TakeFirst(MSG& message) noexcept {
    // Looking also runs messages that other threads and programs have sent to our windows.
    const bool found = PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;
    const std::size_t reached = found ? KindsReached(message.message) : turns_.size();
    std::fill_n(turns_.begin(), reached, PerformanceMicroseconds());
    return found;
}

bool EventPumpWin::RunNext() {
    MSG message;
    if (!TakeOverdue(message) && !TakeFirst(message))
        return false;
    if (message.message == WM_QUIT) {
        quit_ = true;
        exitCode_ = static_cast<int>(message.wParam);
        PostQuitMessage(exitCode_);
        return false;
    }
    const bool isAct = IsActOfTheUser(message);
    if (updatePending_ && isAct)
        UpdateWindows();
    updatePending_ = true;
    if (!preTranslate || !preTranslate(message)) {
        const MessageWindow::OwnLoop handingOut(message);
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    // Even if the windows were updated in the middle of the handler, because it continued after that.
    updatePending_ = true;
    if (isAct)
        nextUpdateAt_ = PerformanceMicroseconds(); // its result is shown at once
    return true;
}

} // namespace quarn
