#pragma once

#include "tests/win32/harness/ReplacedImport.h"

#include <functional>
#include <utility>

namespace quarn {

// The sleeps of this program, which take no time as long as this lives. One at a time.
class FakeSleep {
  public:
    FakeSleep() {
        milliseconds_ = 0;
        whileAsleep_ = nullptr;
    }

    DWORD Milliseconds() const noexcept { return milliseconds_; }

    // Calls `action` once, in the sleep that ends this many milliseconds after now.
    void After(DWORD milliseconds, std::function<void()> action) {
        whileAsleep_ = [due = milliseconds_ + milliseconds, action = std::move(action)] {
            if (milliseconds_ < due)
                return;
            whileAsleep_ = nullptr;
            action();
        };
    }

  private:
    static void WINAPI Asleep(DWORD milliseconds) {
        milliseconds_ += milliseconds;
        if (const auto action = whileAsleep_)
            action();
    }

    static inline DWORD milliseconds_ = 0;
    static inline std::function<void()> whileAsleep_;

    ReplacedImport import_{&Sleep, &Asleep};
};

} // namespace quarn
