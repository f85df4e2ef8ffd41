#pragma once

#include "controls/Timer.h"
#include "win32/MessageWindow.h"

#include <optional>

namespace quarn {

// Makes a Timer tick by the system's window timers. Ticks are messages of the lowest priority, on the thread
// that created the object. The timer must outlive this object. The window that receives the ticks is created
// when the timer first runs, because creating windows takes a good part of the program's start.
class TimerWin {
  public:
    explicit TimerWin(Timer& timer);
    TimerWin(const TimerWin&) = delete;
    TimerWin& operator=(const TimerWin&) = delete;
    ~TimerWin();

  private:
    void Restart();
    void Stop() noexcept;
    HWND Window(); // throws the system's error

    Timer& timer_;

    // Each start has an identifier of its own, so that a tick of an earlier one that is already posted is
    // recognised.
    UINT_PTR identifier_ = 0;
    bool running_ = false;
    std::optional<MessageWindow> window_;
};

} // namespace quarn
