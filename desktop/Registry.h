#pragma once

// The system's registry. The result of a call says whether the system refused it (no such key, no
// permission).

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

// The predefined root keys, with the platform's numbers.
enum class RegistryRoot : std::uint32_t {
    ClassesRoot = 0x80000000,
    CurrentUser = 0x80000001,
    LocalMachine = 0x80000002,
    Users = 0x80000003,
};

class Registry {
  public:
    virtual ~Registry() = default;

    virtual bool CreateKey(RegistryRoot root, const std::string& key) = 0;
    virtual bool DeleteKey(RegistryRoot root, const std::string& key) = 0;
    virtual bool KeyExists(RegistryRoot root, const std::string& key) const = 0;

    // Names of the keys directly below; none if the key does not exist.
    virtual std::optional<std::vector<std::string>> SubKeys(RegistryRoot root,
                                                            const std::string& key) const = 0;

    // The stored bytes of a value, including a text's NUL, whatever its type; nothing if key or value do not
    // exist or the buffer is too small.
    virtual std::optional<std::string> ReadValue(RegistryRoot root, const std::string& key,
                                                 const std::string& value, std::size_t bufferSize) const = 0;

    // The text with each %NAME% of an environment variable replaced by its value, as for values of the type
    // "expandable".
    virtual std::string Expanded(const std::string& text) const = 0;

    // The key must exist.
    virtual bool WriteValue(RegistryRoot root, const std::string& key, const std::string& value,
                            std::uint32_t type, std::string_view bytes) = 0;
    virtual bool DeleteValue(RegistryRoot root, const std::string& key, const std::string& value) = 0;
};

} // namespace quarn
