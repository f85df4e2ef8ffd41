#pragma once

#include "desktop/ProfileFiles.h"

namespace quarn {

// The private-profile calls. They search for a bare file name in the Windows folder; here a relative path
// means the current folder. Stateless.
class ProfileFilesWin final : public ProfileFiles {
  public:
    std::int32_t ReadInteger(const std::string& path, const std::string& section, const std::string& key,
                             std::int32_t missing) const override;
    std::string ReadText(const std::string& path, const std::string& section, const std::string& key,
                         std::size_t bufferSize) const override;
    bool WriteText(const std::string& path, const std::string& section, const std::string& key,
                   const std::string& value) override;
    bool RemoveKey(const std::string& path, const std::string& section, const std::string& key) override;
    void Forget(const std::string& path) override;
};

} // namespace quarn
