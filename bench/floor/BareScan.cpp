// The least that asking game servers one after the other takes: for each of them a socket, a question, a
// wait for the reply that nothing else interrupts, and the socket's end.
//
// usage: bare_scan ADDRESS:PORT...
// prints the microseconds that passed, those that the processor worked for us, and the number of replies

#ifdef _WIN32
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <arpa/inet.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>
#endif

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

constexpr char Question[] = "\xFF\xFF\xFF\xFFgetstatus";
constexpr int Patience = 2; // seconds

#ifdef _WIN32

using Socket = SOCKET;
using Length = int;

void StartSockets() {
    WSADATA data;
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0)
        std::exit(1);
}

void LimitWait(Socket opened) {
    const DWORD milliseconds = Patience * 1000;
    setsockopt(opened, SOL_SOCKET, SO_RCVTIMEO, reinterpret_cast<const char*>(&milliseconds),
               sizeof milliseconds);
}

void Close(Socket opened) {
    closesocket(opened);
}

std::int64_t ProcessorMicroseconds() {
    FILETIME created, exited, kernel, user;
    GetProcessTimes(GetCurrentProcess(), &created, &exited, &kernel, &user);
    const auto microseconds = [](const FILETIME& t) {
        return (std::int64_t{t.dwHighDateTime} << 32 | t.dwLowDateTime) / 10;
    };
    return microseconds(kernel) + microseconds(user);
}

#else

using Socket = int;
using Length = std::size_t;

void StartSockets() {}

void LimitWait(Socket opened) {
    const timeval limit{Patience, 0};
    setsockopt(opened, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
}

void Close(Socket opened) {
    close(opened);
}

std::int64_t ProcessorMicroseconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1'000'000 + usage.ru_utime.tv_usec +
           usage.ru_stime.tv_usec;
}

#endif

bool Parse(const std::string& text, sockaddr_in& end) {
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos)
        return false;
    end.sin_family = AF_INET;
    end.sin_port = htons(static_cast<std::uint16_t>(std::atoi(text.c_str() + colon + 1)));
    return inet_pton(AF_INET, text.substr(0, colon).c_str(), &end.sin_addr) == 1;
}

bool Ask(const sockaddr_in& end) {
    static std::array<char, 65536> reply;
    const Socket opened = socket(AF_INET, SOCK_DGRAM, 0);
    LimitWait(opened);
    const bool answered = connect(opened, reinterpret_cast<const sockaddr*>(&end), sizeof end) == 0 &&
                          send(opened, Question, static_cast<Length>(sizeof Question - 1), 0) > 0 &&
                          recv(opened, reply.data(), static_cast<Length>(reply.size()), 0) > 0;
    Close(opened);
    return answered;
}

} // namespace

int main(int count, char** arguments) {
    StartSockets();
    const auto start = std::chrono::steady_clock::now();
    const std::int64_t workedBefore = ProcessorMicroseconds();
    int replies = 0;
    for (int i = 1; i < count; ++i) {
        sockaddr_in end{};
        if (!Parse(arguments[i], end)) {
            std::fprintf(stderr, "no ADDRESS:PORT: %s\n", arguments[i]);
            return 2;
        }
        replies += Ask(end) ? 1 : 0;
    }
    const auto passed =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
    std::printf("%lld %lld %d\n", static_cast<long long>(passed.count()),
                static_cast<long long>(ProcessorMicroseconds() - workedBefore), replies);
    return 0;
}
