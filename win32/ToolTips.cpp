#include "win32/ToolTips.h"

#include "win32/Dpi.h"

#include <commctrl.h>

namespace quarn {

namespace {

// Longer texts have several lines; without a limit, a text can be wider than the screen. In pixels of 96 to
// an inch.
constexpr int WidestText = 480;

TTTOOLINFOA ToolOf(HWND parent, UINT_PTR number) noexcept {
    TTTOOLINFOA tool{};
    // The size of the first version, which every version of the library supports.
    tool.cbSize = TTTOOLINFOA_V1_SIZE;
    tool.hwnd = parent;
    tool.uId = number;
    return tool;
}

void Send(HWND toolTips, UINT message, const TTTOOLINFOA& tool) noexcept {
    SendMessageA(toolTips, message, 0, reinterpret_cast<LPARAM>(&tool));
}

} // namespace

void ToolTips::AddControl(HWND parent, HWND control, const std::string& text) noexcept {
    Add(parent, reinterpret_cast<UINT_PTR>(control), TTF_IDISHWND | TTF_SUBCLASS, text);
}

void ToolTips::AddArea(HWND parent, UINT_PTR number, const std::string& text) noexcept {
    Add(parent, number, TTF_SUBCLASS, text);
}

void ToolTips::AddRelayedArea(HWND parent, UINT_PTR number) noexcept {
    Add(parent, number, 0, {});
}

void ToolTips::Relay(HWND parent, UINT message, WPARAM wParam, LPARAM lParam) const noexcept {
    if (!HasTools())
        return;
    MSG relayed{};
    relayed.hwnd = parent;
    relayed.message = message;
    relayed.wParam = wParam;
    relayed.lParam = lParam;
    SendMessageA(window_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relayed));
}

void ToolTips::Add(HWND parent, UINT_PTR number, UINT flags, const std::string& text) noexcept {
    if (window_ == nullptr)
        Create(parent);
    TTTOOLINFOA tool = ToolOf(parent, number);
    tool.uFlags = flags;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): the control copies it.
    tool.lpszText = const_cast<char*>(text.c_str());
    Send(window_, TTM_ADDTOOLA, tool);
}

void ToolTips::Create(HWND parent) noexcept {
    window_ =
        CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                        CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                        GetAncestor(parent, GA_ROOT), nullptr, GetModuleHandleA(nullptr), nullptr);
    SendMessageA(window_, TTM_SETMAXTIPWIDTH, 0, Dpi::OfWindow(parent).Scaled(WidestText));
}

void ToolTips::ChangeText(HWND parent, HWND control, const std::string& text) noexcept {
    ChangeAreaText(parent, reinterpret_cast<UINT_PTR>(control), text);
}

void ToolTips::ChangeAreaText(HWND parent, UINT_PTR number, const std::string& text) noexcept {
    TTTOOLINFOA tool = ToolOf(parent, number);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): the control copies it.
    tool.lpszText = const_cast<char*>(text.c_str());
    Send(window_, TTM_UPDATETIPTEXTA, tool);
}

void ToolTips::MoveArea(HWND parent, UINT_PTR number, const RECT& area) noexcept {
    TTTOOLINFOA tool = ToolOf(parent, number);
    tool.rect = area;
    Send(window_, TTM_NEWTOOLRECTA, tool);
}

} // namespace quarn
