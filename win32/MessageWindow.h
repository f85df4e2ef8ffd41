#pragma once

// An invisible window that only receives messages: those of a socket, a timer, or a look-up. Each owner has
// its own, so that their messages are not mixed. It belongs to the thread that created it.
//
// Windows delivers posted messages before input, painting and timers. The program's own message loop gives
// these their turns; the loops of menus, dialogs and message boxes do not. A message that one of those loops
// delivers while others wait is parked until a timer ticks, which comes last of all.

#include "win32/Handles.h"

#include <deque>
#include <functional>

namespace quarn {

class MessageWindow {
  public:
    // Receives WM_TIMER and the program's own messages, WM_APP and up. Errors that it throws are reported and
    // go no further.
    using Handler = std::function<void(UINT message, WPARAM wParam, LPARAM lParam)>;

    explicit MessageWindow(Handler handler);
    MessageWindow(const MessageWindow&) = delete;
    MessageWindow& operator=(const MessageWindow&) = delete;
    ~MessageWindow();

    HWND Handle() const noexcept { return window_.Get(); }

    // A number for messages to this window that was not used for thousands of calls: a message posted under
    // it cannot be mistaken for an older one that is still in the queue.
    UINT NextMessage() noexcept;

    // Exists while the program's own message loop dispatches the message.
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

    // Number of windows with parked messages: if there is one, all windows park, or one after the other would
    // be flooded.
    static int parkingWindows_;

    Handler handler_;
    std::deque<Parked> parked_;
    WindowHandle window_;
    UINT lastMessage_ = WM_APP;
};

} // namespace quarn
