#pragma once

#include <functional>
#include <string>

namespace quarn {

class HostNames {
  public:
    virtual ~HostNames() = default;

    // Receives the dotted form of the host's first address; empty if the name does not resolve.
    using Answer = std::function<void(const std::string& address)>;

    // Looks up a name while events run. The answer arrives as an event, or before this returns. Only one
    // look-up runs at a time: a new one cancels the previous one.
    virtual void LookUp(const std::string& host, Answer answer) = 0;

    // Cancels the running look-up; its answer will not arrive.
    virtual void Cancel() = 0;
};

} // namespace quarn
