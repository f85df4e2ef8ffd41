#pragma once

#include "base/RunTimeError.h"
#include "desktop/PeerPrograms.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

class FakePeers : public PeerPrograms {
  public:
    struct Message {
        std::string windowTitle;
        std::uint32_t identifier = 0;
        std::string payload;
    };

    std::set<std::string> openWindows;
    std::vector<std::string> searched; // titles that were looked for
    std::vector<Message> received;     // by the windows that are open

    std::map<std::string, FileVersion> versions; // by path
    std::set<std::string> unversioned;           // paths of files without a version resource

    void SendCopyDataTo(const std::string& windowTitle, std::uint32_t identifier,
                        std::string_view payload) override {
        searched.push_back(windowTitle);
        if (openWindows.contains(windowTitle))
            received.push_back({windowTitle, identifier, std::string(payload)});
    }
    FileVersion VersionOf(const std::string& path) const override {
        if (unversioned.contains(path))
            throw RunTimeError(ErrorNumber::InvalidProcedureCall);
        const auto found = versions.find(path);
        if (found == versions.end())
            throw RunTimeError(ErrorNumber::FileNotFound);
        return found->second;
    }
};

} // namespace quarn
