#pragma once

// Waits for files that another program holds.
//
// Virus scanners, indexers and cloud folders open a file right after it was written, mostly for 10 to 200 ms.
// Calls on it then fail with a sharing or lock violation, or with "access denied" while a file is being
// deleted. An operation on files therefore retries for about half a second. It sleeps in between and runs no
// events, so that callers need not expect any; the window does not react meanwhile.

#include "win32/WindowsHeaders.h"

#include <string>

namespace quarn {

// The rest of the half second, for one operation of one or several calls.
class Patience {
  public:
    Patience() = default;
    static Patience None() noexcept { return Patience(0); }

    // For a call on the file that has just failed: true, after a short sleep, if it may succeed when retried.
    // Otherwise, or if no time is left, false; GetLastError is then still the call's.
    bool TryAgain(const std::string& path) noexcept;

  private:
    explicit Patience(int polls) : polls_(polls) {}

    static constexpr int Polls = 25;

    int polls_ = Polls;
};

} // namespace quarn
