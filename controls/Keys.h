#pragma once

// Keys that the forms react to, with the codes that they have as characters and as keys alike.

namespace quarn {

inline constexpr int EnterKey = 13;
inline constexpr int EscapeKey = 27;

} // namespace quarn
