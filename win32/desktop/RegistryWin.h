#pragma once

#include "desktop/Registry.h"

namespace quarn {

class RegistryWin final : public Registry {
  public:
    bool CreateKey(RegistryRoot root, const std::string& key) override;
    bool DeleteKey(RegistryRoot root, const std::string& key) override;
    bool KeyExists(RegistryRoot root, const std::string& key) const override;
    std::optional<std::vector<std::string>> SubKeys(RegistryRoot root, const std::string& key) const override;
    std::optional<std::string> ReadValue(RegistryRoot root, const std::string& key, const std::string& value,
                                         std::size_t bufferSize) const override;
    std::string Expanded(const std::string& text) const override;
    bool WriteValue(RegistryRoot root, const std::string& key, const std::string& value, std::uint32_t type,
                    std::string_view bytes) override;
    bool DeleteValue(RegistryRoot root, const std::string& key, const std::string& value) override;
};

} // namespace quarn
