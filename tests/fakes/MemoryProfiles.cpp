#include "tests/fakes/MemoryProfiles.h"

#include "tests/fakes/IniText.h"

namespace quarn {

namespace {

std::optional<std::string> ValueIn(const MemoryFiles& files, const std::string& path,
                                   const std::string& section, const std::string& key) {
    try {
        return IniValue(files.Read(path), section, key);
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

} // namespace

std::int32_t MemoryProfiles::ReadInteger(const std::string& path, const std::string& section,
                                         const std::string& key, std::int32_t missing) const {
    const auto value = ValueIn(files_, path, section, key);
    return value ? LeadingInteger(*value) : missing;
}

std::string MemoryProfiles::ReadText(const std::string& path, const std::string& section,
                                     const std::string& key, std::size_t bufferSize) const {
    return ValueIn(files_, path, section, key).value_or(std::string()).substr(0, bufferSize - 1);
}

bool MemoryProfiles::WriteText(const std::string& path, const std::string& section, const std::string& key,
                               const std::string& value) {
    try {
        const std::string text = files_.IsFile(path) ? files_.Read(path) : std::string();
        files_.Write(path, WithIniValue(text, section, key, value));
        return true;
    } catch (const RunTimeError&) {
        return false;
    }
}

} // namespace quarn
