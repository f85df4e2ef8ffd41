#pragma once

// The one error trap. Every routine that can fail runs its body through Trapped, which catches whatever the
// body throws, logs it under the routine's name and returns; an error never reaches a caller. A routine with
// a result keeps it in a variable outside the body and returns what that holds at the moment of the error.

#include "base/RunTimeError.h"
#include "support/clsAppLog.h"

#include <cstdint>
#include <string_view>

namespace quarn {

// Whether the user sees the error in a message box. What the network or a file drives is only logged: a
// scan never stops for a box.
enum class OnError { Log, LogAndShow };

// Number and text of the exception being handled.
struct CaughtError {
    std::int32_t number;
    const char* description;
};
CaughtError CurrentError() noexcept;

// True when the body ran to its end.
template<class Body>
bool Trapped(clsAppLog& log, std::string_view module, std::string_view routine, OnError onError,
             Body&& body) noexcept {
    try {
        body();
        return true;
    } catch (...) {
        const CaughtError error = CurrentError();
        log.Log(module, routine, error.number, error.description, onError == OnError::LogAndShow);
        return false;
    }
}

} // namespace quarn
