#pragma once

// A program with one server in its list, on a desktop in memory; made again for every input.

#include "tests/fakes/HeadlessProgram.h"

#include <cstddef>
#include <string_view>

namespace quarn::fuzz {

class FuzzedProgram : public OneServerProgram {
  public:
    // What holds after one datagram of this size, whatever its bytes were.
    void RequireBounds(std::size_t datagramSize);

    // A cleared name is no longer than the text, contains no quote, and clearing it was not logged.
    void RequireCleanName(std::string_view text);
};

} // namespace quarn::fuzz
