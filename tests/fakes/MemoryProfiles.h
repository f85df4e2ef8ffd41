#pragma once

// INI files among the files in memory, so that a test can feed them, damaged too, byte for byte.

#include "desktop/ProfileFiles.h"
#include "tests/fakes/MemoryFiles.h"

namespace quarn {

class MemoryProfiles : public ProfileFiles {
  public:
    explicit MemoryProfiles(MemoryFiles& files) : files_(files) {}

    std::int32_t ReadInteger(const std::string& path, const std::string& section, const std::string& key,
                             std::int32_t missing) const override;
    std::string ReadText(const std::string& path, const std::string& section, const std::string& key,
                         std::size_t bufferSize) const override;
    bool WriteText(const std::string& path, const std::string& section, const std::string& key,
                   const std::string& value) override;

  private:
    MemoryFiles& files_;
};

} // namespace quarn
