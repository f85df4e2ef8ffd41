#pragma once

#include "fuzz/ByteScript.h"
#include "tests/fakes/UserActions.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace quarn::fuzz {

// The arguments of an action in the script, by the action's signature.
inline ActionArguments ReadArguments(std::string_view signature, ByteScript& script) {
    ActionArguments arguments;
    std::int32_t* number = &arguments.number;
    std::string* text = &arguments.text;
    for (const char kind : signature) {
        if (kind == 'n')
            *std::exchange(number, &arguments.last) = script.Number();
        else
            *std::exchange(text, &arguments.secondText) = script.Text();
    }
    return arguments;
}

} // namespace quarn::fuzz
