#pragma once

#include "win32/WindowsHeaders.h"

namespace quarn {

// Keeps the sockets library started, in a version that the owner requests. The library counts its users.
class WinsockSession {
  public:
    explicit WinsockSession(BYTE major, BYTE minor) noexcept {
        WSADATA ignored;
        started_ = WSAStartup(MAKEWORD(major, minor), &ignored) == 0;
    }
    WinsockSession(const WinsockSession&) = delete;
    WinsockSession& operator=(const WinsockSession&) = delete;
    ~WinsockSession() {
        if (started_)
            WSACleanup();
    }

    bool Started() const noexcept { return started_; }

  private:
    bool started_;
};

} // namespace quarn
