// Writing numbers and terminated texts into a datagram.
#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

namespace quarn::gamenet {

inline void putByte(std::string& out, std::uint32_t value) {
    out += static_cast<char>(value & 255);
}

inline void putLittle16(std::string& out, std::uint32_t value) {
    putByte(out, value);
    putByte(out, value >> 8);
}

inline void putLittle32(std::string& out, std::uint32_t value) {
    putLittle16(out, value);
    putLittle16(out, value >> 16);
}

inline void putBig16(std::string& out, std::uint32_t value) {
    putByte(out, value >> 8);
    putByte(out, value);
}

inline void putBig32(std::string& out, std::uint32_t value) {
    putBig16(out, value >> 16);
    putBig16(out, value);
}

inline void putFloat(std::string& out, float value) {
    putLittle32(out, std::bit_cast<std::uint32_t>(value));
}

// The text and a NUL.
inline void putText(std::string& out, std::string_view text) {
    out += text;
    out += '\0';
}

// The largest UDP payload over IPv4.
constexpr std::size_t largestDatagram = 65507;

} // namespace quarn::gamenet
