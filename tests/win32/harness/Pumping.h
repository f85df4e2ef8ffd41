#pragma once

#include "win32/WindowsHeaders.h"

namespace quarn {

// Nothing on this machine takes longer; a condition that does not hold by then never will.
inline constexpr DWORD PatienceMilliseconds = 10000;

// Runs this thread's messages until the condition holds; false when it does not come to hold.
template<class Condition>
bool PumpUntil(Condition&& condition) {
    const ULONGLONG start = GetTickCount64();
    while (!condition()) {
        const ULONGLONG passed = GetTickCount64() - start;
        if (passed >= PatienceMilliseconds)
            return false;
        MSG message;
        if (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageA(&message);
        else
            MsgWaitForMultipleObjectsEx(0, nullptr, 10, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
    return true;
}

// Waits until the queue holds one of the program's own messages and leaves it there.
inline bool WaitForPostedMessage() {
    const ULONGLONG start = GetTickCount64();
    MSG message;
    while (!PeekMessageA(&message, nullptr, WM_APP, 0xBFFF, PM_NOREMOVE)) {
        if (GetTickCount64() - start >= PatienceMilliseconds)
            return false;
        MsgWaitForMultipleObjectsEx(0, nullptr, 10, QS_ALLINPUT, 0);
    }
    return true;
}

} // namespace quarn
