#pragma once

// The little that is needed of the operating system's sockets, timers and signals. Every failure throws
// std::system_error with a text that says what was tried.

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

// Allows this process at least so many open descriptors.
void AllowDescriptors(std::size_t count);

// A non-blocking UDP socket on this loopback endpoint alone; port 0 lets the system choose. A port that
// is taken is an error: two networks must never answer for each other.
Descriptor BindUdp(const Endpoint& endpoint, std::string_view purpose);
Endpoint BoundEndpoint(const Descriptor& socket);

struct Received {
    std::size_t size = 0;
    Endpoint from;
};

// Nothing where no datagram waits.
std::optional<Received> ReceiveFrom(const Descriptor& socket, std::span<char> buffer);

// False where the system did not take the datagram.
bool SendTo(const Descriptor& socket, const Endpoint& to, std::string_view bytes);

// Readable when SIGINT or SIGTERM came, which end nothing by themselves from now on.
Descriptor TerminationSignals();

using Clock = std::chrono::steady_clock;

Descriptor CreateTimer();

// Readable from that moment on; without a moment never.
void SetTimer(const Descriptor& timer, std::optional<Clock::time_point> moment);

class Poller {
  public:
    Poller();
    // Reports this descriptor as `token` while it is readable.
    void Add(const Descriptor& descriptor, std::uint64_t token);
    // Waits until something is readable and fills in tokens; the result is a part of the argument.
    std::span<std::uint64_t> Wait(std::span<std::uint64_t> tokens);

  private:
    Descriptor epoll_;
};

} // namespace quarn::gamenet
