#pragma once

// A window of the program: one handle connected to one object for its whole life. The procedure of the
// program's top-level windows finds the object, unpacks each message and calls a virtual function. A function
// that is not overridden, or that returns NotHandled, leaves the message to the system.
//
// The object owns the window: it outlives the handle, destroys it in its destructor if necessary, and is
// disconnected at the window's last message. Objects belong to the user-interface thread.

#include "win32/UncaughtErrors.h"
#include "win32/WindowsHeaders.h"

#include <optional>
#include <utility>

namespace quarn {

using Answer = std::optional<LRESULT>;
inline constexpr Answer NotHandled = std::nullopt;
inline constexpr Answer Handled = 0;

class Window {
  public:
    // The form's name is used to report errors of this window.
    explicit Window(const char* formName) noexcept : formName_(formName) {}
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    virtual ~Window();

    HWND Handle() const noexcept { return handle_; }

    // Runs an event handler; an error that escapes it is reported under the names of form and handler.
    template<class Body>
    void Guarded(const char* handler, Body&& body) noexcept {
        Contain(formName_, handler, std::forward<Body>(body));
    }

  protected:
    struct Creation {
        const char* className;
        const char* caption = "";
        DWORD style = WS_OVERLAPPEDWINDOW;
        DWORD extendedStyle = 0;
        RECT bounds = {};
        HWND owner = nullptr;
        HMENU menu = nullptr;
        HICON icon = nullptr;
        HICON smallIcon = nullptr;
    };

    // Creates the window, invisible unless the style says otherwise. Throws the system's error.
    void Create(const Creation& creation);

    virtual Answer OnCreate() { return NotHandled; }
    virtual Answer OnClose() { return NotHandled; }
    virtual void OnDestroy() {}
    virtual Answer OnQueryEndSession() { return NotHandled; }
    virtual Answer OnEndSession(bool /*ending*/) { return NotHandled; }

    virtual Answer OnSizeLimits(MINMAXINFO& /*limits*/) { return NotHandled; }
    virtual Answer OnSize(WPARAM /*kind*/) { return NotHandled; }
    virtual Answer OnDpiChanged(unsigned /*dotsPerInch*/, const RECT& /*suggested*/) { return NotHandled; }
    virtual Answer OnSettingChanged(WPARAM /*which*/) { return NotHandled; } // one of SPI_...
    virtual Answer OnThemeChanged() { return NotHandled; }
    virtual Answer OnSystemColorsChanged() { return NotHandled; }

    virtual Answer OnActivate(bool /*active*/, bool /*minimized*/) { return NotHandled; }
    virtual Answer OnSetFocus() { return NotHandled; }
    // The source of a command; a control's notification includes the control.
    enum class CommandSource { Menu, Accelerator, Control };
    virtual Answer OnCommand(int /*id*/, CommandSource /*source*/) { return NotHandled; }
    virtual Answer OnNotify(NMHDR& /*notification*/) { return NotHandled; }
    virtual Answer OnContextMenu(HWND /*on*/, POINT /*screen*/) { return NotHandled; }

    // A menu waits for input.
    virtual Answer OnMenuIdle() { return NotHandled; }

    // The window takes no input while a dialog or message box is open that it owns, or one in front of that.
    virtual Answer OnEnable(bool /*enabled*/) { return NotHandled; }

    // The user begins to move or resize the window. The system's loop for this runs until the end.
    virtual Answer OnMoveBegins() { return NotHandled; }

    // A menu is about to be shown, or an accelerator is about to run one of its entries.
    virtual Answer OnInitMenuPopup(HMENU /*menu*/) { return NotHandled; }

    // The user has left the menu bar, with or without choosing an entry.
    virtual Answer OnMenuBarLeft() { return NotHandled; }

    virtual Answer OnTimer(UINT_PTR /*id*/) { return NotHandled; }

    // The program's own messages, WM_APP and up.
    virtual Answer OnOwnMessage(UINT /*message*/, WPARAM, LPARAM) { return NotHandled; }

  private:
    static LRESULT CALLBACK WndProc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    static Window* Bind(HWND handle, const CREATESTRUCTA& creation) noexcept;

    Answer Dispatch(UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    Answer DispatchInput(UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    template<class Body>
    Answer Answered(const char* handler, Body&& body) noexcept {
        // A message whose handler failed counts as handled: the system's default, as for a close, may be
        // worse.
        Answer answer = Handled;
        Guarded(handler, [&] { answer = body(); });
        return answer;
    }

    const char* formName_;
    HWND handle_ = nullptr;
};

} // namespace quarn
