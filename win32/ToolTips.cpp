#include "win32/ToolTips.h"

#include <commctrl.h>

namespace quarn {

void ToolTips::Add(HWND dialog, int control, std::string text) {
    if (window_ == nullptr)
        window_ = CreateWindowExA(
            WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, CW_USEDEFAULT,
            CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, dialog, nullptr, GetModuleHandleA(nullptr), nullptr);
    TOOLINFOA tool{};
    // The size of the first version, which every version of the library knows.
    tool.cbSize = TTTOOLINFOA_V1_SIZE;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = dialog;
    tool.uId = reinterpret_cast<UINT_PTR>(GetDlgItem(dialog, control));
    tool.lpszText = text.data();
    SendMessageA(window_, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
}

} // namespace quarn
