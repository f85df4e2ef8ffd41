#pragma once

// The one error trap. Every routine that can fail runs its body in Trapped, which catches what the body
// throws, logs it under the routine's name and returns; an error never reaches a caller. A routine with a
// result keeps it in a variable outside the body and returns that variable's value at the moment of the
// error.

#include "base/RunTimeError.h"
#include "support/clsAppLog.h"

#include <cstdint>
#include <string_view>

namespace quarn {

// What happens to an error besides its log entry. Errors caused by network data or files are only logged, so
// that a message box never interrupts a scan; those caused by datagrams are not counted either, so that an
// ordinary session does not end with the question about an error report.
enum class OnError { Log, LogAndShow, LogUncounted };

// Number and text of the exception being handled.
struct CaughtError {
    std::int32_t number;
    const char* description;
};
CaughtError CurrentError() noexcept;

// True if the body ran to its end.
template<class Body>
bool Trapped(clsAppLog& log, std::string_view module, std::string_view routine, OnError onError,
             Body&& body) noexcept {
    try {
        body();
        return true;
    } catch (...) {
        const CaughtError error = CurrentError();
        if (onError == OnError::LogUncounted)
            log.LogUncounted(module, routine, error.number, error.description);
        else
            log.Log(module, routine, error.number, error.description, onError == OnError::LogAndShow);
        return false;
    }
}

} // namespace quarn
