#include "tools/gamenet/world/Endpoint.h"

#include "tools/gamenet/world/Text.h"

namespace quarn::gamenet {

bool IsLoopback(std::uint32_t address) {
    return address >> 24 == 127;
}

std::uint32_t ParseLoopbackAddress(std::string_view text) {
    const std::vector<std::string> parts = SplitText(text, '.');
    if (parts.size() != 4)
        throw BadSetting("not a dotted address: " + std::string(text));
    std::uint32_t address = 0;
    for (const std::string& part : parts)
        address = address << 8 | static_cast<std::uint32_t>(ParseWhole(part, 0, 255));
    if (!IsLoopback(address))
        throw BadSetting("outside 127.0.0.0/8: " + std::string(text));
    return address;
}

Endpoint ParseLoopbackEndpoint(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        throw BadSetting("no port in the address: " + std::string(text));
    return {ParseLoopbackAddress(text.substr(0, colon)),
            static_cast<std::uint16_t>(ParseWhole(text.substr(colon + 1), 1, 65535))};
}

std::string AddressText(std::uint32_t address) {
    return std::to_string(address >> 24) + '.' + std::to_string(address >> 16 & 255) + '.' +
           std::to_string(address >> 8 & 255) + '.' + std::to_string(address & 255);
}

std::string EndpointText(const Endpoint& endpoint) {
    return AddressText(endpoint.address) + ':' + std::to_string(endpoint.port);
}

bool LooksLikeEndMark(const Endpoint& endpoint) {
    std::string bytes;
    for (const int shift : {24, 16, 8, 0})
        bytes += static_cast<char>(endpoint.address >> shift & 255);
    for (const int shift : {8, 0})
        bytes += static_cast<char>(endpoint.port >> shift & 255);
    return bytes.find("EOT") != std::string::npos || bytes.find("EOF") != std::string::npos;
}

} // namespace quarn::gamenet
