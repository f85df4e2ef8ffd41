#include "win32/TimerWin.h"

#include "win32/SystemError.h"

namespace quarn {

TimerWin::TimerWin(Timer& timer) : timer_(timer) {
    timer_.Changed = [this] { Restart(); };
    Restart();
}

TimerWin::~TimerWin() {
    timer_.Changed = nullptr;
    Stop();
}

void TimerWin::Restart() {
    Stop();
    if (!timer_.Enabled() || timer_.Interval() <= 0)
        return;
    ++identifier_;
    if (SetTimer(Window(), identifier_, static_cast<UINT>(timer_.Interval()), nullptr) == 0)
        ThrowLastError();
    running_ = true;
}

HWND TimerWin::Window() {
    if (!window_)
        window_.emplace([this](UINT message, WPARAM identifier, LPARAM) {
            if (message == WM_TIMER && running_ && identifier == identifier_ && timer_.Tick)
                timer_.Tick();
        });
    return window_->Handle();
}

void TimerWin::Stop() noexcept {
    if (running_)
        KillTimer(window_->Handle(), identifier_);
    running_ = false;
}

} // namespace quarn
