#include "win32/controls/Control.h"

#include "win32/SystemError.h"
#include "win32/UncaughtErrors.h"

#include <commctrl.h>

namespace quarn {

namespace {

constexpr UINT_PTR SubclassIdentifier = 1;

} // namespace

Control::~Control() {
    Unbind();
}

void Control::Create(HWND parent, const Creation& creation) {
    handle_ = CreateWindowExA(creation.extendedStyle, creation.className, creation.name,
                              creation.style | WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, 0, 0, 0, 0, parent,
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(creation.id)),
                              GetModuleHandleA(nullptr), nullptr);
    if (handle_ == nullptr ||
        !SetWindowSubclass(handle_, &ControlProc, SubclassIdentifier, reinterpret_cast<DWORD_PTR>(this)))
        ThrowLastError();
}

void Control::Unbind() noexcept {
    if (handle_ != nullptr)
        RemoveWindowSubclass(handle_, &ControlProc, SubclassIdentifier);
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
    return DefSubclassProc(handle_, message, wParam, lParam);
}

LRESULT CALLBACK Control::ControlProc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR /*identifier*/, DWORD_PTR control) noexcept {
    auto* const self = reinterpret_cast<Control*>(control);
    if (message == WM_NCDESTROY) {
        self->Unbind();
        return DefSubclassProc(handle, message, wParam, lParam);
    }
    Answer answer = NotHandled;
    Contain("Control", "OnMessage", [&] { answer = self->OnMessage(message, wParam, lParam); });
    return answer ? *answer : DefSubclassProc(handle, message, wParam, lParam);
}

} // namespace quarn
