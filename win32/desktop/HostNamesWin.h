#pragma once

#include "desktop/HostNames.h"

namespace quarn {

// One blocking look-up; starts the sockets library for it and releases it again.
class HostNamesWin final : public HostNames {
  public:
    std::string AddressOf(const std::string& host) override;
};

} // namespace quarn
