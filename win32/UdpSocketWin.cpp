#include "win32/UdpSocketWin.h"

#include "win32/SystemError.h"

#include <utility>
#include <ws2tcpip.h>

namespace quarn {

namespace {

// More than any datagram, so that none is cut.
constexpr std::size_t BufferBytes = 65535;

// A master server sends its whole list at once, while this thread may be listing servers.
constexpr int SystemBufferBytes = 1 << 20;

// A query has up to three datagrams.
constexpr std::size_t MostWaiting = 8;

// Each refused datagram queues one WSAECONNRESET ahead of the next received datagram.
constexpr int MostRefusals = 16;

bool MeansNoAnswer(int error) noexcept {
    switch (error) {
    case WSAECONNRESET:
    case WSAECONNREFUSED:
    case WSAENETRESET:
    case WSAEHOSTUNREACH:
    case WSAENETUNREACH:
        return true;
    default:
        return false;
    }
}

} // namespace

UdpSocketWin::~UdpSocketWin() {
    window_->Release(socketMessage_);
}

UdpSocket::State UdpSocketWin::CurrentState() const {
    if (lookUp_ && lookUp_->Underway())
        return State::ResolvingHost;
    return socket_ ? State::Open : State::Closed;
}

void UdpSocketWin::SendData(std::string_view datagram) {
    RemoteEnd wanted{RemoteHost, RemotePort};
    if (wanted.host.empty() || wanted.port < 1 || wanted.port > 65535)
        return;
    if (wanted != remote_)
        Close();
    remote_ = std::move(wanted);

    in_addr address;
    if (socket_) {
        Transmit(datagram);
    } else if (inet_pton(AF_INET, remote_.host.c_str(), &address) == 1) {
        if (Open(address))
            Transmit(datagram);
    } else {
        if (waitingForAddress_.size() == MostWaiting)
            waitingForAddress_.erase(waitingForAddress_.begin());
        waitingForAddress_.emplace_back(datagram);
        if (!lookUp_)
            lookUp_.emplace([this](int error, in_addr found) { OnResolved(error, found); });
        if (!lookUp_->Underway()) {
            if (const int error = lookUp_->Start(remote_.host); error != 0)
                Fail(error);
        }
    }
}

std::optional<std::string> UdpSocketWin::GetData() {
    return announced_ ? std::exchange(announced_, std::nullopt) : Receive();
}

void UdpSocketWin::Close() {
    if (lookUp_)
        lookUp_->Cancel();
    waitingForAddress_.clear();
    announced_.reset();
    window_->Release(std::exchange(socketMessage_, 0));
    socket_.Reset();
}

void UdpSocketWin::OnReadable() {
    std::optional<std::string> datagram = Receive();
    if (!datagram || !DataArrival)
        return;

    // A handler that lets events run may meet the next datagram before it has taken its own.
    class Announcement {
      public:
        Announcement(UdpSocketWin& socket, std::optional<std::string> announced)
            : socket_(socket),
              generation_(socket.socketMessage_),
              outer_(std::exchange(socket.announced_, std::move(announced))) {}
        Announcement(const Announcement&) = delete;
        Announcement& operator=(const Announcement&) = delete;
        ~Announcement() {
            if (socket_.socketMessage_ == generation_)
                socket_.announced_ = std::move(outer_);
        }

      private:
        UdpSocketWin& socket_;
        UINT generation_;
        std::optional<std::string> outer_;
    };
    const auto bytes = static_cast<std::int32_t>(datagram->size());
    const Announcement announcement(*this, std::move(datagram));
    DataArrival(bytes);
}

void UdpSocketWin::OnResolved(int error, in_addr address) {
    if (error != 0) {
        Fail(error);
        return;
    }
    const std::vector<std::string> waiting = std::exchange(waitingForAddress_, {});
    if (!Open(address))
        return;
    for (const std::string& datagram : waiting)
        Transmit(datagram);
}

bool UdpSocketWin::Open(in_addr address) {
    SocketHandle opened(socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP));
    setsockopt(opened.Get(), SOL_SOCKET, SO_RCVBUF, reinterpret_cast<const char*>(&SystemBufferBytes),
               sizeof SystemBufferBytes);

    remoteAddress_ = {};
    remoteAddress_.sin_family = AF_INET;
    remoteAddress_.sin_port = htons(static_cast<u_short>(remote_.port));
    remoteAddress_.sin_addr = address;
    const UINT message = window_->Register([this](std::int32_t age) {
        arrivalAge_ = age;
        OnReadable();
    });
    if (!opened || WSAAsyncSelect(opened.Get(), window_->Handle(), message, FD_READ) != 0) {
        const int error = WSAGetLastError();
        window_->Release(message);
        Fail(error);
        return false;
    }
    socket_ = std::move(opened);
    socketMessage_ = message;
    return true;
}

void UdpSocketWin::Transmit(std::string_view datagram) {
    // A SendFailed handler may have closed the socket between two sends.
    if (!socket_)
        return;
    const auto once = [&] {
        // cppcheck-suppress invalidLifetime ; a datagram outlives its transmission
        const int sent = sendto(socket_.Get(), datagram.data(), static_cast<int>(datagram.size()), 0,
                                reinterpret_cast<const sockaddr*>(&remoteAddress_), sizeof remoteAddress_);
        return sent == SOCKET_ERROR ? WSAGetLastError() : 0;
    };
    // An earlier datagram's refusal is reported here, too; this one has not been sent then.
    int error = once();
    for (int i = 0; i < MostRefusals && MeansNoAnswer(error); ++i)
        error = once();
    if (error != 0)
        Fail(error);
}

std::optional<std::string> UdpSocketWin::Receive() {
    static std::vector<char> buffer(BufferBytes); // all sockets belong to one thread
    for (int i = 0; socket_ && i <= MostRefusals; ++i) {
        const int length = recv(socket_.Get(), buffer.data(), static_cast<int>(buffer.size()), 0);
        if (length != SOCKET_ERROR)
            return std::string(buffer.data(), length);
        if (!MeansNoAnswer(WSAGetLastError()))
            break;
    }
    return std::nullopt;
}

void UdpSocketWin::Fail(int error) {
    if (SendFailed && !MeansNoAnswer(error))
        SendFailed(remote_.host + ":" + std::to_string(remote_.port) + ": " + SystemErrorText(error));
}

} // namespace quarn
