#pragma once

// A program with one server in its list, on a desktop in memory, as a parser of replies meets it; made anew
// for every input.

#include "core/modDefinitions.h"
#include "tests/fakes/FakeDesktop.h"

#include <cstddef>
#include <cstdint>

namespace quarn::fuzz {

class FuzzedProgram {
  public:
    FuzzedProgram();

    // What holds after one datagram of this size, whatever its bytes were: a handful of log entries, nothing
    // shown, and lists no longer than the bytes account for.
    void RequireBounds(std::size_t datagramSize);

    // A cleared name is no longer than the text, holds no quote, and clearing it was not logged.
    void RequireCleanName(std::string_view text);

    FakeDesktop fake;
    ProgramState program;
};

} // namespace quarn::fuzz
