#pragma once

// One host name's first IPv4 address, looked up by the system while this thread's events run; one look-up at
// a time. The answer comes by the message loop of the thread that made the object.

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

    // Asks for this version of Windows Sockets.
    explicit NameLookUp(Answer answer, BYTE majorVersion = 2, BYTE minorVersion = 2);
    NameLookUp(const NameLookUp&) = delete;
    NameLookUp& operator=(const NameLookUp&) = delete;
    ~NameLookUp();

    // 0, or the Winsock error code for which the look-up could not begin.
    int Start(const std::string& host);

    // Its answer will not come.
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

    // A request cannot be called back for certain: the system may be writing its result right now. What was
    // cancelled is kept until it reports.
    std::vector<std::unique_ptr<Request>> cancelled_;
    MessageWindow window_;
};

} // namespace quarn
