#include "win32/desktop/ProfileFilesWin.h"

#include "win32/WindowsHeaders.h"
#include "win32/desktop/Patience.h"

#include <algorithm>

namespace quarn {

namespace {

// The absolute form of a path: the profile calls search for a bare file name in the Windows folder. A path
// that the system does not understand is returned unchanged.
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

// A null value removes the key.
bool WriteKey(const std::string& path, const std::string& section, const std::string& key,
              const char* value) {
    const std::string file = FullPath(path);
    Patience patience;
    while (!WritePrivateProfileStringA(section.c_str(), key.c_str(), value, file.c_str()))
        if (!patience.TryAgain(file))
            return false;
    return true;
}

} // namespace

std::int32_t ProfileFilesWin::ReadInteger(const std::string& path, const std::string& section,
                                          const std::string& key, std::int32_t missing) const {
    return static_cast<std::int32_t>(
        GetPrivateProfileIntA(section.c_str(), key.c_str(), missing, FullPath(path).c_str()));
}

std::string ProfileFilesWin::ReadText(const std::string& path, const std::string& section,
                                      const std::string& key, std::size_t bufferSize) const {
    std::string text(std::max<std::size_t>(bufferSize, 1), '\0');
    text.resize(GetPrivateProfileStringA(section.c_str(), key.c_str(), "", text.data(),
                                         static_cast<DWORD>(text.size()), FullPath(path).c_str()));
    return text;
}

bool ProfileFilesWin::WriteText(const std::string& path, const std::string& section, const std::string& key,
                                const std::string& value) {
    return WriteKey(path, section, key, value.c_str());
}

bool ProfileFilesWin::RemoveKey(const std::string& path, const std::string& section, const std::string& key) {
    return WriteKey(path, section, key, nullptr);
}

void ProfileFilesWin::Forget(const std::string& path) {
    WritePrivateProfileStringA(nullptr, nullptr, nullptr, FullPath(path).c_str());
}

} // namespace quarn
