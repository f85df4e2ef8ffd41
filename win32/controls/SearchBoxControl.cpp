#include "win32/controls/SearchBoxControl.h"

#include "win32/Fonts.h"

#include <commctrl.h>

namespace quarn {

namespace {

constexpr int LongestText = 100;
constexpr int VerticalMargin = 1; // above and below the text, in pixels of 96 to an inch
constexpr WPARAM CtrlA = 1;       // as a character

} // namespace

void SearchBoxControl::Create(HWND parent, int id) {
    Control::Create(parent, {WC_EDITA, "", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE, id});
    ShowWindow(Handle(), SW_HIDE);
    Send(EM_SETLIMITTEXT, LongestText);
    const std::wstring cue(model_.cue.begin(), model_.cue.end()); // ASCII
    Send(EM_SETCUEBANNER, FALSE, cue.c_str());
}

void SearchBoxControl::SetLook(Dpi dpi, HFONT font) {
    SetFont(font);
    height_ = LineHeight(font) + 2 * (GetSystemMetrics(SM_CYEDGE) + dpi.Scaled(VerticalMargin));
}

bool SearchBoxControl::Flush() {
    if (ShownText() != model_.text)
        SetWindowTextA(Handle(), model_.text.c_str());
    if (shown_ == model_.visible)
        return false;
    shown_ = model_.visible;
    if (label_ == nullptr)
        AddLabel();
    ShowWindow(label_, shown_ ? SW_SHOWNA : SW_HIDE);
    ShowWindow(Handle(), shown_ ? SW_SHOWNA : SW_HIDE);
    return true;
}

// Screen readers take a label directly before a field as the field's name.
void SearchBoxControl::AddLabel() noexcept {
    label_ = CreateWindowExA(0, WC_STATICA, model_.name.c_str(), WS_CHILD, 0, 0, 0, 0, GetParent(Handle()),
                             nullptr, GetModuleHandleA(nullptr), nullptr);
    const HWND before = GetWindow(Handle(), GW_HWNDPREV);
    SetWindowPos(label_, before != nullptr ? before : HWND_TOP, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

std::string SearchBoxControl::ShownText() const {
    char text[LongestText + 1] = "";
    const int length = GetWindowTextA(Handle(), text, sizeof text);
    return {text, static_cast<std::size_t>(length)};
}

void SearchBoxControl::TakeText() {
    std::string text = ShownText();
    if (text == model_.text)
        return;
    model_.text = std::move(text);
    if (Changed)
        Changed();
}

void SearchBoxControl::Focus() noexcept {
    SetFocus(Handle());
    Send(EM_SETSEL, 0, -1);
}

// Some versions of the field do not know Ctrl+A.
Answer SearchBoxControl::OnMessage(UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    if (message != WM_CHAR || wParam != CtrlA)
        return NotHandled;
    Send(EM_SETSEL, 0, -1);
    return Handled;
}

} // namespace quarn
