#include "win32/MessageWindow.h"

#include "win32/SystemError.h"
#include "win32/UncaughtErrors.h"

#include <utility>

namespace quarn {

namespace {

constexpr char ClassName[] = "QuarnMessages";

// The program's own messages end where the registered ones begin.
constexpr UINT LastOwnMessage = 0xBFFF;

void RegisterOnce(WNDPROC procedure) {
    static const ATOM registered = [procedure] {
        WNDCLASSEXA description{};
        description.cbSize = sizeof description;
        description.lpfnWndProc = procedure;
        description.hInstance = GetModuleHandleA(nullptr);
        description.lpszClassName = ClassName;
        return RegisterClassExA(&description);
    }();
    if (registered == 0)
        ThrowLastError();
}

} // namespace

MessageWindow::MessageWindow(Handler handler) : handler_(std::move(handler)) {
    RegisterOnce(&Procedure);
    window_.Reset(CreateWindowExA(0, ClassName, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                  GetModuleHandleA(nullptr), nullptr));
    if (!window_)
        ThrowLastError();
    SetWindowLongPtrA(window_.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

MessageWindow::~MessageWindow() {
    // Unbound first: what the destruction itself sends finds no owner any more.
    SetWindowLongPtrA(window_.Get(), GWLP_USERDATA, 0);
}

UINT MessageWindow::NextMessage() noexcept {
    lastMessage_ = lastMessage_ < LastOwnMessage ? lastMessage_ + 1 : WM_APP;
    return lastMessage_;
}

LRESULT CALLBACK MessageWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* self = reinterpret_cast<MessageWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (self == nullptr || (message != WM_TIMER && message < WM_APP))
        return DefWindowProcA(window, message, wParam, lParam);
    Contain(ClassName, "OnMessage", [&] { self->handler_(message, wParam, lParam); });
    return 0;
}

} // namespace quarn
