#include "win32/desktop/HelpViewerWin.h"

#include "win32/FunctionAddress.h"

#include <cstring>

namespace quarn {

// By its full path: nothing in another folder can pass itself off as the library.
HelpViewerWin::HtmlHelpFunction* HelpViewerWin::Load() noexcept {
    constexpr char Library[] = "\\hhctrl.ocx";
    char path[MAX_PATH + sizeof Library];
    const UINT length = GetSystemDirectoryA(path, MAX_PATH);
    if (length == 0 || length >= MAX_PATH)
        return nullptr;
    std::memcpy(path + length, Library, sizeof Library);
    const HMODULE library = LoadLibraryExA(path, nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    return library == nullptr ? nullptr : FunctionAddress<HtmlHelpFunction>(library, "HtmlHelpA");
}

bool HelpViewerWin::HtmlHelp(WindowReference caller, const std::string& file, HelpCommand command,
                             const char* topic) {
    if (!loaded_) {
        loaded_ = true;
        htmlHelp_ = Load();
    }
    return htmlHelp_ != nullptr &&
           htmlHelp_(reinterpret_cast<HWND>(caller), file.c_str(), static_cast<UINT>(command),
                     reinterpret_cast<DWORD_PTR>(topic)) != nullptr;
}

} // namespace quarn
