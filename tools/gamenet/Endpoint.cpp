#include "tools/gamenet/Endpoint.h"

#include "tools/gamenet/Text.h"

namespace quarn::gamenet {

bool isLoopback(std::uint32_t address) {
    return address >> 24 == 127;
}

std::uint32_t parseLoopbackAddress(std::string_view text) {
    const std::vector<std::string> parts = splitText(text, '.');
    if (parts.size() != 4)
        throw BadSetting("not a dotted address: " + std::string(text));
    std::uint32_t address = 0;
    for (const std::string& part : parts)
        address = address << 8 | static_cast<std::uint32_t>(parseWhole(part, 0, 255));
    if (!isLoopback(address))
        throw BadSetting("outside 127.0.0.0/8: " + std::string(text));
    return address;
}

Endpoint parseLoopbackEndpoint(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos)
        throw BadSetting("no port in the address: " + std::string(text));
    return {parseLoopbackAddress(text.substr(0, colon)),
            static_cast<std::uint16_t>(parseWhole(text.substr(colon + 1), 1, 65535))};
}

std::string addressText(std::uint32_t address) {
    return std::to_string(address >> 24) + '.' + std::to_string(address >> 16 & 255) + '.' +
           std::to_string(address >> 8 & 255) + '.' + std::to_string(address & 255);
}

std::string endpointText(const Endpoint& endpoint) {
    return addressText(endpoint.address) + ':' + std::to_string(endpoint.port);
}

} // namespace quarn::gamenet
