#pragma once

// A registry in memory. Names compare without case, a key can be deleted if it has no subkeys, and a value is
// read back as the bytes that were written.

#include "base/RunTimeError.h"
#include "core/modStringHelper.h"
#include "desktop/Registry.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quarn {

class MemoryRegistry : public Registry {
  public:
    struct Value {
        std::uint32_t type = 0;
        std::string bytes;
    };

    std::optional<ErrorNumber> fault; // thrown by every call

    // The test's own access: a text value, with its NUL, in a key that is created if needed.
    void Put(RegistryRoot root, const std::string& key, const std::string& value, const std::string& text) {
        CreateKey(root, key);
        keys_[Id(root, key)].values[LowerCase(value)] = {1, text + '\0'};
    }
    const Value* Find(RegistryRoot root, const std::string& key, const std::string& value) const {
        const auto found = keys_.find(Id(root, key));
        if (found == keys_.end())
            return nullptr;
        const auto held = found->second.values.find(LowerCase(value));
        return held == found->second.values.end() ? nullptr : &held->second;
    }

    bool CreateKey(RegistryRoot root, const std::string& key) override {
        ThrowFault();
        for (std::size_t end = 0; end != std::string::npos;) {
            end = key.find('\\', end + 1);
            keys_.try_emplace(Id(root, key.substr(0, end)), Key{key.substr(0, end), {}});
        }
        return true;
    }
    bool DeleteKey(RegistryRoot root, const std::string& key) override {
        const std::optional<std::vector<std::string>> below = SubKeys(root, key);
        return below && below->empty() && keys_.erase(Id(root, key)) != 0;
    }
    bool KeyExists(RegistryRoot root, const std::string& key) const override {
        ThrowFault();
        return keys_.contains(Id(root, key));
    }
    std::optional<std::vector<std::string>> SubKeys(RegistryRoot root,
                                                    const std::string& key) const override {
        if (!KeyExists(root, key))
            return std::nullopt;
        std::vector<std::string> names;
        const std::string prefix = LowerCase(key) + "\\";
        for (const auto& [id, held] : keys_) {
            if (id.first != root || id.second.compare(0, prefix.size(), prefix) != 0)
                continue;
            if (id.second.find('\\', prefix.size()) == std::string::npos)
                names.push_back(held.path.substr(prefix.size()));
        }
        return names;
    }
    std::optional<std::string> ReadValue(RegistryRoot root, const std::string& key, const std::string& value,
                                         std::size_t bufferSize) const override {
        ThrowFault();
        const Value* held = Find(root, key, value);
        if (held == nullptr || held->bytes.size() > bufferSize)
            return std::nullopt;
        return held->bytes;
    }
    // Knows one variable, %Tools%.
    std::string Expanded(const std::string& text) const override {
        std::string expanded = text;
        ReplaceAll(expanded, "%Tools%", "C:\\Tools");
        return expanded;
    }
    bool WriteValue(RegistryRoot root, const std::string& key, const std::string& value, std::uint32_t type,
                    std::string_view bytes) override {
        if (!KeyExists(root, key))
            return false;
        keys_[Id(root, key)].values[LowerCase(value)] = {type, std::string(bytes)};
        return true;
    }
    bool DeleteValue(RegistryRoot root, const std::string& key, const std::string& value) override {
        return KeyExists(root, key) && keys_[Id(root, key)].values.erase(LowerCase(value)) != 0;
    }

  private:
    struct Key {
        std::string path;
        std::map<std::string, Value> values; // by the name in lower case
    };
    using KeyId = std::pair<RegistryRoot, std::string>;

    static KeyId Id(RegistryRoot root, const std::string& key) { return {root, LowerCase(key)}; }
    void ThrowFault() const {
        if (fault)
            throw RunTimeError(*fault);
    }

    std::map<KeyId, Key> keys_;
};

} // namespace quarn
