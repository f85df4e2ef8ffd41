#pragma once

#include "desktop/HelpViewer.h"
#include "win32/WindowsHeaders.h"

namespace quarn {

// The system's HTML help. Its library is loaded on first use, so that the program also runs on a system
// without it, and stays loaded, because open help windows need it.
class HelpViewerWin final : public HelpViewer {
  public:
    bool HtmlHelp(WindowReference caller, const std::string& file, HelpCommand command,
                  const char* topic) override;

  private:
    using HtmlHelpFunction = HWND WINAPI(HWND caller, LPCSTR file, UINT command, DWORD_PTR data);

    HtmlHelpFunction* Load() noexcept;

    bool loaded_ = false;
    HtmlHelpFunction* htmlHelp_ = nullptr;
};

} // namespace quarn
