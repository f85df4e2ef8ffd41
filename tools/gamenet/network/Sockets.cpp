#include "tools/gamenet/network/Sockets.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <string>
#include <system_error>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/epoll.h>
#include <sys/resource.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace quarn::gamenet {
namespace {

[[noreturn]] void Fail(const std::string& what) {
    throw std::system_error(errno, std::generic_category(), what);
}

sockaddr_in SystemAddress(const Endpoint& endpoint) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(endpoint.address);
    address.sin_port = htons(endpoint.port);
    return address;
}

Endpoint EndpointOf(const sockaddr_in& address) {
    return {ntohl(address.sin_addr.s_addr), ntohs(address.sin_port)};
}

// The socket functions take every kind of address as this pointer type.
sockaddr* Generic(sockaddr_in& address) {
    return static_cast<sockaddr*>(static_cast<void*>(&address));
}

} // namespace

Descriptor::~Descriptor() {
    if (number_ >= 0)
        close(number_);
}

void AllowDescriptors(std::size_t count) {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0)
        Fail("cannot read the limit of open files");
    if (limit.rlim_cur >= count)
        return;
    limit.rlim_cur = count;
    limit.rlim_max = std::max<rlim_t>(limit.rlim_max, count);
    if (setrlimit(RLIMIT_NOFILE, &limit) != 0)
        Fail("cannot open " + std::to_string(count) + " files at once");
}

Descriptor BindUdp(const Endpoint& endpoint, std::string_view purpose) {
    const std::string text = "cannot bind " + EndpointText(endpoint) + " for " + std::string(purpose);
    Descriptor descriptor(socket(AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (descriptor.Get() < 0)
        Fail(text);
    sockaddr_in address = SystemAddress(endpoint);
    if (!IsLoopback(endpoint.address) || bind(descriptor.Get(), Generic(address), sizeof address) != 0)
        Fail(text);
    return descriptor;
}

Endpoint BoundEndpoint(const Descriptor& descriptor) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    if (getsockname(descriptor.Get(), Generic(address), &size) != 0)
        Fail("cannot read a socket's address");
    return EndpointOf(address);
}

std::optional<Received> ReceiveFrom(const Descriptor& descriptor, std::span<char> buffer) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    const ssize_t count =
        recvfrom(descriptor.Get(), buffer.data(), buffer.size(), 0, Generic(address), &size);
    if (count >= 0)
        return Received{static_cast<std::size_t>(count), EndpointOf(address)};
    if (errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR && errno != ECONNREFUSED)
        Fail("cannot receive");
    return {};
}

bool SendTo(const Descriptor& descriptor, const Endpoint& to, std::string_view bytes) {
    sockaddr_in address = SystemAddress(to);
    return sendto(descriptor.Get(), bytes.data(), bytes.size(), 0, Generic(address), sizeof address) >= 0;
}

Descriptor TerminationSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    if (sigprocmask(SIG_BLOCK, &signals, nullptr) != 0)
        Fail("cannot block signals");
    Descriptor descriptor(signalfd(-1, &signals, SFD_CLOEXEC));
    if (descriptor.Get() < 0)
        Fail("cannot watch signals");
    return descriptor;
}

Descriptor CreateTimer() {
    Descriptor timer(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC));
    if (timer.Get() < 0)
        Fail("cannot create a timer");
    return timer;
}

void SetTimer(const Descriptor& timer, std::optional<Clock::time_point> moment) {
    itimerspec alarm{}; // all zero stops the timer
    if (moment) {
        // steady_clock counts CLOCK_MONOTONIC here; a moment in the past makes the timer readable at once.
        const auto count = std::max<std::int64_t>(
            1, std::chrono::duration_cast<std::chrono::nanoseconds>(moment->time_since_epoch()).count());
        alarm.it_value.tv_sec = count / 1'000'000'000;
        alarm.it_value.tv_nsec = count % 1'000'000'000;
    }
    if (timerfd_settime(timer.Get(), TFD_TIMER_ABSTIME, &alarm, nullptr) != 0)
        Fail("cannot set a timer");
}

Poller::Poller() : epoll_(epoll_create1(EPOLL_CLOEXEC)) {
    if (epoll_.Get() < 0)
        Fail("cannot create a poller");
}

void Poller::Add(const Descriptor& descriptor, std::uint64_t token) {
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.u64 = token;
    if (epoll_ctl(epoll_.Get(), EPOLL_CTL_ADD, descriptor.Get(), &event) != 0)
        Fail("cannot watch a socket");
}

std::span<std::uint64_t> Poller::Wait(std::span<std::uint64_t> tokens) {
    std::array<epoll_event, 64> events{};
    const auto room = static_cast<int>(std::min(events.size(), tokens.size()));
    const int count = epoll_wait(epoll_.Get(), events.data(), room, -1);
    if (count < 0 && errno != EINTR)
        Fail("cannot wait");
    for (int at = 0; at < count; ++at)
        tokens[static_cast<std::size_t>(at)] = events[static_cast<std::size_t>(at)].data.u64;
    return tokens.first(static_cast<std::size_t>(std::max(count, 0)));
}

} // namespace quarn::gamenet
