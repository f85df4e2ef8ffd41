#pragma once

// Makes a timer tick on the fake event queue. As the platform's timers do, it never catches up: a pump that
// was away for several intervals finds one tick.

#include "controls/Timer.h"
#include "tests/fakes/FakeEvents.h"

#include <cstdint>
#include <memory>

namespace quarn {

class FakeTimerDriver {
  public:
    // The timer must outlive the driver.
    FakeTimerDriver(FakeEvents& events, Timer& timer) : events_(events), timer_(timer) {
        timer_.Changed = [this] { Restart(); };
        Restart();
    }
    ~FakeTimerDriver() {
        ++*run_;
        timer_.Changed = nullptr;
    }
    FakeTimerDriver(const FakeTimerDriver&) = delete;
    FakeTimerDriver& operator=(const FakeTimerDriver&) = delete;

    std::int32_t ticks = 0;

  private:
    void Restart() {
        ++*run_;
        if (timer_.Enabled() && timer_.Interval() > 0)
            PostTick();
    }
    void PostTick() {
        events_.PostIn(timer_.Interval(), [this, current = run_, run = *run_] {
            if (*current != run)
                return;
            ++ticks;
            PostTick();
            if (timer_.Tick)
                timer_.Tick();
        });
    }

    FakeEvents& events_;
    Timer& timer_;
    // Tells ticks of an earlier run of the timer; shared, since queued ticks may outlive the driver.
    std::shared_ptr<std::int32_t> run_ = std::make_shared<std::int32_t>(0);
};

} // namespace quarn
