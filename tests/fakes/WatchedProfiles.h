#pragma once

// A desktop's INI files that record which keys are read, as "section/key" in the order of reading, and that
// can fail.

#include "desktop/Desktop.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quarn {

class WatchedProfiles : public ProfileFiles {
  public:
    explicit WatchedProfiles(const Desktop& real)
        : profiles_(real.profiles), desktop{real.clock, real.events,  real.files,         real.help,
                                            real.hosts, real.locale,  real.notifications, real.peers,
                                            *this,      real.prompts, real.registry,      real.shell,
                                            real.system} {}

    mutable std::vector<std::string> keysRead;
    std::string failingKey; // cannot be written or removed

    std::int32_t ReadInteger(const std::string& path, const std::string& section, const std::string& key,
                             std::int32_t missing) const override {
        keysRead.push_back(section + "/" + key);
        return profiles_.ReadInteger(path, section, key, missing);
    }
    std::string ReadText(const std::string& path, const std::string& section, const std::string& key,
                         std::size_t bufferSize) const override {
        keysRead.push_back(section + "/" + key);
        return profiles_.ReadText(path, section, key, bufferSize);
    }
    bool WriteText(const std::string& path, const std::string& section, const std::string& key,
                   const std::string& value) override {
        return key != failingKey && profiles_.WriteText(path, section, key, value);
    }
    bool RemoveKey(const std::string& path, const std::string& section, const std::string& key) override {
        return key != failingKey && profiles_.RemoveKey(path, section, key);
    }
    void Forget(const std::string& path) override { profiles_.Forget(path); }

  private:
    ProfileFiles& profiles_;

  public:
    // The desktop with these files in place of its own.
    Desktop desktop;
};

} // namespace quarn
