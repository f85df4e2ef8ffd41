#pragma once

#include <string>

namespace quarn {

class HostNames {
  public:
    virtual ~HostNames() = default;

    // Dotted form of the host's first address; empty when the name does not resolve. Waits for the answer.
    virtual std::string AddressOf(const std::string& host) = 0;
};

} // namespace quarn
