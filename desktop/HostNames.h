#pragma once

#include <functional>
#include <string>

namespace quarn {

class HostNames {
  public:
    virtual ~HostNames() = default;

    // Gets the dotted form of the host's first address; empty when the name does not resolve.
    using Answer = std::function<void(const std::string& address)>;

    // Looks a name up while events run; the answer comes as an event, or before this returns. One look-up at
    // a time: a new one replaces the one under way, whose answer does not come then.
    virtual void LookUp(const std::string& host, Answer answer) = 0;

    // The answer of the look-up under way does not come any more.
    virtual void Cancel() = 0;
};

} // namespace quarn
