#pragma once

// An invisible window that exists only to receive messages: those of a socket, a timer, a look-up. Each owner
// has one of its own, so that nobody's messages are mixed. Belongs to the thread that made it.
//
// Windows hands out posted messages before input, painting and timers. The program's own message loop sees to
// it that these get their turns; the loops of menus, dialogs and message boxes do not. A message that one of
// those loops hands out while the others wait is parked until a timer ticks, the last of them all.

#include "win32/Handles.h"

#include <deque>
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

    // Lives while the program's own message loop hands out the message.
    class OwnLoop {
      public:
        explicit OwnLoop(const MSG& message) noexcept;
        OwnLoop(const OwnLoop&) = delete;
        OwnLoop& operator=(const OwnLoop&) = delete;
        ~OwnLoop();

      private:
        const MSG* outer_;
    };

  private:
    struct Parked {
        UINT message;
        WPARAM wParam;
        LPARAM lParam;
    };

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    static bool IsOfOwnLoop(HWND window, UINT message) noexcept;
    static bool OthersWait() noexcept;

    void Receive(UINT message, WPARAM wParam, LPARAM lParam);
    void Park(const Parked& message);
    void RunParked();

    // How many windows have parked messages: then all of them park, or one after the other would be flooded.
    static int parkingWindows_;

    Handler handler_;
    std::deque<Parked> parked_;
    WindowHandle window_;
    UINT lastMessage_ = WM_APP;
};

} // namespace quarn
