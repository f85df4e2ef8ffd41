#include "win32/Dialog.h"

#include "base/Scope.h"
#include "win32/DialogTemplate.h"
#include "win32/Handles.h"
#include "win32/Libraries.h"
#include "win32/SystemError.h"

#include <uxtheme.h>
#include <vector>

namespace quarn {

namespace {

// A page has the background of the tab control that it lies on.
void UseTabTexture(HWND page) noexcept {
    static const auto enable =
        SystemFunction<HRESULT WINAPI(HWND, DWORD)>("uxtheme.dll", "EnableThemeDialogTexture");
    if (enable != nullptr)
        enable(page, ETDT_ENABLETAB);
}

} // namespace

class Dialog::KeyFilter {
  public:
    explicit KeyFilter(Dialog& dialog) noexcept
        : innermost_(current_, &dialog),
          hook_(SetWindowsHookExA(WH_MSGFILTER, &Look, nullptr, GetCurrentThreadId())) {}

  private:
    static LRESULT CALLBACK Look(int code, WPARAM wParam, LPARAM lParam) noexcept {
        const MSG& message = *reinterpret_cast<const MSG*>(lParam);
        if (code == MSGF_DIALOGBOX && message.message == WM_KEYDOWN &&
            IsChild(current_->handle_, message.hwnd)) {
            bool isDone = false;
            current_->Guarded("Form_KeyDown", [&] { isDone = current_->OnKeyDown(message.wParam); });
            if (isDone)
                return TRUE;
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    inline static Dialog* current_ = nullptr; // the innermost open one
    Restore<Dialog*> innermost_;
    UniqueHandle<HookKind> hook_;
};

INT_PTR Dialog::ShowModal(HWND owner, bool topMost) {
    const KeyFilter keys(*this);
    topMost_ = topMost;
    focusMoved_ = false;
    const std::vector<unsigned char> layout = DialogTemplate(formName_);
    const INT_PTR result = DialogBoxIndirectParamA(GetModuleHandleA(nullptr),
                                                   reinterpret_cast<const DLGTEMPLATE*>(layout.data()), owner,
                                                   &DialogProc, reinterpret_cast<LPARAM>(this));
    if (result == -1)
        ThrowLastError();
    return result;
}

void Dialog::CreateAsPage(HWND parent) {
    const std::vector<unsigned char> layout = DialogTemplate(formName_);
    if (CreateDialogIndirectParamA(GetModuleHandleA(nullptr),
                                   reinterpret_cast<const DLGTEMPLATE*>(layout.data()), parent, &DialogProc,
                                   reinterpret_cast<LPARAM>(this)) == nullptr)
        ThrowLastError();
    UseTabTexture(handle_);
}

INT_PTR CALLBACK Dialog::DialogProc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (message == WM_INITDIALOG) {
        SetWindowLongPtrA(handle, DWLP_USER, lParam);
        auto* const starting = reinterpret_cast<Dialog*>(lParam);
        starting->handle_ = handle;
        starting->Initialise();
        return starting->focusMoved_ ? FALSE : TRUE;
    }
    auto* const dialog = reinterpret_cast<Dialog*>(GetWindowLongPtrA(handle, DWLP_USER));
    if (dialog == nullptr)
        return FALSE;
    const INT_PTR answer = dialog->Dispatch(message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrA(handle, DWLP_USER, 0);
        dialog->handle_ = nullptr;
    }
    return answer;
}

void Dialog::Initialise() noexcept {
    CentreOnOwner();
    TakeIconsOfOwner();
    if (topMost_)
        SetWindowPos(handle_, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    Guarded("Form_Load", [&] { OnInit(); });
}

INT_PTR Dialog::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    switch (message) {
    case WM_COMMAND:
        DispatchCommand(LOWORD(wParam), HIWORD(wParam));
        return TRUE;
    case WM_NOTIFY: {
        LRESULT answer = 0;
        Guarded("OnNotify", [&] { answer = OnNotify(*reinterpret_cast<NMHDR*>(lParam)); });
        SetWindowLongPtrA(handle_, DWLP_MSGRESULT, answer);
        return TRUE;
    }
    case WM_DESTROY:
        Guarded("Form_Unload", [&] { OnDestroy(); });
        return FALSE;
    default:
        return FALSE;
    }
}

void Dialog::DispatchCommand(int id, int notification) noexcept {
    if (id == IDOK)
        Guarded("cmdOK_Click", [&] { OnOK(); });
    else if (id == IDCANCEL)
        Guarded("cmdCancel_Click", [&] { OnCancel(); });
    else
        Guarded("OnCommand", [&] { OnCommand(id, notification); });
}

void Dialog::CentreOnOwner() noexcept {
    const HWND owner = GetWindow(handle_, GW_OWNER);
    RECT over;
    RECT own;
    // An invisible owner has no position; then the template's is used.
    if (owner == nullptr || !IsWindowVisible(owner) || IsIconic(owner) || !GetWindowRect(owner, &over) ||
        !GetWindowRect(handle_, &own))
        return;
    SetWindowPos(handle_, nullptr, (over.left + over.right - (own.right - own.left)) / 2,
                 (over.top + over.bottom - (own.bottom - own.top)) / 2, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    SendMessageA(handle_, DM_REPOSITION, 0, 0); // back onto the screen if the owner is partly outside
}

// The caption shows the program's icon instead of the generic one.
void Dialog::TakeIconsOfOwner() noexcept {
    const HWND owner = GetWindow(handle_, GW_OWNER);
    const auto take = [&](WPARAM kind, int ofClass) {
        LRESULT icon = SendMessageA(owner, WM_GETICON, kind, 0);
        if (icon == 0)
            icon = static_cast<LRESULT>(GetClassLongPtrA(owner, ofClass));
        SendMessageA(handle_, WM_SETICON, kind, icon);
    };
    take(ICON_BIG, GCLP_HICON);
    take(ICON_SMALL, GCLP_HICONSM);
}

std::string Dialog::ItemText(int id) const {
    const HWND item = Item(id);
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(item)) + 1, '\0');
    text.resize(static_cast<std::size_t>(GetWindowTextA(item, text.data(), static_cast<int>(text.size()))));
    return text;
}

void Dialog::SetItemText(int id, const std::string& text) noexcept {
    SetDlgItemTextA(handle_, id, text.c_str());
}

void Dialog::SetChecked(int id, bool checked) noexcept {
    CheckDlgButton(handle_, id, checked ? BST_CHECKED : BST_UNCHECKED);
}

void Dialog::FocusItem(int id) noexcept {
    focusMoved_ = true;
    SendMessageA(handle_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Item(id)), TRUE);
    SendMessageA(Item(id), EM_SETSEL, 0, -1);
}

} // namespace quarn
