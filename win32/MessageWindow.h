#pragma once

// An invisible window that exists only to receive messages: those of a socket, a timer, a look-up. Each owner
// has one of its own, so that nobody's messages are mixed. Belongs to the thread that made it.

#include "win32/Handles.h"

#include <functional>

namespace quarn {

class MessageWindow {
  public:
    // Told of WM_TIMER and of the program's own messages, WM_APP and up. What it throws is reported and goes
    // no further.
    using Handler = std::function<void(UINT message, WPARAM wParam, LPARAM lParam)>;

    explicit MessageWindow(Handler handler);
    MessageWindow(const MessageWindow&) = delete;
    MessageWindow& operator=(const MessageWindow&) = delete;
    ~MessageWindow();

    HWND Handle() const noexcept { return window_.Get(); }

    // A number for messages to this window that was not given out for thousands of calls: what is posted
    // under it cannot be mistaken for something older that is still in the queue.
    UINT NextMessage() noexcept;

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    Handler handler_;
    WindowHandle window_;
    UINT lastMessage_ = WM_APP;
};

} // namespace quarn
