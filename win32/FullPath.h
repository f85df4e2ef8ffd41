#pragma once

#include <string>

namespace quarn {

// The absolute form of a path, taken from the current folder. A path that the system cannot make sense of
// comes back as it is.
std::string FullPath(const std::string& path);

} // namespace quarn
