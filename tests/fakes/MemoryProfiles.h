#pragma once

// INI files among the files in memory, so that a test can feed them, damaged too, byte for byte. As the
// system's calls do it, writing to a full disk cuts the file and returns success, and until Forget is called
// or the file changes, reading returns what should have been written.

#include "desktop/ProfileFiles.h"
#include "tests/fakes/MemoryFiles.h"

#include <functional>
#include <map>
#include <optional>
#include <string>

namespace quarn {

class MemoryProfiles : public ProfileFiles {
  public:
    explicit MemoryProfiles(MemoryFiles& files) : files_(files) {}

    std::function<void()> beforeWrite; // runs at each change, if there is one

    std::int32_t ReadInteger(const std::string& path, const std::string& section, const std::string& key,
                             std::int32_t missing) const override;
    std::string ReadText(const std::string& path, const std::string& section, const std::string& key,
                         std::size_t bufferSize) const override;
    bool WriteText(const std::string& path, const std::string& section, const std::string& key,
                   const std::string& value) override;
    bool RemoveKey(const std::string& path, const std::string& section, const std::string& key) override;
    void Forget(const std::string& path) override { remembered_.erase(path); }

  private:
    struct Remembered {
        std::string onDisk;
        std::string intended;
    };

    bool Change(const std::string& path, const std::function<std::string(const std::string&)>& changed);
    std::optional<std::string> TextOf(const std::string& path) const;
    std::optional<std::string> ValueIn(const std::string& path, const std::string& section,
                                       const std::string& key) const;

    std::map<std::string, Remembered> remembered_;
    MemoryFiles& files_;
};

} // namespace quarn
