#pragma once

#include <exception>

namespace quarn {

// Runs the body and tells whether it came to its end without an exception. For the few failures that are
// expected and need no entry in the log; every other one goes through support/Trap.h.
template<class Body>
bool Succeeds(Body&& body) noexcept {
    try {
        body();
        return true;
    } catch (...) {
        return false;
    }
}

// Runs the body and returns the exception that ended it; null when it came to its end.
template<class Body>
std::exception_ptr FailureOf(Body&& body) noexcept {
    try {
        body();
        return nullptr;
    } catch (...) {
        return std::current_exception();
    }
}

} // namespace quarn
