#pragma once

// A UDP socket as the main window uses it: set the remote end, send, and receive an event for each datagram.
// It is never bound explicitly: the first send opens it on a local port that the system chooses. Datagrams
// have up to 65,507 bytes and are never cut. A host that refuses or vanishes is "no answer", not an error.

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
    // datagram is sent when the address is known; SendFailed reports a failure to resolve or to send. An
    // empty host or a port outside 1..65535 sends nothing.
    virtual void SendData(std::string_view datagram) = 0;

    // How many milliseconds ago the datagram of the DataArrival in hand was noticed (UdpSocketFactory).
    virtual std::int32_t ArrivalAge() const { return 0; }

    // The next datagram that has arrived, if any.
    virtual std::optional<std::string> GetData() = 0;

    // May take a while, during which events run; events of the closed socket are dropped.
    virtual void Close() = 0;

    std::string RemoteHost; // name or dotted address
    std::int32_t RemotePort = 0;

    // A datagram of this many bytes can be read with GetData.
    std::function<void(std::int32_t bytesTotal)> DataArrival;

    // A look-up or a send failed.
    std::function<void(const std::string& description)> SendFailed;
};

// Creates sockets for code that needs many.
class UdpSocketFactory {
  public:
    virtual ~UdpSocketFactory() = default;

    // A closed socket. It must not outlive the factory.
    virtual std::unique_ptr<UdpSocket> MakeSocket() = 0;

    // Notices the datagrams that have arrived at its sockets. Their events run later and tell their age. To
    // be called in the middle of work that holds events up, so that a ping holds as little as possible of it.
    virtual void NoteArrivals() {}

    // Runs the events of the datagrams that have arrived. To be called before a deadline is acted on: on a
    // busy machine a timer can have its turn before a datagram that arrived earlier.
    virtual void DeliverArrivals() {}
};

} // namespace quarn
