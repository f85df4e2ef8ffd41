#include "win32/desktop/InputBox.h"

#include "win32/SystemError.h"
#include "win32/UncaughtErrors.h"
#include "win32/resources/inputbox.h"

namespace quarn {

namespace {

struct InputBox {
    HWND owner;
    bool topMost;
    const std::string& prompt;
    const std::string& title;
    std::string text;

    void OnInit(HWND dialog) const;
    void OnOk(HWND dialog);
};

void CentreOn(HWND owner, HWND dialog) {
    RECT outer, own;
    if (!IsWindowVisible(owner) || IsIconic(owner) || !GetWindowRect(owner, &outer) ||
        !GetWindowRect(dialog, &own))
        return; // the template centres it on the screen
    SetWindowPos(dialog, nullptr, (outer.left + outer.right - (own.right - own.left)) / 2,
                 (outer.top + outer.bottom - (own.bottom - own.top)) / 2, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    SendMessageA(dialog, DM_REPOSITION, 0, 0); // back onto the screen, should the owner hang over its edge
}

void InputBox::OnInit(HWND dialog) const {
    SetWindowTextA(dialog, title.c_str());
    SetDlgItemTextA(dialog, IDC_INPUTBOX_PROMPT, prompt.c_str());
    CentreOn(owner, dialog);
    if (topMost)
        SetWindowPos(dialog, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
}

void InputBox::OnOk(HWND dialog) {
    const HWND edit = GetDlgItem(dialog, IDC_INPUTBOX_TEXT);
    text.resize(GetWindowTextLengthA(edit) + 1);
    text.resize(GetWindowTextA(edit, text.data(), static_cast<int>(text.size())));
}

INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    try {
        if (message == WM_INITDIALOG) {
            SetWindowLongPtrA(dialog, DWLP_USER, lParam);
            reinterpret_cast<InputBox*>(lParam)->OnInit(dialog);
            return TRUE; // and the focus goes to the edit box, the first control that takes it
        }
        if (message == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)) {
            if (LOWORD(wParam) == IDOK)
                reinterpret_cast<InputBox*>(GetWindowLongPtrA(dialog, DWLP_USER))->OnOk(dialog);
            EndDialog(dialog, LOWORD(wParam));
            return TRUE;
        }
    } catch (...) {
        ReportUncaughtError("InputBox");
        EndDialog(dialog, IDCANCEL);
    }
    return FALSE;
}

} // namespace

std::string AskInInputBox(HWND owner, bool topMost, const std::string& prompt, const std::string& title) {
    InputBox box{owner, topMost, prompt, title, {}};
    const INT_PTR ended = DialogBoxParamA(GetModuleHandleA(nullptr), "INPUTBOX", owner, &Procedure,
                                          reinterpret_cast<LPARAM>(&box));
    if (ended == -1)
        ThrowLastError();
    return ended == IDOK ? box.text : std::string();
}

} // namespace quarn
