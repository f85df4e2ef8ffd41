// Quake 3 engine: header LF \key\value\key\value... LF, then a line `score ping "name"` for each player.

#include "query/modGamQuery.h"

#include "base/Conversions.h"
#include "query/StatusFields.h"
#include "query/TextCursor.h"
#include "support/Trap.h"

namespace quarn {

namespace {

constexpr std::string_view Disconnect = "\xFF\xFF\xFF\xFF"
                                        "disconnect";

void StoreLocked(clsAppLog&, ServerRecord& server, std::string_view value) {
    server.Locked = ToLong(value);
}

constexpr StatusField Fields[] = {
    {"sv_maxclients",
     [](clsAppLog&, ServerRecord& server, std::string_view value) { server.MaxPlayers = ToLong(value); }},
    {"sv_hostname", [](clsAppLog& log, ServerRecord& server,
                       std::string_view value) { server.Name = ClearName(log, value); }},
    {"mapname", [](clsAppLog&, ServerRecord& server, std::string_view value) { server.Map = value; }},
    {"gamename", [](clsAppLog&, ServerRecord& server, std::string_view value) { server.ModName = value; }},
    {"g_needpass", StoreLocked},
    {"pswrd", StoreLocked},
};

// The value of an unknown key is not consumed here; the next iteration reads it as a key and appends it.
void ReadInfo(clsAppLog& log, ServerRecord& server, std::string_view info) {
    std::string pairs(info.substr(info.empty() ? 0 : 1)); // without the leading backslash
    pairs += '\\';

    TextCursor cursor(log, pairs);
    std::string key;
    for (bool first = true; !cursor.Rest().empty(); first = false) {
        LowerCaseInto(key, cursor.Extract("\\"));
        if (cursor.Failed()) {
            // The rest is the lone backslash after the last key: its empty value.
            if (!first)
                server.Variables += '\\';
            return;
        }
        const StatusField* field = FindStatusField(Fields, key);
        if (!field) {
            server.Variables.append(1, '\\').append(key);
            continue;
        }
        field->store(log, server, cursor.Extract("\\"));
        if (cursor.Failed())
            return;
    }
}

void ReadPlayers(clsAppLog& log, ServerRecord& server, std::string_view lines) {
    TextCursor cursor(log, lines);
    std::int32_t count = 0;
    while (!cursor.Rest().empty() && count < MaxPlayersOfAReply) {
        PlayerRecord& player = AddPlayer(server.PlayerList, count);
        player.Score = ToInteger(cursor.Extract(" "));
        player.Ping = ToLong(cursor.Extract(" "));
        player.Name = ClearName(log, cursor.ExtractItem("\n"));
    }
    server.Players = count;
}

} // namespace

void ParseQ3EngineStatus(ProgramState& program, std::string_view data, std::int32_t index) {
    clsAppLog& log = *program.AppLog;
    Trapped(log, "modGamQuery", "ParseQ3EngineStatus", OnError::LogUncounted, [&] {
        if (data == Disconnect)
            return;
        ReplaceStatus(program, index, [&](ServerRecord& server) {
            TextCursor cursor(log, data);
            cursor.Extract("\n"); // the header
            ReadInfo(log, server, cursor.Extract("\n"));
            ReadPlayers(log, server, cursor.Rest());
        });
    });
}

} // namespace quarn
