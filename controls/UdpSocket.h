#pragma once

// A UDP socket as the main window uses it: set the remote end, send, and be told of arriving datagrams.
// Never bound explicitly: the first send opens it on a local port of the system's choice. Datagrams carry up
// to 65,507 bytes and are never cut. A host that refuses or vanishes is "no answer", not an error.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace quarn {

class UdpSocket {
  public:
    enum class State { Closed = 0, Open = 1, ResolvingHost = 4, Closing = 8 };

    virtual ~UdpSocket() = default;

    virtual State CurrentState() const = 0;

    // Sends one datagram to RemoteHost and RemotePort. A host name is resolved while events run, and the
    // datagram goes out when the address is known; a failure to resolve or to send is logged by the owner of
    // the socket through SendFailed. An empty host or a port outside 1..65535 sends nothing.
    virtual void SendData(std::string_view datagram) = 0;

    // The next datagram that has arrived, if any.
    virtual std::optional<std::string> GetData() = 0;

    // May take a while during which events run; events of the closed socket are dropped.
    virtual void Close() = 0;

    std::string RemoteHost; // name or dotted address
    std::int32_t RemotePort = 0;

    // A datagram of so many bytes waits in GetData.
    std::function<void(std::int32_t bytesTotal)> DataArrival;

    // A look-up or a send failed.
    std::function<void(const std::string& description)> SendFailed;
};

// Where a program that needs many sockets gets them.
class UdpSocketFactory {
  public:
    virtual ~UdpSocketFactory() = default;

    // A closed socket. It must not outlive the factory.
    virtual std::unique_ptr<UdpSocket> MakeSocket() = 0;
};

} // namespace quarn
