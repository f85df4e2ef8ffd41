#include "win32/SystemLibrary.h"

#include <cstdio>

namespace quarn {

HMODULE LoadSystemLibrary(const char* fileName) noexcept {
    char folder[MAX_PATH];
    const UINT length = GetSystemDirectoryA(folder, sizeof folder);
    if (length == 0 || length >= sizeof folder)
        return nullptr;
    char path[2 * MAX_PATH];
    const int written = std::snprintf(path, sizeof path, "%s\\%s", folder, fileName);
    if (written < 0 || static_cast<std::size_t>(written) >= sizeof path)
        return nullptr;
    return LoadLibraryExA(path, nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

} // namespace quarn
