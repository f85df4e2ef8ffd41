#include "win32/desktop/SystemInformationWin.h"

#include "win32/Libraries.h"
#include "win32/RunningInstance.h"
#include "win32/SystemError.h"

#include <commctrl.h>
#include <shlwapi.h>
#include <type_traits>

namespace quarn {

OsVersion SystemInformationWin::WindowsVersion() const {
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    if (!GetVersionExA(&version))
        ThrowLastError();
    return {{version.dwMajorVersion, version.dwMinorVersion, version.dwBuildNumber},
            std::string(version.szCSDVersion, sizeof version.szCSDVersion)};
}

DllVersion SystemInformationWin::ShellLightWeightVersion() const {
    const auto dllGetVersion =
        SystemFunction<std::remove_pointer_t<DLLGETVERSIONPROC>>("shlwapi.dll", "DllGetVersion");
    DLLVERSIONINFO version{};
    version.cbSize = sizeof version;
    if (dllGetVersion == nullptr || FAILED(dllGetVersion(&version)))
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    return {version.dwMajorVersion, version.dwMinorVersion, version.dwBuildNumber};
}

std::string SystemInformationWin::DirectXVersion() const {
    RegistryKey key;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\DirectX", 0, KEY_QUERY_VALUE,
                      key.Receive()) != ERROR_SUCCESS)
        return {};
    char text[255];
    DWORD length = sizeof text;
    if (RegQueryValueExA(key.Get(), "Version", nullptr, nullptr, reinterpret_cast<BYTE*>(text), &length) !=
            ERROR_SUCCESS ||
        length == 0)
        return {};
    return {text, length - 1}; // without its NUL
}

std::string SystemInformationWin::LanguageName() const {
    char text[99];
    const int length = GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SLANGUAGE, text, sizeof text);
    return length > 0 ? std::string(text, length - 1) : std::string();
}

MemoryStatus SystemInformationWin::Memory() const {
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof status;
    if (!GlobalMemoryStatusEx(&status))
        ThrowLastError();
    return {status.ullAvailPhys, status.ullTotalPhys, status.ullAvailVirtual, status.ullTotalVirtual};
}

void SystemInformationWin::InitCommonControls(std::uint32_t recordSize, std::uint32_t classes) {
    const INITCOMMONCONTROLSEX record{recordSize, classes};
    InitCommonControlsEx(&record);
}

bool SystemInformationWin::AlreadyRunning(const std::string& title) {
    if (instanceMutex_)
        return false;
    const std::string name = "Local\\" + title;
    instanceMutex_.Reset(CreateMutexA(nullptr, FALSE, name.c_str()));
    const DWORD error = GetLastError();
    // A mutex that exists but cannot be opened belongs to an instance with more rights.
    const bool running = error == ERROR_ALREADY_EXISTS || (!instanceMutex_ && error == ERROR_ACCESS_DENIED);
    if (running)
        instanceMutex_.Reset();
    return running;
}

// Only the program that the user works with, which is this one until it ends, may bring a window to the
// front.
void SystemInformationWin::ShowRunningInstance() {
    const HWND window = FindWindowA(MainWindowClass, nullptr);
    DWORD process = 0;
    if (window == nullptr || GetWindowThreadProcessId(window, &process) == 0)
        return;
    AllowSetForegroundWindow(process);
    PostMessageA(window, StartedAgainMessage(), 0, 0);
}

} // namespace quarn
