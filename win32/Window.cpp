#include "win32/Window.h"

#include "win32/SystemError.h"

#include <set>
#include <string>

namespace quarn {

namespace {

void RegisterOnce(const WNDCLASSEXA& description) {
    static std::set<std::string> registered;
    if (!registered.insert(description.lpszClassName).second)
        return;
    if (RegisterClassExA(&description) == 0)
        ThrowLastError();
}

} // namespace

Window::~Window() {
    if (handle_ == nullptr)
        return;
    // Disconnected first: the derived object is already destroyed, so no message of the destruction may reach
    // it.
    SetWindowLongPtrA(handle_, GWLP_USERDATA, 0);
    DestroyWindow(handle_);
}

void Window::Create(const Creation& creation) {
    WNDCLASSEXA description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = &WndProc;
    description.hInstance = GetModuleHandleA(nullptr);
    description.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    description.lpszClassName = creation.className;
    description.hIcon = creation.icon;
    description.hIconSm = creation.smallIcon;
    RegisterOnce(description);

    const RECT& bounds = creation.bounds;
    const HWND created =
        CreateWindowExA(creation.extendedStyle, creation.className, creation.caption, creation.style,
                        bounds.left, bounds.top, bounds.right - bounds.left, bounds.bottom - bounds.top,
                        creation.owner, creation.menu, description.hInstance, this);
    if (created == nullptr)
        ThrowLastError();
}

Window* Window::Bind(HWND handle, const CREATESTRUCTA& creation) noexcept {
    auto* window = static_cast<Window*>(creation.lpCreateParams);
    window->handle_ = handle;
    SetWindowLongPtrA(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(window));
    return window;
}

LRESULT CALLBACK Window::WndProc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    Window* const window = message == WM_NCCREATE
                               ? Bind(handle, *reinterpret_cast<const CREATESTRUCTA*>(lParam))
                               : reinterpret_cast<Window*>(GetWindowLongPtrA(handle, GWLP_USERDATA));
    if (window == nullptr)
        return DefWindowProcA(handle, message, wParam, lParam);

    const Answer answer = window->Dispatch(message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrA(handle, GWLP_USERDATA, 0);
        window->handle_ = nullptr;
    }
    return answer ? *answer : DefWindowProcA(handle, message, wParam, lParam);
}

Answer Window::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    switch (message) {
    case WM_CREATE:
        return Answered("OnCreate", [&] { return OnCreate(); });
    case WM_CLOSE:
        return Answered("OnClose", [&] { return OnClose(); });
    case WM_DESTROY:
        Guarded("OnDestroy", [&] { OnDestroy(); });
        return NotHandled;
    case WM_QUERYENDSESSION:
        return Answered("OnQueryEndSession", [&] { return OnQueryEndSession(); });
    case WM_ENDSESSION:
        return Answered("OnEndSession", [&] { return OnEndSession(wParam != FALSE); });
    case WM_SIZE:
        return Answered("OnSize", [&] { return OnSize(wParam); });
    case WM_GETMINMAXINFO:
        return Answered("OnSizeLimits", [&] { return OnSizeLimits(*reinterpret_cast<MINMAXINFO*>(lParam)); });
    case WM_DPICHANGED:
        return Answered("OnDpiChanged",
                        [&] { return OnDpiChanged(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam)); });
    case WM_SETTINGCHANGE:
        return Answered("OnSettingChanged", [&] { return OnSettingChanged(wParam); });
    case WM_THEMECHANGED:
        return Answered("OnThemeChanged", [&] { return OnThemeChanged(); });
    case WM_SYSCOLORCHANGE:
        return Answered("OnSystemColorsChanged", [&] { return OnSystemColorsChanged(); });
    default:
        return DispatchInput(message, wParam, lParam);
    }
}

Answer Window::DispatchInput(UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    switch (message) {
    case WM_ACTIVATE:
        return Answered("OnActivate",
                        [&] { return OnActivate(LOWORD(wParam) != WA_INACTIVE, HIWORD(wParam) != 0); });
    case WM_SETFOCUS:
        return Answered("OnSetFocus", [&] { return OnSetFocus(); });
    case WM_COMMAND:
        return Answered("OnCommand", [&] {
            const bool isAccelerator = HIWORD(wParam) == 1;
            return OnCommand(LOWORD(wParam), lParam != 0     ? CommandSource::Control
                                             : isAccelerator ? CommandSource::Accelerator
                                                             : CommandSource::Menu);
        });
    case WM_NOTIFY:
        return Answered("OnNotify", [&] { return OnNotify(*reinterpret_cast<NMHDR*>(lParam)); });
    case WM_CONTEXTMENU:
        return Answered("OnContextMenu", [&] {
            // Sign-extended: a monitor left of the first one has negative positions, and -1 means the
            // keyboard.
            const POINT screen = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
            return OnContextMenu(reinterpret_cast<HWND>(wParam), screen);
        });
    case WM_ENTERIDLE:
        return wParam != MSGF_MENU ? NotHandled : Answered("OnMenuIdle", [&] { return OnMenuIdle(); });
    case WM_ENABLE:
        return Answered("OnEnable", [&] { return OnEnable(wParam != FALSE); });
    case WM_ENTERSIZEMOVE:
        return Answered("OnMoveBegins", [&] { return OnMoveBegins(); });
    case WM_INITMENUPOPUP:
        return Answered("OnInitMenuPopup", [&] { return OnInitMenuPopup(reinterpret_cast<HMENU>(wParam)); });
    case WM_EXITMENULOOP:
        return wParam != FALSE ? NotHandled : Answered("OnMenuBarLeft", [&] { return OnMenuBarLeft(); });
    case WM_TIMER:
        return Answered("OnTimer", [&] { return OnTimer(wParam); });
    default:
        if (message < WM_APP)
            return NotHandled;
        return Answered("OnOwnMessage", [&] { return OnOwnMessage(message, wParam, lParam); });
    }
}

} // namespace quarn
