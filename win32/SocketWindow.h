#pragma once

// The invisible window to which sockets post their messages. Sockets that are opened in great numbers share
// one, because the system takes milliseconds to make a window. Belongs to the thread that made it.
//
// A message can outlive the socket it is about. So each opening of a socket gets a message number of its own,
// and a message under a number that was released is dropped.

#include "win32/MessageWindow.h"

#include <functional>
#include <unordered_map>

namespace quarn {

class SocketWindow {
  public:
    using Receiver = std::function<void()>;

    SocketWindow();
    SocketWindow(const SocketWindow&) = delete;
    SocketWindow& operator=(const SocketWindow&) = delete;

    HWND Handle() const noexcept { return window_.Handle(); }

    // A message number for this receiver, which is called for each message under it until Release. The
    // receiver may release its own number and register others.
    UINT Register(Receiver receiver);
    void Release(UINT message) noexcept { receivers_.erase(message); }

  private:
    void Receive(UINT message);

    std::unordered_map<UINT, Receiver> receivers_; // by message number
    MessageWindow window_;
};

} // namespace quarn
