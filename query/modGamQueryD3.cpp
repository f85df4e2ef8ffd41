// Doom 3 engine: header, version, then NUL-terminated keys and values up to an empty pair, then the players,
// each as client number, two bytes of ping, four bytes of rate and a NUL-terminated name. Client number 32
// (a blank) marks the end of the players.

#include "query/modGamQuery.h"

#include "base/Conversions.h"
#include "query/StatusFields.h"
#include "query/TextCursor.h"
#include "support/Trap.h"

#include <limits>

namespace quarn {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view Disconnect = "\xFF\xFF"
                                        "disconnect\0"sv;
constexpr std::string_view PairsMark = "\0\x01\0"sv; // the end of the protocol version, before the pairs
constexpr std::string_view Nul = "\0"sv;
constexpr std::string_view EndOfPairs = "\0\0"sv;
constexpr std::string_view NoPlayersMark = "\0 "sv;

constexpr std::size_t MinPlayerLength = 6;

constexpr StatusField Fields[] = {
    {"si_usepass",
     [](clsAppLog&, ServerRecord& server, std::string_view value) { server.Locked = ToByte(value); }},
    {"si_maxplayers",
     [](clsAppLog&, ServerRecord& server, std::string_view value) { server.MaxPlayers = ToByte(value); }},
    {"si_name", [](clsAppLog& log, ServerRecord& server,
                   std::string_view value) { server.Name = ClearName(log, value); }},
    {"si_map", [](clsAppLog&, ServerRecord& server, std::string_view value) { server.Map = value; }},
    {"gamename", [](clsAppLog&, ServerRecord& server, std::string_view value) { server.ModName = value; }},
};

enum class Players { Follow, None };

// The value of an unknown key is read as the next key. An empty value appends a second backslash.
Players ReadPairs(clsAppLog& log, ServerRecord& server, TextCursor& cursor) {
    std::string key;
    while (!cursor.StartsWith(EndOfPairs)) {
        LowerCaseInto(key, cursor.Extract(Nul));
        if (cursor.Failed())
            return Players::None;

        bool emptyValue = false;
        if (const StatusField* field = FindStatusField(Fields, key)) {
            field->store(log, server, cursor.Extract(Nul));
            if (cursor.Failed())
                return Players::None;
        } else {
            server.Variables.append(1, '\\').append(key);
            emptyValue = cursor.StartsWith(Nul);
            if (emptyValue) {
                cursor.Drop(1);
                server.Variables += '\\';
            }
        }

        if (cursor.StartsWith(NoPlayersMark))
            return Players::None;
        // If the last value was read as a key, the NUL just dropped was the first of the two that terminate
        // the pairs. One NUL remains, followed by a nonzero client number.
        if (emptyValue && cursor.StartsWith(Nul) && cursor.Rest().size() > 1)
            return Players::Follow;
    }
    return Players::Follow;
}

// High byte first and in 16-bit signed arithmetic, although the field is sent low byte first.
std::int32_t PingOf(std::string_view bytes) {
    const std::int32_t high = static_cast<unsigned char>(bytes[0]) * 256;
    if (high > std::numeric_limits<std::int16_t>::max())
        throw RunTimeError(ErrorNumber::Overflow);
    return high + static_cast<unsigned char>(bytes[1]);
}

void ReadPlayers(clsAppLog& log, ServerRecord& server, TextCursor& cursor) {
    std::int32_t count = 0;
    while (cursor.Rest().size() >= MinPlayerLength && count < MaxPlayersOfAReply) {
        cursor.Take(1); // client number
        PlayerRecord& player = AddPlayer(server.PlayerList, count);
        player.Ping = PingOf(cursor.Take(2));
        cursor.Take(4); // rate
        player.Name = ClearName(log, cursor.ExtractItem(Nul));
    }
    server.Players = count;
}

void ReadReply(clsAppLog& log, ServerRecord& server, std::string_view data) {
    const std::size_t mark = data.find(PairsMark);
    if (mark == std::string_view::npos)
        return;
    TextCursor cursor(log, data.substr(mark + PairsMark.size()));
    const Players players = ReadPairs(log, server, cursor);

    std::size_t endMark = EndOfPairs.size();
    if (server.Variables.ends_with('\\')) {
        server.Variables.pop_back();
        --endMark; // one of its NULs was consumed with the last empty value
    }
    if (players == Players::None)
        return;
    cursor.Drop(endMark);
    ReadPlayers(log, server, cursor);
}

} // namespace

void ParseD3EngineStatus(ProgramState& program, std::string_view data, std::int32_t index) {
    clsAppLog& log = *program.AppLog;
    Trapped(log, "modGamQuery", "ParseD3EngineStatus", OnError::LogUncounted, [&] {
        if (data == Disconnect)
            return;
        ReplaceStatus(program, index, [&](ServerRecord& server) { ReadReply(log, server, data); });
    });
}

} // namespace quarn
