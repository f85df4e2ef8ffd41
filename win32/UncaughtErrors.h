#pragma once

// What happens to an error that no trap caught and that reaches a window procedure, where it must stop: an
// exception that crosses the system's frames would end the process. Who runs the program installs a reporter,
// which logs and shows it; without one (in tests) the error ends there.

#include <functional>
#include <string_view>

namespace quarn {

// Called inside the handler of the exception; `where` names the window or service that met it.
using UncaughtErrorReporter = std::function<void(std::string_view where)>;

void SetUncaughtErrorReporter(UncaughtErrorReporter reporter) noexcept;

// To be called from a catch block.
void ReportUncaughtError(std::string_view where) noexcept;

} // namespace quarn
