#include "win32/DllSearch.h"

#include "win32/FunctionAddress.h"

namespace quarn {

void RestrictDllSearch() noexcept {
    // Looked up at run time: Windows 7 has it only since one of its updates.
    const auto setDirectories =
        FunctionAddress<BOOL WINAPI(DWORD)>(GetModuleHandleA("kernel32.dll"), "SetDefaultDllDirectories");
    if (setDirectories != nullptr)
        setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    SetDllDirectoryA("");
}

} // namespace quarn
