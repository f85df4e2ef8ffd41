#pragma once

// The whole browser as a fuzzer drives it: a user who does one thing after another, a network that sends
// anything, a disk that fails, boxes that stay open while events run. What the input does is counted, as the
// bounds of log and memory are told in it.

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
    // They take the place of the settings and definitions files when they are not empty.
    FuzzedBrowser(const std::string& settings, const std::string& definitions);

    // Runs the script to its end or the program's, with RequireSound after every step, and closes the window.
    void Run(ByteScript& script);

    // A box or dialog takes the mouse and the keyboard away from the window.
    bool UserCanAct() const;

    // One of the rows, the tree's nodes; 0 and "" where there is none.
    std::int32_t AnyRow(std::int32_t number);
    std::string AnyNode(std::int32_t number);

    // From now on rows may show what is not in the list any more, until another list is shown.
    void NoteStaleRows();

    // A datagram that arrives now, or that the next server to be asked sends.
    template<class Socket>
    void Deliver(Socket& socket, std::string datagram);
    void AnswerNextWith(std::string datagram) { nextReplies_.push_back(std::move(datagram)); }

    // A file that comes from elsewhere.
    void PutFile(const std::string& path, std::string content);

    bool answer = true;          // to every question
    std::string text = "Name";   // into every box that asks for one
    std::int32_t boxOpenFor = 0; // milliseconds that a box stays open

  private:
    void Step(ByteScript& script);
    void BeforeBoxEnds();
    void StopWhenItTakesTooLong();
    void RequireSound();
    void RequireRowsOfTheList();
    void RequireBounds();
    void RequireAtRest();
    void RequireEnd();
    void RequireWholeFiles();

    std::deque<std::string> nextReplies_;
    std::map<std::string, std::string> foreignFiles_; // content by path
    std::int32_t step_ = 0;
    std::int64_t things_ = 0; // that happened: actions, datagrams, requests
    std::int64_t bytes_ = 0;  // that came from outside
    bool staleRows_ = false;
    std::string staleList_;
};

template<class Socket>
void FuzzedBrowser::Deliver(Socket& socket, std::string datagram) {
    if (socket.CurrentState() == UdpSocket::State::Closed)
        return; // nothing arrives there
    ++things_;
    bytes_ += static_cast<std::int64_t>(datagram.size());
    socket.ReplyIn(0, std::move(datagram));
}

} // namespace quarn::fuzz
