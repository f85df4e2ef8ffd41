#include "win32/desktop/HelpViewerWin.h"

#include "win32/Libraries.h"

namespace quarn {

HelpViewerWin::HtmlHelpFunction* HelpViewerWin::Load() noexcept {
    return SystemFunction<HtmlHelpFunction>("hhctrl.ocx", "HtmlHelpA");
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
