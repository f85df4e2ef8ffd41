#include "win32/MessageWindow.h"

#include "win32/PerformanceCounter.h"
#include "win32/SystemError.h"
#include "win32/UncaughtErrors.h"

#include <utility>

namespace quarn {

namespace {

constexpr char ClassName[] = "QuarnMessages";

// The program's own messages end where the registered ones begin.
constexpr UINT LastOwnMessage = 0xBFFF;

// Timers of the window's owner have small numbers.
constexpr UINT_PTR ParkingTimer = ~UINT_PTR{0};

// How often messages from other loops are compared with other waiting ones, in microseconds.
constexpr std::int64_t ChecksApart = 20'000;

// The message that the program's own loop dispatches, until its window has received it.
const MSG* handedOut = nullptr;

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

int MessageWindow::parkingWindows_ = 0;

MessageWindow::OwnLoop::OwnLoop(const MSG& message) noexcept : outer_(std::exchange(handedOut, &message)) {}

MessageWindow::OwnLoop::~OwnLoop() {
    handedOut = outer_;
}

MessageWindow::MessageWindow(Handler handler) : handler_(std::move(handler)) {
    RegisterOnce(&Procedure);
    window_.Reset(CreateWindowExA(0, ClassName, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                  GetModuleHandleA(nullptr), nullptr));
    if (!window_)
        ThrowLastError();
    SetWindowLongPtrA(window_.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

MessageWindow::~MessageWindow() {
    // Disconnected first: messages sent by the destruction itself find no owner.
    SetWindowLongPtrA(window_.Get(), GWLP_USERDATA, 0);
    if (!parked_.empty())
        --parkingWindows_;
}

UINT MessageWindow::NextMessage() noexcept {
    lastMessage_ = lastMessage_ < LastOwnMessage ? lastMessage_ + 1 : WM_APP;
    return lastMessage_;
}

// A loop inside the message's handler may dispatch another message of the same number.
bool MessageWindow::IsOfOwnLoop(HWND window, UINT message) noexcept {
    if (handedOut == nullptr || handedOut->hwnd != window || handedOut->message != message)
        return false;
    handedOut = nullptr;
    return true;
}

bool MessageWindow::OthersWait() noexcept {
    static std::int64_t checkedAt = 0;
    const std::int64_t now = PerformanceMicroseconds();
    if (now - checkedAt < ChecksApart)
        return false;
    checkedAt = now;
    return HIWORD(GetQueueStatus(QS_INPUT | QS_PAINT | QS_TIMER)) != 0;
}

void MessageWindow::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_TIMER && wParam == ParkingTimer)
        return RunParked();
    const bool isOfOwnLoop = message != WM_TIMER && IsOfOwnLoop(window_.Get(), message);
    if (isOfOwnLoop)
        RunParked();
    else if (message != WM_TIMER && (parkingWindows_ > 0 || OthersWait()))
        return Park({message, wParam, lParam});
    handler_(message, wParam, lParam);
}

void MessageWindow::Park(const Parked& message) {
    parked_.push_back(message);
    if (parked_.size() > 1)
        return;
    ++parkingWindows_;
    SetTimer(window_.Get(), ParkingTimer, USER_TIMER_MINIMUM, nullptr);
}

// In the order of their arrival, even if a handler runs further messages.
void MessageWindow::RunParked() {
    while (!parked_.empty()) {
        const Parked next = parked_.front();
        parked_.pop_front();
        if (parked_.empty()) {
            --parkingWindows_;
            KillTimer(window_.Get(), ParkingTimer);
        }
        handler_(next.message, next.wParam, next.lParam);
    }
}

LRESULT CALLBACK MessageWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* self = reinterpret_cast<MessageWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (self == nullptr || (message != WM_TIMER && message < WM_APP))
        return DefWindowProcA(window, message, wParam, lParam);
    Contain(ClassName, "OnMessage", [&] { self->Receive(message, wParam, lParam); });
    return 0;
}

} // namespace quarn
