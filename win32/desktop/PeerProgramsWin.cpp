#include "win32/desktop/PeerProgramsWin.h"

#include "base/RunTimeError.h"
#include "win32/AnsiText.h"
#include "win32/Libraries.h"
#include "win32/WindowsHeaders.h"
#include "win32/desktop/FilesWin.h"

#include <vector>

namespace quarn {

namespace {

constexpr UINT PatienceMilliseconds = 3000;

// Without sending a message to the window, which may be hung.
bool HasTitle(HWND window, const std::wstring& title) {
    std::wstring found(title.size() + 2, L'\0'); // space for one character more and the NUL
    found.resize(InternalGetWindowText(window, found.data(), static_cast<int>(found.size())));
    return found == title;
}

// The system's own search ignores case.
HWND TopLevelWindow(const std::string& title) {
    HWND window = nullptr;
    do {
        window = FindWindowExA(nullptr, window, nullptr, title.c_str());
    } while (window != nullptr && !HasTitle(window, Widened(title)));
    return window;
}

template<class Function>
Function& VersionFunction(const char* name) {
    Function* const function = SystemFunction<Function>("version.dll", name);
    if (function == nullptr)
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    return *function;
}

// Empty if the file has none.
std::vector<char> VersionResource(const std::string& path) {
    auto& getSize = VersionFunction<decltype(GetFileVersionInfoSizeA)>("GetFileVersionInfoSizeA");
    auto& get = VersionFunction<decltype(GetFileVersionInfoA)>("GetFileVersionInfoA");
    DWORD ignored = 0;
    std::vector<char> resource(getSize(path.c_str(), &ignored));
    if (!resource.empty() && !get(path.c_str(), 0, static_cast<DWORD>(resource.size()), resource.data()))
        resource.clear();
    return resource;
}

} // namespace

void PeerProgramsWin::SendCopyDataTo(const std::string& windowTitle, std::uint32_t identifier,
                                     std::string_view payload) {
    const HWND window = TopLevelWindow(windowTitle);
    if (window == nullptr)
        return;
    std::vector<char> bytes(payload.begin(), payload.end());
    COPYDATASTRUCT record{identifier, static_cast<DWORD>(bytes.size()), bytes.data()};
    SendMessageTimeoutA(window, WM_COPYDATA, reinterpret_cast<WPARAM>(owner_.Main()),
                        reinterpret_cast<LPARAM>(&record), SMTO_ABORTIFHUNG, PatienceMilliseconds, nullptr);
}

FileVersion PeerProgramsWin::VersionOf(const std::string& path) const {
    if (!FilesWin().IsFile(path))
        throw RunTimeError(ErrorNumber::FileNotFound);
    const std::vector<char> resource = VersionResource(path);
    auto& query = VersionFunction<decltype(VerQueryValueA)>("VerQueryValueA");
    void* found = nullptr;
    UINT size = 0;
    if (resource.empty() || !query(resource.data(), "\\", &found, &size) || size < sizeof(VS_FIXEDFILEINFO))
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    const auto& fixed = *static_cast<const VS_FIXEDFILEINFO*>(found);
    return {HIWORD(fixed.dwFileVersionMS), LOWORD(fixed.dwFileVersionMS), HIWORD(fixed.dwFileVersionLS)};
}

} // namespace quarn
