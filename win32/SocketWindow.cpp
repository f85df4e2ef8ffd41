#include "win32/SocketWindow.h"

#include <utility>

namespace quarn {

SocketWindow::SocketWindow() : window_([this](UINT message, WPARAM, LPARAM) { Receive(message); }) {}

UINT SocketWindow::Register(Receiver receiver) {
    UINT message = window_.NextMessage();
    while (receivers_.contains(message)) // of a socket that has been open since the numbers began again
        message = window_.NextMessage();
    receivers_.emplace(message, std::move(receiver));
    return message;
}

void SocketWindow::Receive(UINT message) {
    const auto found = receivers_.find(message);
    if (found == receivers_.end())
        return;
    const Receiver receiver = found->second; // it may release its number
    receiver();
}

} // namespace quarn
