#include "support/clsRegAccess.h"

#include "core/modStringHelper.h"
#include "support/Trap.h"

#include <optional>
#include <utility>

namespace quarn {

namespace {

constexpr const char* ClassName = "clsRegAccess";
constexpr std::size_t BufferSize = 255;

// As the platform stores it: low byte first.
std::string FourBytes(std::int32_t number) {
    const auto bits = static_cast<std::uint32_t>(number);
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(static_cast<unsigned char>(bits >> shift & 0xFF));
    return bytes;
}

} // namespace

bool clsRegAccess::DeleteKey(RegistryRoot lngKey, const std::string& sKeyName) {
    bool done = false;
    Trapped(log_, ClassName, "DeleteKey", OnError::Log,
            [&] { done = registry_.DeleteKey(lngKey, sKeyName); });
    return done;
}

bool clsRegAccess::DeleteValue(RegistryRoot lngKey, const std::string& sKeyName,
                               const std::string& sValueName) {
    bool done = false;
    Trapped(log_, ClassName, "DeleteValue", OnError::Log,
            [&] { done = registry_.DeleteValue(lngKey, sKeyName, sValueName); });
    return done;
}

std::vector<std::string> clsRegAccess::EnumKeys(RegistryRoot lngKey, const std::string& sKeyName) {
    std::vector<std::string> names;
    Trapped(log_, ClassName, "EnumKeys", OnError::Log,
            [&] { names = registry_.SubKeys(lngKey, sKeyName).value_or(std::vector<std::string>()); });
    return names;
}

bool clsRegAccess::QueryKey(RegistryRoot lngKey, const std::string& sKeyName) {
    bool exists = false;
    Trapped(log_, ClassName, "QueryKey", OnError::Log,
            [&] { exists = registry_.KeyExists(lngKey, sKeyName); });
    return exists;
}

clsRegAccess::Variant clsRegAccess::QueryValue(RegistryRoot lngKey, const std::string& sKeyName,
                                               const std::string& sValueName, const std::string& sDefault,
                                               std::int32_t ResultType) {
    Variant result = sDefault;
    Trapped(log_, ClassName, "QueryValue", OnError::Log,
            [&] { result = Shaped(ReadText(lngKey, sKeyName, sValueName, sDefault), ResultType); });
    return result;
}

// A text is stored with its NUL, which is not part of it; the last byte of other types is removed in the same
// way.
std::string clsRegAccess::ReadText(RegistryRoot root, const std::string& key, const std::string& value,
                                   const std::string& missing) const {
    std::optional<std::string> bytes = registry_.ReadValue(root, key, value, BufferSize);
    if (!bytes)
        return missing;
    if (!bytes->empty())
        bytes->pop_back();
    return std::move(*bytes);
}

clsRegAccess::Variant clsRegAccess::Shaped(std::string text, std::int32_t resultType) const {
    if (resultType == BooleanResult && LowerCase(text) != "true")
        return "FALSE";
    if (resultType == NumberResult && !locale_.IsNumeric(text))
        return 0;
    return text;
}

bool clsRegAccess::SetKey(RegistryRoot lngKey, const std::string& sNewKeyName) {
    bool done = false;
    Trapped(log_, ClassName, "SetKey", OnError::Log,
            [&] { done = registry_.CreateKey(lngKey, sNewKeyName); });
    return done;
}

bool clsRegAccess::SetValue(RegistryRoot lngKey, const std::string& sKeyName, const std::string& sValueName,
                            const Variant& vValueSetting, std::uint32_t lValueType) {
    bool done = false;
    Trapped(log_, ClassName, "SetValue", OnError::Log, [&] {
        const std::string bytes = BytesOf(vValueSetting, lValueType);
        done = registry_.WriteValue(lngKey, sKeyName, sValueName, lValueType, bytes);
    });
    return done;
}

std::string clsRegAccess::BytesOf(const Variant& setting, std::uint32_t type) const {
    const std::int32_t* number = std::get_if<std::int32_t>(&setting);
    const std::string text = number ? std::to_string(*number) : std::get<std::string>(setting);
    if (type == NumberType)
        return FourBytes(number ? *number : locale_.ToLong(text));
    const bool isText = type == TextType || type == ExpandedTextType;
    return isText ? text + '\0' : text;
}

} // namespace quarn
