#include "win32/controls/Control.h"

#include "win32/SystemError.h"
#include "win32/UncaughtErrors.h"

namespace quarn {

Control::~Control() {
    Unbind();
}

void Control::Create(HWND parent, const Creation& creation) {
    handle_ = CreateWindowExA(creation.extendedStyle, creation.className, creation.name,
                              creation.style | WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, 0, 0, 0, 0, parent,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(creation.id)),
                              GetModuleHandleA(nullptr), nullptr);
    if (handle_ == nullptr)
        ThrowLastError();
    SetWindowLongPtrW(handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    ownProc_ = SetProc(&ControlProc);
}

// A common control is always a Unicode window, whichever interface created it.
WNDPROC Control::SetProc(WNDPROC procedure) const noexcept {
    return reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(handle_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
}

void Control::Unbind() noexcept {
    if (handle_ != nullptr)
        SetProc(ownProc_);
    handle_ = nullptr;
}

void Control::SetFont(HFONT font) noexcept {
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
}

void Control::MoveTo(const RECT& bounds) noexcept {
    SetWindowPos(handle_, nullptr, bounds.left, bounds.top, bounds.right - bounds.left,
                 bounds.bottom - bounds.top, SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

LRESULT Control::PassOn(UINT message, WPARAM wParam, LPARAM lParam) const noexcept {
    return CallWindowProcW(ownProc_, handle_, message, wParam, lParam);
}

LRESULT CALLBACK Control::ControlProc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* const self = reinterpret_cast<Control*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    const WNDPROC ownProc = self->ownProc_;
    Answer answer = NotHandled;
    if (message == WM_NCDESTROY)
        self->Unbind();
    else
        Contain("Control", "OnMessage", [&] { answer = self->OnMessage(message, wParam, lParam); });
    return answer ? *answer : CallWindowProcW(ownProc, handle, message, wParam, lParam);
}

} // namespace quarn
