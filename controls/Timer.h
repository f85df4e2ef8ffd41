#pragma once

// A repeating timer. Its event occurs every Interval milliseconds while it is enabled; an interval of 0 or
// less never ticks. Setting Enabled or Interval to its current value changes nothing, so a running timer
// keeps its phase.

#include <cstdint>
#include <functional>

namespace quarn {

class Timer {
  public:
    bool Enabled() const noexcept { return enabled_; }
    void SetEnabled(bool enabled) { Update(enabled, interval_); }

    std::int32_t Interval() const noexcept { return interval_; }
    void SetInterval(std::int32_t milliseconds) { Update(enabled_, milliseconds); }

    std::function<void()> Tick;

    // Called whenever the timer must be started, stopped or restarted; set by the code that makes it tick.
    std::function<void()> Changed;

  private:
    void Update(bool enabled, std::int32_t interval) {
        if (enabled == enabled_ && interval == interval_)
            return;
        enabled_ = enabled;
        interval_ = interval;
        if (Changed)
            Changed();
    }

    bool enabled_ = false;
    std::int32_t interval_ = 0;
};

} // namespace quarn
