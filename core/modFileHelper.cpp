#include "core/modFileHelper.h"

namespace quarn {

bool FileExists(const Files& files, const std::string& path) {
    const bool isPattern = path.find_first_of("?*") != std::string::npos;
    return isPattern ? files.AnyMatch(path) : files.IsFile(path);
}

// Only a walk from the start distinguishes the bytes of a two-byte character.
bool EndsInBackslash(const LocaleText& locale, std::string_view path) {
    std::size_t last = path.size();
    for (std::size_t i = 0; i < path.size(); i += locale.IsLeadByte(path[i]) ? 2 : 1)
        last = i;
    return last + 1 == path.size() && path[last] == '\\';
}

std::string WithTrailingBackslash(const LocaleText& locale, std::string folder) {
    if (!EndsInBackslash(locale, folder))
        folder += '\\';
    return folder;
}

} // namespace quarn
