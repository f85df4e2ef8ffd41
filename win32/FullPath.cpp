#include "win32/FullPath.h"

#include "win32/WindowsHeaders.h"

namespace quarn {

std::string FullPath(const std::string& path) {
    const DWORD needed = GetFullPathNameA(path.c_str(), 0, nullptr, nullptr);
    if (needed == 0)
        return path;
    std::string full(needed, '\0');
    const DWORD length = GetFullPathNameA(path.c_str(), needed, full.data(), nullptr);
    if (length == 0 || length >= needed)
        return path;
    full.resize(length);
    return full;
}

} // namespace quarn
