#pragma once

#include "controls/Timer.h"
#include "win32/MessageWindow.h"

namespace quarn {

// Makes a Timer tick by the system's window timers. Ticks come as messages of the lowest priority, on the
// thread that made the object. The timer must live as long as this does.
class TimerWin {
  public:
    explicit TimerWin(Timer& timer);
    TimerWin(const TimerWin&) = delete;
    TimerWin& operator=(const TimerWin&) = delete;
    ~TimerWin();

  private:
    void Restart();
    void Stop() noexcept;

    Timer& timer_;

    // Each start has an identifier of its own, so that a tick already posted by an earlier one is known.
    UINT_PTR identifier_ = 0;
    bool running_ = false;
    MessageWindow window_;
};

} // namespace quarn
