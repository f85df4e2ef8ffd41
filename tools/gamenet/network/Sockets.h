#pragma once

// A thin layer over the operating system's sockets, timers and signals. Every failure throws
// std::system_error with a text that names the action.

#include "tools/gamenet/world/Endpoint.h"

#include <chrono>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

namespace quarn::gamenet {

// Owns a file descriptor.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor();

    int Get() const { return number_; }

  private:
    int number_ = -1;
};

// Raises this process's limit of open descriptors to at least `count`.
void AllowDescriptors(std::size_t count);

// A non-blocking UDP socket bound to this loopback endpoint; with port 0 the system chooses one. A port in
// use is an error: two networks must never answer for each other.
Descriptor BindUdp(const Endpoint& endpoint, std::string_view purpose);
Endpoint BoundEndpoint(const Descriptor& socket);

struct Received {
    std::size_t size = 0;
    Endpoint from;
};

// Nothing if no datagram is queued.
std::optional<Received> ReceiveFrom(const Descriptor& socket, std::span<char> buffer);

// False if the system did not accept the datagram.
bool SendTo(const Descriptor& socket, const Endpoint& to, std::string_view bytes);

// Blocks SIGINT and SIGTERM, which no longer end the process; readable once one of them has arrived.
Descriptor TerminationSignals();

using Clock = std::chrono::steady_clock;

Descriptor CreateTimer();

// The timer is readable from that moment on; never if there is no moment.
void SetTimer(const Descriptor& timer, std::optional<Clock::time_point> moment);

class Poller {
  public:
    Poller();
    // Wait reports `token` while this descriptor is readable.
    void Add(const Descriptor& descriptor, std::uint64_t token);
    // Waits until a descriptor is readable. Returns the part of `tokens` that was filled in.
    std::span<std::uint64_t> Wait(std::span<std::uint64_t> tokens);

  private:
    Descriptor epoll_;
};

} // namespace quarn::gamenet
