#pragma once

// The addresses of a server list, to find out quickly whether one is new.

#include "core/modDefinitions.h"

#include <cstdint>
#include <string>
#include <unordered_set>

namespace quarn {

class ListedAddresses {
  public:
    // Removes the records after `before` that have no address or the address of an earlier record.
    void RemoveKnown(ProgramState& program, std::int32_t before);

  private:
    std::unordered_set<std::string> addresses_; // of the records up to counted_
    std::int32_t counted_ = 0;
    std::uint32_t lastIdentity_ = 0; // of the last of them
};

} // namespace quarn
