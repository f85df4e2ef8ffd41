#include "win32/desktop/HostNamesWin.h"

#include <utility>
#include <ws2tcpip.h>

namespace quarn {

namespace {

std::string Dotted(in_addr address) {
    char text[INET_ADDRSTRLEN] = "";
    inet_ntop(AF_INET, &address, text, sizeof text);
    return text;
}

} // namespace

void HostNamesWin::LookUp(const std::string& host, Answer answer) {
    answer_ = std::move(answer);
    if (!lookUp_)
        lookUp_ = std::make_unique<NameLookUp>(
            [this](int error, in_addr address) { Tell(error == 0 ? Dotted(address) : std::string()); }, 1, 1);
    // An empty name would mean this computer.
    if (host.empty() || lookUp_->Start(host) != 0)
        Tell({});
}

void HostNamesWin::Tell(const std::string& address) {
    if (const Answer asked = std::exchange(answer_, nullptr))
        asked(address);
}

void HostNamesWin::Cancel() {
    if (lookUp_)
        lookUp_->Cancel();
    answer_ = nullptr;
}

} // namespace quarn
