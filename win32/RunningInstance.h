#pragma once

// How a second start finds the first one's window, and the message that it posts to it.

#include "win32/WindowsHeaders.h"

namespace quarn {

inline constexpr char MainWindowClass[] = "QuarnMainWindow";

// The same number in every program of the session that asks for it.
inline UINT StartedAgainMessage() noexcept {
    static const UINT number = RegisterWindowMessageA("QuarnStartedAgain");
    return number;
}

} // namespace quarn
