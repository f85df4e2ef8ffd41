#include "win32/SocketWindow.h"

#include "win32/PerformanceCounter.h"

#include <utility>

namespace quarn {

namespace {

// Posted for each noted message; never used as a number.
constexpr UINT NotedWaits = WM_APP;
constexpr UINT FirstNumber = WM_APP + 1;
constexpr UINT LastNumber = 0xBFFF; // of a program's own messages

} // namespace

SocketWindow::SocketWindow() : window_([this](UINT message, WPARAM, LPARAM) { Receive(message); }) {}

UINT SocketWindow::Register(Receiver receiver) {
    UINT message = window_.NextMessage();
    // In use, by a socket that has been open since the numbers started again.
    while (message == NotedWaits || receivers_.contains(message))
        message = window_.NextMessage();
    receivers_.emplace(message, std::move(receiver));
    return message;
}

// Looks at posted messages only, because those that other threads have sent would run at once. Wine runs them
// nevertheless.
void SocketWindow::NoteWaiting() {
    constexpr UINT Flags = PM_REMOVE | PM_QS_POSTMESSAGE;
    MSG message;
    while (PeekMessageA(&message, Handle(), FirstNumber, LastNumber, Flags)) {
        noted_.push_back({message.message, PerformanceMicroseconds()});
        PostMessageA(Handle(), NotedWaits, 0, 0);
    }
}

void SocketWindow::DeliverWaiting() {
    NoteWaiting();
    for (std::size_t count = noted_.size(); count > 0; --count)
        Receive(NotedWaits); // does nothing where a receiver has let events run
}

void SocketWindow::Receive(UINT message) {
    if (message != NotedWaits)
        return Call(message, 0);
    if (noted_.empty())
        return;
    const Note note = noted_.front();
    noted_.pop_front();
    Call(note.message, static_cast<std::int32_t>((PerformanceMicroseconds() - note.time) / 1000));
}

void SocketWindow::Call(UINT message, std::int32_t age) {
    const auto found = receivers_.find(message);
    if (found == receivers_.end())
        return;
    const Receiver receiver = found->second; // it may release its number
    receiver(age);
}

} // namespace quarn
