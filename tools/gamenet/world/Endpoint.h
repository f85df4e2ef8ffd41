#pragma once

// A server's place on the emulated network: an IPv4 address and a UDP port, both in host order.
// The network lives on the loopback block alone; parsing refuses every other address.

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

namespace quarn::gamenet {

struct Endpoint {
    std::uint32_t address = 0;
    std::uint16_t port = 0;

    auto operator<=>(const Endpoint&) const = default;
};

bool IsLoopback(std::uint32_t address);

// "127.1.2.3". Throws BadSetting for anything that is not a dotted address inside 127.0.0.0/8.
std::uint32_t ParseLoopbackAddress(std::string_view text);

// "127.1.2.3:27960", port 1 to 65535. Throws BadSetting.
Endpoint ParseLoopbackEndpoint(std::string_view text);

std::string AddressText(std::uint32_t address);
std::string EndpointText(const Endpoint& endpoint);

// Whether the endpoint's six bytes in a list contain "EOT" or "EOF", which readers take for the end of a
// Quake III list.
bool LooksLikeEndMark(const Endpoint& endpoint);

} // namespace quarn::gamenet
