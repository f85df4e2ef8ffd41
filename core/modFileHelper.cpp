#include "core/modFileHelper.h"

namespace quarn {

bool FileExists(const Files& files, const std::string& path) {
    const bool isPattern = path.find_first_of("?*") != std::string::npos;
    return isPattern ? files.AnyMatch(path) : files.IsFile(path);
}

} // namespace quarn
