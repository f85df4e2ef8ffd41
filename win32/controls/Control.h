#pragma once

// A common control inside the main window, and the base of the wrappers in this folder. A wrapper shows one
// model: Flush brings the control up to date with it and costs next to nothing when nothing changed; what the
// user does goes into the model and to the wrapper's events.
//
// The control's window belongs to its parent and dies with it. The wrapper watches the window's messages
// from its creation to its end (or to the wrapper's own, whichever comes first), all of them through one
// procedure for every kind of control, which finds the wrapper in the window's own memory: it is asked at
// every message, and a window's properties take far longer to look up.

#include "win32/Window.h"

namespace quarn {

class Control {
  public:
    Control() noexcept = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control();

    HWND Handle() const noexcept { return handle_; }
    bool HasFocus() const noexcept { return handle_ != nullptr && GetFocus() == handle_; }

    void SetFont(HFONT font) noexcept;
    void MoveTo(const RECT& bounds) noexcept;

    // Called for the control's WM_NOTIFY to its parent.
    virtual Answer OnNotify(NMHDR& /*notification*/) { return NotHandled; }

  protected:
    struct Creation {
        const char* className;
        const char* name; // the control's name for screen readers
        DWORD style;
        DWORD extendedStyle = 0;
        int id;
    };

    // Throws the system's error.
    void Create(HWND parent, const Creation& creation);

    // A message to the control, before the control receives it.
    virtual Answer OnMessage(UINT /*message*/, WPARAM, LPARAM) { return NotHandled; }

    // Passes a message to the control itself; for OnMessage.
    LRESULT PassOn(UINT message, WPARAM wParam, LPARAM lParam) const noexcept;

    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const noexcept {
        return SendMessageA(handle_, message, wParam, lParam);
    }
    template<class T>
    LRESULT Send(UINT message, WPARAM wParam, T* record) const noexcept {
        return Send(message, wParam, reinterpret_cast<LPARAM>(record));
    }

  private:
    static LRESULT CALLBACK ControlProc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    WNDPROC SetProc(WNDPROC procedure) const noexcept; // returns the previous one
    void Unbind() noexcept;

    HWND handle_ = nullptr;
    WNDPROC ownProc_ = nullptr; // the control's
};

} // namespace quarn
