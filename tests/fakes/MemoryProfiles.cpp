#include "tests/fakes/MemoryProfiles.h"

#include "tests/fakes/IniText.h"

namespace quarn {

std::optional<std::string> MemoryProfiles::TextOf(const std::string& path) const {
    const auto onDisk = files_.ReadIfThere(path);
    const auto found = remembered_.find(path);
    return found != remembered_.end() && found->second.onDisk == onDisk ? found->second.intended : onDisk;
}

std::optional<std::string> MemoryProfiles::ValueIn(const std::string& path, const std::string& section,
                                                   const std::string& key) const {
    try {
        return IniValue(TextOf(path).value_or(std::string()), section, key);
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

std::int32_t MemoryProfiles::ReadInteger(const std::string& path, const std::string& section,
                                         const std::string& key, std::int32_t missing) const {
    const auto value = ValueIn(path, section, key);
    return value ? LeadingInteger(*value) : missing;
}

std::string MemoryProfiles::ReadText(const std::string& path, const std::string& section,
                                     const std::string& key, std::size_t bufferSize) const {
    return ValueIn(path, section, key).value_or(std::string()).substr(0, bufferSize - 1);
}

bool MemoryProfiles::WriteText(const std::string& path, const std::string& section, const std::string& key,
                               const std::string& value) {
    return Change(path, [&](const std::string& text) { return WithIniValue(text, section, key, value); });
}

bool MemoryProfiles::RemoveKey(const std::string& path, const std::string& section, const std::string& key) {
    if (!ValueIn(path, section, key))
        return true;
    return Change(path, [&](const std::string& text) { return WithoutIniKey(text, section, key); });
}

bool MemoryProfiles::Change(const std::string& path,
                            const std::function<std::string(const std::string&)>& changed) {
    if (beforeWrite)
        beforeWrite();
    try {
        const std::string text = changed(TextOf(path).value_or(std::string()));
        try {
            files_.Write(path, text);
        } catch (const RunTimeError& error) {
            if (error.Kind() != ErrorNumber::DiskFull)
                throw;
        }
        remembered_.insert_or_assign(path, Remembered{files_.Get(path), text});
        return true;
    } catch (const RunTimeError&) {
        return false;
    }
}

} // namespace quarn
