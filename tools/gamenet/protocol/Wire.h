#pragma once

// Writing numbers and terminated texts into a datagram.

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

namespace quarn::gamenet {

inline void PutByte(std::string& out, std::uint32_t value) {
    out += static_cast<char>(value & 255);
}

inline void PutLittle16(std::string& out, std::uint32_t value) {
    PutByte(out, value);
    PutByte(out, value >> 8);
}

inline void PutLittle32(std::string& out, std::uint32_t value) {
    PutLittle16(out, value);
    PutLittle16(out, value >> 16);
}

inline void PutBig16(std::string& out, std::uint32_t value) {
    PutByte(out, value >> 8);
    PutByte(out, value);
}

inline void PutBig32(std::string& out, std::uint32_t value) {
    PutBig16(out, value >> 16);
    PutBig16(out, value);
}

inline void PutFloat(std::string& out, float value) {
    PutLittle32(out, std::bit_cast<std::uint32_t>(value));
}

// The text and a NUL.
inline void PutText(std::string& out, std::string_view text) {
    out += text;
    out += '\0';
}

// The largest UDP payload over IPv4.
constexpr std::size_t LargestDatagram = 65507;

} // namespace quarn::gamenet
