#pragma once

// Reads and changes registry keys and values. Each member traps its own errors and logs them without a
// message; the result says whether the system refused the call.

#include "desktop/LocaleText.h"
#include "desktop/Registry.h"
#include "support/clsAppLog.h"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace quarn {

class clsRegAccess {
  public:
    clsRegAccess(clsAppLog& log, Registry& registry, const LocaleText& locale)
        : log_(log), registry_(registry), locale_(locale) {}

    using Variant = std::variant<std::string, std::int32_t>;

    // Types of values, with the platform's numbers.
    static constexpr std::uint32_t TextType = 1;
    static constexpr std::uint32_t ExpandedTextType = 2;
    static constexpr std::uint32_t NumberType = 4;

    // How QueryValue shapes its result; any other value leaves the text as it is.
    static constexpr std::int32_t BooleanResult = 1; // "FALSE" unless the text is "TRUE" in any letter case
    static constexpr std::int32_t NumberResult = 2;  // 0 unless the text is numeric

    bool DeleteKey(RegistryRoot lngKey, const std::string& sKeyName);
    bool DeleteValue(RegistryRoot lngKey, const std::string& sKeyName, const std::string& sValueName);

    // Names of the keys directly below; empty if the key does not exist.
    std::vector<std::string> EnumKeys(RegistryRoot lngKey, const std::string& sKeyName);

    bool QueryKey(RegistryRoot lngKey, const std::string& sKeyName);

    // The value as text, whatever its type; the default if there is no value or it is longer than 254
    // characters.
    Variant QueryValue(RegistryRoot lngKey, const std::string& sKeyName, const std::string& sValueName,
                       const std::string& sDefault = {}, std::int32_t ResultType = 0);

    bool SetKey(RegistryRoot lngKey, const std::string& sNewKeyName);

    // The key must exist. A number is written as 4 bytes, a text with its NUL; other types as their bytes.
    bool SetValue(RegistryRoot lngKey, const std::string& sKeyName, const std::string& sValueName,
                  const Variant& vValueSetting, std::uint32_t lValueType);

  private:
    std::string ReadText(RegistryRoot root, const std::string& key, const std::string& value,
                         const std::string& missing) const;
    Variant Shaped(std::string text, std::int32_t resultType) const;
    std::string BytesOf(const Variant& setting, std::uint32_t type) const;

    clsAppLog& log_;
    Registry& registry_;
    const LocaleText& locale_;
};

} // namespace quarn
