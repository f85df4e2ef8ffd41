#include "win32/Libraries.h"

#include <cstdio>

namespace quarn {

void RestrictLibrarySearch() noexcept {
    // Looked up at run time: on Windows 7 it came with an update.
    const auto setDirectories =
        FunctionAddress<BOOL WINAPI(DWORD)>(GetModuleHandleA("kernel32.dll"), "SetDefaultDllDirectories");
    if (setDirectories != nullptr)
        setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    SetDllDirectoryA("");
}

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
