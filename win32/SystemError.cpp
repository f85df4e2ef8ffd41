#include "win32/SystemError.h"

#include <algorithm>
#include <iterator>

namespace quarn {

namespace {

struct Mapping {
    DWORD systemError;
    ErrorNumber number;
};

constexpr Mapping FileErrors[] = {
    {ERROR_FILE_NOT_FOUND, ErrorNumber::FileNotFound},
    {ERROR_INVALID_NAME, ErrorNumber::FileNotFound},

    {ERROR_PATH_NOT_FOUND, ErrorNumber::PathNotFound},
    {ERROR_BAD_PATHNAME, ErrorNumber::PathNotFound},
    {ERROR_BAD_NETPATH, ErrorNumber::PathNotFound},
    {ERROR_BAD_NET_NAME, ErrorNumber::PathNotFound},
    {ERROR_DIRECTORY, ErrorNumber::PathNotFound},
    {ERROR_FILENAME_EXCED_RANGE, ErrorNumber::PathNotFound},

    // Folders, read-only files and missing rights: retrying does not help.
    {ERROR_ACCESS_DENIED, ErrorNumber::PathFileAccessError},
    {ERROR_CANNOT_MAKE, ErrorNumber::PathFileAccessError},
    {ERROR_NOT_SAME_DEVICE, ErrorNumber::PathFileAccessError},

    // Another program has it open, or the whole disk is write-protected.
    {ERROR_SHARING_VIOLATION, ErrorNumber::PermissionDenied},
    {ERROR_LOCK_VIOLATION, ErrorNumber::PermissionDenied},
    {ERROR_USER_MAPPED_FILE, ErrorNumber::PermissionDenied},
    {ERROR_WRITE_PROTECT, ErrorNumber::PermissionDenied},

    {ERROR_DISK_FULL, ErrorNumber::DiskFull},
    {ERROR_HANDLE_DISK_FULL, ErrorNumber::DiskFull},

    {ERROR_INVALID_DRIVE, ErrorNumber::DeviceUnavailable},
    {ERROR_BAD_UNIT, ErrorNumber::DeviceUnavailable},
    {ERROR_DEV_NOT_EXIST, ErrorNumber::DeviceUnavailable},

    {ERROR_NOT_READY, ErrorNumber::DiskNotReady},
};

} // namespace

ErrorNumber ErrorNumberOf(DWORD systemError) noexcept {
    const auto* found = std::find_if(std::begin(FileErrors), std::end(FileErrors),
                                     [&](const Mapping& m) { return m.systemError == systemError; });
    return found != std::end(FileErrors) ? found->number : ErrorNumber::DeviceIOError;
}

void ThrowSystemError(DWORD systemError) {
    throw RunTimeError(ErrorNumberOf(systemError));
}

void ThrowLastError() {
    ThrowSystemError(GetLastError());
}

void SuppressDriveMessages() noexcept {
    SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, nullptr);
}

std::string SystemErrorText(DWORD systemError) {
    char buffer[512];
    DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                  systemError, 0, buffer, sizeof buffer, nullptr);
    while (length > 0 && static_cast<unsigned char>(buffer[length - 1]) <= ' ')
        --length;
    const std::string sentence = length > 0 ? std::string(buffer, length) : "Unknown error";
    return sentence + " (" + std::to_string(systemError) + ")";
}

} // namespace quarn
