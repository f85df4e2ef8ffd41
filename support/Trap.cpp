#include "support/Trap.h"

#include <new>

namespace quarn {

namespace {

CaughtError Described(ErrorNumber number) noexcept {
    return {static_cast<std::int32_t>(number), DescriptionOf(number)};
}

} // namespace

CaughtError CurrentError() noexcept {
    try {
        throw;
    } catch (const RunTimeError& error) {
        return Described(error.Kind());
    } catch (const std::bad_alloc&) {
        return Described(ErrorNumber::OutOfMemory);
    } catch (...) {
        return Described(ErrorNumber::InternalError);
    }
}

} // namespace quarn
