#pragma once

// The whole browser, driven by a fuzzer: a user who does one thing after another, a network that sends
// anything, a disk that fails, prompts that stay open while events run. The bounds of log and memory depend
// on what happens, so it is counted.

#include "fuzz/ByteScript.h"
#include "tests/fakes/HeadlessBrowser.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>

namespace quarn::fuzz {

class FuzzedBrowser : public HeadlessBrowser {
  public:
    // They replace the settings and definitions files if they are not empty.
    FuzzedBrowser(const std::string& settings, const std::string& definitions);

    // Runs the script to its end or the end of the program, with RequireSound after every step, and closes
    // the window.
    void Run(ByteScript& script);

    // Prompts and dialogs disable the window's mouse and keyboard.
    bool UserCanAct() const;

    // From now on rows may show records that have left the list, until another list is shown.
    void NoteStaleRows();

    // A datagram that arrives now, or that the next server to be asked sends after so many milliseconds.
    template<class Socket>
    void Deliver(Socket& socket, std::string datagram, std::int32_t milliseconds = 0);
    void AnswerNextWith(std::string datagram, std::int32_t milliseconds = 0) {
        nextReplies_.push_back({std::move(datagram), milliseconds});
    }

    // A file that the program did not write.
    void PutFile(const std::string& path, std::string content);

    bool answer = true;        // to every question
    std::string text = "Name"; // the answer to every prompt for a text
    std::int32_t openFor = 0;  // milliseconds that prompts and dialogs stay open

  private:
    void Step(ByteScript& script);
    void BeforePromptEnds();
    void StopWhenItTakesTooLong();
    void RequireSound();
    void RequireBounds();
    void RequireEnd();

    struct NextReply {
        std::string datagram;
        std::int32_t milliseconds;
    };
    std::deque<NextReply> nextReplies_;
    std::map<std::string, std::string> foreignFiles_; // content by path
    std::int32_t step_ = 0;
    std::int64_t things_ = 0; // that happened: actions, datagrams, requests
    std::int64_t bytes_ = 0;  // that came from outside
    std::int64_t copies_ = 0; // servers that the user may have added to folders
    bool staleRows_ = false;
    std::string staleList_;
};

template<class Socket>
void FuzzedBrowser::Deliver(Socket& socket, std::string datagram, std::int32_t milliseconds) {
    if (socket.CurrentState() == UdpSocket::State::Closed)
        return; // nothing arrives there
    ++things_;
    bytes_ += static_cast<std::int64_t>(datagram.size());
    socket.ReplyIn(milliseconds, std::move(datagram));
}

} // namespace quarn::fuzz
