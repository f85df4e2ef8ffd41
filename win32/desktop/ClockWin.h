#pragma once

#include "desktop/Clock.h"
#include "win32/desktop/ContinuousTicks.h"

namespace quarn {

class ClockWin final : public Clock {
  public:
    ClockWin() noexcept;

    // GetTickCount, continued between its steps.
    std::int32_t TickCount() const override;

    LocalTime Now() const override;

  private:
    mutable ContinuousTicks ticks_; // reading the clock changes only this
};

} // namespace quarn
