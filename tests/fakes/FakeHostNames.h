#pragma once

#include "desktop/HostNames.h"

#include <map>
#include <string>
#include <vector>

namespace quarn {

class FakeHostNames : public HostNames {
  public:
    std::map<std::string, std::string> addresses; // dotted address of each name that resolves
    std::vector<std::string> lookUps;

    std::string AddressOf(const std::string& host) override {
        lookUps.push_back(host);
        const auto found = addresses.find(host);
        return found == addresses.end() ? std::string() : found->second;
    }
};

} // namespace quarn
