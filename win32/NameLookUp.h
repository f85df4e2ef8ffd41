#pragma once

// One host name's first IPv4 address, looked up by the system while this thread's events run; one look-up at
// a time. The answer arrives through the message loop of the thread that created the object.

#include "win32/MessageWindow.h"
#include "win32/WinsockSession.h"

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quarn {

class NameLookUp {
  public:
    // `error` is a Winsock error code, 0 when the address is known.
    using Answer = std::function<void(int error, in_addr address)>;

    // Requests this version of Windows Sockets.
    explicit NameLookUp(Answer answer, BYTE majorVersion = 2, BYTE minorVersion = 2);
    NameLookUp(const NameLookUp&) = delete;
    NameLookUp& operator=(const NameLookUp&) = delete;
    ~NameLookUp();

    // 0, or the Winsock error code of a look-up that could not start.
    int Start(const std::string& host);

    // Its answer will not arrive.
    void Cancel();

    bool Underway() const noexcept { return current_ != nullptr; }

  private:
    struct Request {
        UINT message;
        HANDLE handle;
        std::array<char, MAXGETHOSTSTRUCT> result;
    };

    void OnMessage(UINT message, WPARAM handle, int error);

    Answer answer_;
    WinsockSession winsock_;
    std::unique_ptr<Request> current_;

    // A request cannot be cancelled reliably: the system may be writing its result right now. A cancelled one
    // is kept until it reports.
    std::vector<std::unique_ptr<Request>> cancelled_;
    MessageWindow window_;
};

} // namespace quarn
