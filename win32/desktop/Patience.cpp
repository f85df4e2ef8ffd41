#include "win32/desktop/Patience.h"

namespace quarn {

namespace {

// 25 polls take half a second, up to 0.8 s if the system's timer has steps of 16 ms.
constexpr DWORD PollMilliseconds = 20;

// Access to folders and write-protected files remains denied.
bool MayPass(DWORD error, const std::string& path) noexcept {
    if (error != ERROR_ACCESS_DENIED)
        return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes == INVALID_FILE_ATTRIBUTES ||
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) == 0;
}

} // namespace

bool Patience::TryAgain(const std::string& path) noexcept {
    const DWORD error = GetLastError();
    if (polls_ > 0 && MayPass(error, path)) {
        --polls_;
        Sleep(PollMilliseconds);
        return true;
    }
    SetLastError(error);
    return false;
}

} // namespace quarn
