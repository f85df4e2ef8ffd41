#pragma once

#include "base/RunTimeError.h"

#include <cstdint>
#include <ostream>

namespace quarn {

inline constexpr ErrorNumber NoError{0};

// The run-time error that the action ends in; NoError when it ends well.
template<class Action>
ErrorNumber ErrorOf(Action&& action) {
    try {
        action();
        return NoError;
    } catch (const RunTimeError& error) {
        return error.Kind();
    }
}

// How a failing test names an error.
inline void PrintTo(ErrorNumber number, std::ostream* out) {
    *out << static_cast<std::int32_t>(number) << ' ' << DescriptionOf(number);
}

} // namespace quarn
