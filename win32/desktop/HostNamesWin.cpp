#include "win32/desktop/HostNamesWin.h"

#include "win32/WinsockSession.h"

namespace quarn {

std::string HostNamesWin::AddressOf(const std::string& host) {
    const WinsockSession winsock(1, 1);
    if (!winsock.Started() || host.empty()) // an empty name would stand for this computer
        return {};
    const hostent* found = gethostbyname(host.c_str());
    if (found == nullptr || found->h_addr_list[0] == nullptr)
        return {};
    std::string dotted;
    for (int i = 0; i < found->h_length; ++i) {
        if (i > 0)
            dotted += '.';
        dotted += std::to_string(static_cast<unsigned char>(found->h_addr_list[0][i]));
    }
    return dotted;
}

} // namespace quarn
