#pragma once

// A clock that stands still until a test moves it.

#include "desktop/Clock.h"

#include <cstdint>

namespace quarn {

class FakeClock : public Clock {
  public:
    std::int32_t TickCount() const override {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(ticksAtStart_ + elapsed_));
    }
    LocalTime Now() const override {
        const std::int64_t milliseconds = millisecondsAtStart_ + elapsed_;
        return {{timeAtStart_.seconds + milliseconds / 1000}, static_cast<int>(milliseconds % 1000)};
    }

    // Moves ticks and local time alike.
    void Advance(std::int32_t milliseconds) { elapsed_ += milliseconds; }

    // What TickCount returns now; it goes on, and wraps around, from there.
    void SetTickCount(std::int32_t ticks) { ticksAtStart_ = ticks - elapsed_; }

    void SetNow(const CalendarTime& calendar, int milliseconds = 0) {
        timeAtStart_ = DateTime::From(calendar);
        timeAtStart_.seconds -= elapsed_ / 1000;
        millisecondsAtStart_ = milliseconds - elapsed_ % 1000;
        if (millisecondsAtStart_ < 0) {
            millisecondsAtStart_ += 1000;
            --timeAtStart_.seconds;
        }
    }

    // Milliseconds since this clock was made; never wraps, so that it orders events.
    std::int64_t Elapsed() const noexcept { return elapsed_; }

    // The moment on the scale of Elapsed at which TickCount reads this.
    std::int64_t ElapsedAt(std::int32_t tick) const {
        const auto distance = static_cast<std::uint32_t>(tick) - static_cast<std::uint32_t>(TickCount());
        return elapsed_ + static_cast<std::int32_t>(distance);
    }

  private:
    std::int64_t elapsed_ = 0;
    std::int64_t ticksAtStart_ = 1000;
    DateTime timeAtStart_ = DateTime::From({2026, 11, 21, 8, 5, 0});
    std::int64_t millisecondsAtStart_ = 0;
};

} // namespace quarn
