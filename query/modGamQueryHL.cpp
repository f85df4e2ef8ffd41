// Half-Life engine: three kinds of reply, distinguished by the character after four 0xFF.

#include "query/modGamQuery.h"

#include "core/modStringHelper.h"
#include "query/StatusFields.h"
#include "query/TextCursor.h"
#include "support/Trap.h"

namespace quarn {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view Nul = "\0"sv;

constexpr std::size_t KindPosition = 4;
constexpr std::size_t FirstPlayerPosition = 7; // after kind, player count and the first player's index
constexpr std::size_t MinPlayerLength = 5;
constexpr std::size_t ScoreLength = 4;
constexpr std::size_t TimeAndIndexLength = 5;

std::int32_t CodeOfFirst(std::string_view text) {
    if (text.empty())
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    return static_cast<unsigned char>(text.front());
}

// Error 9 for an index outside the list.
void RequireServer(const ProgramState& program, std::int32_t index) {
    static_cast<void>(program.Servers[index]);
}

void ParseHLCSInfo(ProgramState& program, std::string_view data, std::int32_t index) {
    clsAppLog& log = *program.AppLog;
    Trapped(log, "modGamQuery", "ParseHLCSInfo", OnError::LogUncounted, [&] {
        RequireServer(program, index);
        TextCursor cursor(log, data);
        cursor.Extract(Nul); // header and server address
        const std::string_view name = cursor.Extract(Nul);
        const std::string_view map = cursor.Extract(Nul);
        const std::string_view modName = cursor.Extract(Nul);
        cursor.Drop(1);

        ServerRecord& server = program.Servers[index];
        server.Name = name;
        server.Map = map;
        server.ModName = modName;
        server.MaxPlayers = CodeOfFirst(cursor.Rest());
    });
}

void ParseHLCSPlayers(ProgramState& program, std::string_view data, std::int32_t index) {
    clsAppLog& log = *program.AppLog;
    Trapped(log, "modGamQuery", "ParseHLCSPlayers", OnError::LogUncounted, [&] {
        RequireServer(program, index);
        OneBased<PlayerRecord> players;
        std::int32_t count = 0;
        const Finally store([&] {
            if (program.Servers.Holds(index))
                program.Servers[index].PlayerList = std::move(players);
        });
        TextCursor cursor(log, data);
        cursor.Drop(FirstPlayerPosition);
        while (cursor.Rest().size() >= MinPlayerLength && count < MaxPlayersOfAReply) {
            PlayerRecord& player = AddPlayer(players, count);
            player.Name = cursor.ExtractItem(Nul);
            player.Score = CodeOfFirst(cursor.Rest());
            cursor.Drop(ScoreLength + TimeAndIndexLength);
        }
        program.Servers[index].Players = count;
    });
}

// The rules are kept as received, including the header.
void AppendRules(ServerRecord& server, std::string_view data) {
    std::string rules(data);
    for (char& character : rules) // without a branch, so that it is vectorised
        character = character == '\0' ? '\\' : character;
    if (rules.ends_with('\\'))
        rules.pop_back();
    if (server.Variables.size() + rules.size() <= MaxVariablesLength)
        server.Variables += rules;
}

} // namespace

void ParseHLCSStatus(ProgramState& program, std::string_view data, std::int32_t index) {
    Trapped(*program.AppLog, "modGamQuery", "ParseHLCSStatus", OnError::LogUncounted, [&] {
        if (data.size() <= KindPosition)
            return;
        switch (LowerCase(data[KindPosition])) {
        case 'c':
            ParseHLCSInfo(program, data, index);
            break;
        case 'd':
            ParseHLCSPlayers(program, data, index);
            break;
        case 'e':
            AppendRules(program.Servers[index], data);
            break;
        default:
            break;
        }
    });
}

} // namespace quarn
