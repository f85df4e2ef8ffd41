#pragma once

#include "tests/win32/harness/Pumping.h"
#include "win32/Handles.h"
#include "win32/WinsockSession.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {

// The other end of a conversation: a UDP socket on a port of 127.0.0.1.
class LoopbackPeer {
  public:
    // Port 0: any free one.
    explicit LoopbackPeer(std::int32_t port = 0) : socket_(::socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP)) {
        sockaddr_in own = Loopback(port);
        EXPECT_EQ(bind(socket_.Get(), reinterpret_cast<sockaddr*>(&own), sizeof own), 0) << WSAGetLastError();
        const DWORD patience = PatienceMilliseconds;
        setsockopt(socket_.Get(), SOL_SOCKET, SO_RCVTIMEO, reinterpret_cast<const char*>(&patience),
                   sizeof patience);
    }

    std::int32_t Port() const {
        sockaddr_in own{};
        int length = sizeof own;
        getsockname(socket_.Get(), reinterpret_cast<sockaddr*>(&own), &length);
        return ntohs(own.sin_port);
    }

    // The next datagram; "(nothing)" when none comes. Its sender is whom Send sends to.
    std::string Receive() {
        std::vector<char> buffer(65535);
        int length = sizeof sender_;
        const int got = recvfrom(socket_.Get(), buffer.data(), static_cast<int>(buffer.size()), 0,
                                 reinterpret_cast<sockaddr*>(&sender_), &length);
        return got >= 0 ? std::string(buffer.data(), got) : "(nothing)";
    }

    // Whether a datagram waits at this moment.
    bool HasDatagram() const {
        u_long bytes = 0;
        fd_set readable;
        FD_ZERO(&readable);
        FD_SET(socket_.Get(), &readable);
        timeval now{};
        return select(0, &readable, nullptr, nullptr, &now) == 1 &&
               ioctlsocket(socket_.Get(), FIONREAD, &bytes) == 0;
    }

    void Send(const std::string& datagram) {
        EXPECT_EQ(sendto(socket_.Get(), datagram.data(), static_cast<int>(datagram.size()), 0,
                         reinterpret_cast<sockaddr*>(&sender_), sizeof sender_),
                  static_cast<int>(datagram.size()))
            << WSAGetLastError();
    }

    // To whom this other peer has heard last.
    void SendToSenderOf(const LoopbackPeer& other, const std::string& datagram) {
        sender_ = Loopback(other.SenderPort());
        Send(datagram);
    }

    u_short SenderPort() const { return ntohs(sender_.sin_port); }

  private:
    static sockaddr_in Loopback(std::int32_t port) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<u_short>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return address;
    }

    WinsockSession winsock_{2, 2};
    SocketHandle socket_;
    sockaddr_in sender_{};
};

} // namespace quarn
