#pragma once

// A millisecond counter that follows a coarse one and fills the steps between its values.
//
// GetTickCount moves by some 16 ms at a time, the performance counter by less than a microsecond, but at a
// rate that drifts away from the first by seconds a day. So the performance counter tells how much time
// passed and the tick count what time it is: the result advances with the former and is kept within Ahead of
// the latter. Kept there it differs from the performance counter by the drift since the previous call alone,
// so that a short difference of two values is true to the millisecond.
//
// The coarse counter is late by up to one step and never early. Starting one Step ahead of it, the result is
// never overtaken by it and needs no correction on that side except for drift.

#include <cstdint>

namespace quarn {

class ContinuousTicks {
  public:
    static constexpr std::int64_t Step = 16000;   // microseconds
    static constexpr std::int64_t Ahead = 250000; // generous: a busy system moves the coarse counter late

    // `coarse` counts milliseconds modulo 2^32, `fine` microseconds from any start. Neither may run
    // backwards.
    ContinuousTicks(std::uint32_t coarse, std::int64_t fine) noexcept
        : coarse_(coarse), coarseTime_(std::int64_t{coarse} * 1000), fine_(fine), time_(coarseTime_ + Step) {}

    // Milliseconds modulo 2^32, never less than the value before.
    std::uint32_t At(std::uint32_t coarse, std::int64_t fine) noexcept;

  private:
    std::uint32_t coarse_;
    std::int64_t coarseTime_; // microseconds, without wrapping
    std::int64_t fine_;
    std::int64_t time_; // the counter itself, in microseconds, without wrapping
};

} // namespace quarn
