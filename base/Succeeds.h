#pragma once

#include <exception>

namespace quarn {

// Runs the body and returns whether it ended without an exception. For the few failures that are expected and
// need no log entry; all others are handled by support/Trap.h.
template<class Body>
bool Succeeds(Body&& body) noexcept {
    try {
        body();
        return true;
    } catch (...) {
        return false;
    }
}

// Runs the body and returns the exception that ended it, or null.
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
