#include "win32/desktop/RegistryWin.h"

#include "win32/Handles.h"

namespace quarn {

namespace {

constexpr DWORD LongestKeyName = 255;

// The predefined keys are numbers that the system sign-extends if handles are wider.
HKEY RootKey(RegistryRoot root) noexcept {
    return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(root)));
}

// Empty if the key cannot be opened.
RegistryKey Open(RegistryRoot root, const std::string& key, REGSAM access) noexcept {
    RegistryKey opened;
    RegOpenKeyExA(RootKey(root), key.c_str(), 0, access, opened.Receive());
    return opened;
}

} // namespace

bool RegistryWin::CreateKey(RegistryRoot root, const std::string& key) {
    RegistryKey created;
    return RegCreateKeyExA(RootKey(root), key.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_QUERY_VALUE,
                           nullptr, created.Receive(), nullptr) == ERROR_SUCCESS;
}

bool RegistryWin::DeleteKey(RegistryRoot root, const std::string& key) {
    return RegDeleteKeyA(RootKey(root), key.c_str()) == ERROR_SUCCESS;
}

bool RegistryWin::KeyExists(RegistryRoot root, const std::string& key) const {
    return static_cast<bool>(Open(root, key, KEY_QUERY_VALUE));
}

std::optional<std::vector<std::string>> RegistryWin::SubKeys(RegistryRoot root,
                                                             const std::string& key) const {
    const RegistryKey opened = Open(root, key, KEY_ENUMERATE_SUB_KEYS);
    if (!opened)
        return std::nullopt;
    std::vector<std::string> names;
    char name[LongestKeyName + 1];
    for (DWORD index = 0; RegEnumKeyA(opened.Get(), index, name, sizeof name) == ERROR_SUCCESS; ++index)
        names.emplace_back(name);
    return names;
}

std::optional<std::string> RegistryWin::ReadValue(RegistryRoot root, const std::string& key,
                                                  const std::string& value, std::size_t bufferSize) const {
    const RegistryKey opened = Open(root, key, KEY_QUERY_VALUE);
    if (!opened)
        return std::nullopt;
    std::string bytes(bufferSize, '\0');
    auto length = static_cast<DWORD>(bufferSize);
    if (RegQueryValueExA(opened.Get(), value.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(bytes.data()),
                         &length) != ERROR_SUCCESS)
        return std::nullopt;
    bytes.resize(length);
    return bytes;
}

std::string RegistryWin::Expanded(const std::string& text) const {
    constexpr std::size_t SystemLimit = 32'767; // characters that the call accepts
    if (text.size() >= SystemLimit)
        return text;
    std::string expanded(ExpandEnvironmentStringsA(text.c_str(), nullptr, 0), '\0');
    const DWORD size =
        ExpandEnvironmentStringsA(text.c_str(), expanded.data(), static_cast<DWORD>(expanded.size()));
    if (size == 0 || size > expanded.size())
        return text;
    expanded.resize(size - 1); // without its NUL
    return expanded;
}

bool RegistryWin::WriteValue(RegistryRoot root, const std::string& key, const std::string& value,
                             std::uint32_t type, std::string_view bytes) {
    const RegistryKey opened = Open(root, key, KEY_SET_VALUE);
    return opened &&
           RegSetValueExA(opened.Get(), value.c_str(), 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                          static_cast<DWORD>(bytes.size())) == ERROR_SUCCESS;
}

bool RegistryWin::DeleteValue(RegistryRoot root, const std::string& key, const std::string& value) {
    const RegistryKey opened = Open(root, key, KEY_SET_VALUE);
    return opened && RegDeleteValueA(opened.Get(), value.c_str()) == ERROR_SUCCESS;
}

} // namespace quarn
