#pragma once

// The invisible window to which sockets post their messages. Sockets that are opened in large numbers share
// one, because the system takes milliseconds to create a window. It belongs to the thread that created it.
//
// A queued message can outlive its socket. So each opening of a socket gets its own message number, and a
// message with a released number is dropped.

#include "win32/MessageWindow.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <unordered_map>

namespace quarn {

class SocketWindow {
  public:
    // For a message that was noted before it is dispatched, `age` is the time since then in milliseconds.
    using Receiver = std::function<void(std::int32_t age)>;

    SocketWindow();
    SocketWindow(const SocketWindow&) = delete;
    SocketWindow& operator=(const SocketWindow&) = delete;

    HWND Handle() const noexcept { return window_.Handle(); }

    // A message number for this receiver, which is called for each message with it until Release. The
    // receiver may release its own number and register others.
    UINT Register(Receiver receiver);
    void Release(UINT message) noexcept { receivers_.erase(message); }

    // Notes when the messages in the queue were first seen. No receiver is called.
    void NoteWaiting();

    // Calls the receivers of the messages in the queue.
    void DeliverWaiting();

  private:
    struct Note {
        UINT message;
        std::int64_t time; // in microseconds
    };

    void Receive(UINT message);
    void Call(UINT message, std::int32_t age);

    std::unordered_map<UINT, Receiver> receivers_; // by message number
    std::deque<Note> noted_;                       // taken from the queue, but not dispatched yet
    MessageWindow window_;
};

} // namespace quarn
