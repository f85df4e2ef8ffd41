#pragma once

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

} // namespace quarn
