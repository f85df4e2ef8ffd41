#pragma once

// What the parsers of status replies share: known keys with the field that each fills, and players.

#include "core/modDefinitions.h"
#include "core/modStringHelper.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace quarn {

// A key in lower case. Storing throws when the value is no number where one is due.
struct StatusField {
    std::string_view key;
    void (*store)(clsAppLog& log, ServerRecord& server, std::string_view value);
};

inline const StatusField* FindStatusField(std::span<const StatusField> fields, std::string_view key) {
    const auto found = std::ranges::find(fields, key, &StatusField::key);
    return found == fields.end() ? nullptr : &*found;
}

// A key as replies are searched for it, in a buffer that is used again for the next.
inline const std::string& LowerCaseInto(std::string& buffer, std::string_view key) {
    buffer.assign(key);
    for (char& character : buffer)
        character = LowerCase(character);
    return buffer;
}

// Counts one more player and gives him a slot.
inline PlayerRecord& AddPlayer(ServerRecord& server, std::int32_t& count) {
    server.PlayerList.Resize(++count);
    return server.PlayerList[count];
}

} // namespace quarn
