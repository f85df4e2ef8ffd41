#include "win32/UncaughtErrors.h"

#include <utility>

namespace quarn {

namespace {

UncaughtErrorReporter& Reporter() noexcept {
    static UncaughtErrorReporter reporter;
    return reporter;
}

} // namespace

void SetUncaughtErrorReporter(UncaughtErrorReporter reporter) noexcept {
    Reporter() = std::move(reporter);
}

void ReportUncaughtError(std::string_view module, std::string_view handler) noexcept {
    try {
        if (Reporter())
            Reporter()(module, handler);
    } catch (...) {
        // The reporter itself failed: there is nowhere left to report it.
        return;
    }
}

} // namespace quarn
