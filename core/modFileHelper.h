#pragma once

#include "desktop/Files.h"

#include <string>

namespace quarn {

// With "?" or "*" in the path: whether at least one file matches. Otherwise whether a file, not a folder, of
// exactly this path exists.
bool FileExists(const Files& files, const std::string& path);

} // namespace quarn
