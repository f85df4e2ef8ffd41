#pragma once

// Keys that the forms react to. Their key codes equal their character codes.

namespace quarn {

inline constexpr int EnterKey = 13;
inline constexpr int EscapeKey = 27;

} // namespace quarn
