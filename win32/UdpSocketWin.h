#pragma once

// The UDP socket on Winsock 2: asynchronous, through messages to a window, so it belongs to the thread that
// created it and calls back from that thread's message loop. The handlers may send, read and close; they must
// not destroy the socket.
//
// It is not connected: it receives from any sender, because a host with several addresses answers from any of
// them.
//
// A queued message can outlive its socket, and Windows often reuses the socket's handle value. So every
// opening uses a message number of its own (win32/SocketWindow.h), and a message with an older number is
// dropped.

#include "controls/UdpSocket.h"
#include "win32/NameLookUp.h"
#include "win32/SocketWindow.h"

#include <memory>
#include <utility>
#include <vector>

namespace quarn {

class UdpSocketWin final : public UdpSocket {
  public:
    // Makes a window of its own, or uses one that other sockets use as well.
    UdpSocketWin() : UdpSocketWin(std::make_shared<SocketWindow>()) {}
    explicit UdpSocketWin(std::shared_ptr<SocketWindow> window) : window_(std::move(window)) {}
    UdpSocketWin(const UdpSocketWin&) = delete;
    UdpSocketWin& operator=(const UdpSocketWin&) = delete;
    ~UdpSocketWin() override;

    State CurrentState() const override;

    // A different remote end closes the socket and opens a new one. While a name is being resolved, the last
    // few datagrams wait.
    void SendData(std::string_view datagram) override;

    std::int32_t ArrivalAge() const override { return arrivalAge_; }

    // Inside DataArrival, the announced datagram; a handler that does not take it loses it. Otherwise the
    // next received datagram that has not been announced yet.
    std::optional<std::string> GetData() override;

    // Closes at once; datagrams under way in either direction are dropped.
    void Close() override;

  private:
    struct RemoteEnd {
        std::string host;
        std::int32_t port = 0;
        bool operator==(const RemoteEnd&) const = default;
    };

    void OnReadable();
    void OnResolved(int error, in_addr address);
    bool Open(in_addr address);
    void Transmit(std::string_view datagram);
    std::optional<std::string> Receive();
    void Fail(int error);

    WinsockSession winsock_{2, 2};
    RemoteEnd remote_;            // where the socket sends to, or the name being resolved
    sockaddr_in remoteAddress_{}; // the same, once it is resolved
    SocketHandle socket_;
    UINT socketMessage_ = 0; // 0: closed

    std::int32_t arrivalAge_ = 0;

    std::vector<std::string> waitingForAddress_;
    std::optional<std::string> announced_; // taken by the DataArrival that is running
    std::optional<NameLookUp> lookUp_;     // created for the first name; game servers are known by address
    std::shared_ptr<SocketWindow> window_;
};

// Makes sockets of this kind, which share a window.
class UdpSocketsWin final : public UdpSocketFactory {
  public:
    std::unique_ptr<UdpSocket> MakeSocket() override { return std::make_unique<UdpSocketWin>(window_); }
    void NoteArrivals() override { window_->NoteWaiting(); }
    void DeliverArrivals() override { window_->DeliverWaiting(); }

  private:
    std::shared_ptr<SocketWindow> window_ = std::make_shared<SocketWindow>();
};

} // namespace quarn
