#pragma once

// Handles an error that no trap caught and that reaches a window procedure, where it must stop: an exception
// that crosses the system's frames would end the process. The program installs a reporter, which logs and
// shows it; without one (in tests) the error is dropped.

#include <functional>
#include <string_view>

namespace quarn {

// Called inside the handler of the exception, with the names of the form or service that met it and of its
// event handler.
using UncaughtErrorReporter = std::function<void(std::string_view module, std::string_view handler)>;

void SetUncaughtErrorReporter(UncaughtErrorReporter reporter) noexcept;

// To be called from a catch block.
void ReportUncaughtError(std::string_view module, std::string_view handler) noexcept;

// Runs an event handler; stops and reports every error that escapes it.
template<class Body>
void Contain(std::string_view module, std::string_view handler, Body&& body) noexcept {
    try {
        body();
    } catch (...) {
        ReportUncaughtError(module, handler);
    }
}

} // namespace quarn
