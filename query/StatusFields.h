#pragma once

// What the parsers of status replies share: known keys with the field that each fills, and players.

#include "base/Scope.h"
#include "core/modDefinitions.h"
#include "core/modStringHelper.h"
#include "query/modGamQuery.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace quarn {

// A key in lower case. Storing throws if a number is expected and the value is not one.
struct StatusField {
    std::string_view key;
    void (*store)(clsAppLog& log, ServerRecord& server, std::string_view value);
};

inline const StatusField* FindStatusField(std::span<const StatusField> fields, std::string_view key) {
    const auto found = std::ranges::find(fields, key, &StatusField::key);
    return found == fields.end() ? nullptr : &*found;
}

// Lower-cases the key into `buffer`, which the caller reuses for the next key.
inline const std::string& LowerCaseInto(std::string& buffer, std::string_view key) {
    buffer.assign(key);
    for (char& character : buffer)
        character = LowerCase(character);
    return buffer;
}

// Increments the player count and adds a slot.
inline PlayerRecord& AddPlayer(OneBased<PlayerRecord>& players, std::int32_t& count) {
    players.Resize(++count);
    return players[count];
}

// Runs a parse that fills all fields of a status reply. It works on a record of its own, which is stored by
// index at the end, also after an error, because logging and other code may run between two fields. Error 9
// for an index outside the list.
template<class Parse>
void ReplaceStatus(ProgramState& program, std::int32_t index, Parse&& parse) {
    ServerRecord parsed;
    parsed.Locked = program.Servers[index].Locked;
    ClearServerStatus(parsed);
    const Finally store([&] {
        if (!program.Servers.Holds(index))
            return;
        ServerRecord& server = program.Servers[index];
        server.Locked = parsed.Locked;
        server.MaxPlayers = parsed.MaxPlayers;
        server.Name = std::move(parsed.Name);
        server.Map = std::move(parsed.Map);
        server.ModName = std::move(parsed.ModName);
        server.Players = parsed.Players;
        server.PlayerList = std::move(parsed.PlayerList);
        server.Variables = std::move(parsed.Variables);
    });
    parse(parsed);
}

} // namespace quarn
