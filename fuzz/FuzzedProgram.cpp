#include "fuzz/FuzzedProgram.h"

#include "fuzz/Require.h"
#include "query/modGamQuery.h"
#include "support/clsAppLog.h"

#include <algorithm>

namespace quarn::fuzz {

namespace {

constexpr std::int64_t HandfulOfLines = 6;
constexpr std::int32_t ShortestServer = 6;
constexpr std::int32_t ShortestPlayer = 4;

} // namespace

FuzzedProgram::FuzzedProgram() {
    program.AppPath = "C:\\Quarn\\";
    program.AppLog = std::make_unique<clsAppLog>(fake.desktop, program.AppPath);
    program.Servers.Reset(1);
    program.ServerCount = 1;
}

void FuzzedProgram::RequireBounds(std::size_t datagramSize) {
    const std::string& history = program.AppLog->HistoryLog();
    Require(std::count(history.begin(), history.end(), '\n') <= HandfulOfLines, "a handful of log entries");
    Require(fake.prompts.shown.empty(), "nothing is shown");

    const auto size = static_cast<std::int32_t>(datagramSize);
    const std::int32_t mostServers = 1 + size / ShortestServer + 1;
    Require(program.Servers.HighestIndex() <= mostServers, "no more slots than servers sent");
    Require(program.ServerCount <= mostServers, "no more servers counted than sent");
    Require(program.ServerCount <= program.Servers.HighestIndex() + 1,
            "the count is at most one past the end");
    Require(program.PreviousServerCount <= program.ServerCount, "new servers come behind the old");

    const ServerRecord& server = program.Servers[1];
    Require(server.PlayerList.HighestIndex() <= size / ShortestPlayer + 1, "no more players than sent");
    Require(server.Players <= server.PlayerList.HighestIndex(), "every counted player has a slot");
    Require(server.Variables.size() <= 2 * datagramSize, "no more variables than sent");
}

void FuzzedProgram::RequireCleanName(std::string_view text) {
    const std::size_t logged = program.AppLog->HistoryLog().size();
    const std::string name = ClearName(*program.AppLog, text);
    Require(name.size() <= text.size(), "a cleared name is no longer");
    Require(name.find('"') == std::string::npos, "a cleared name holds no quote");
    Require(program.AppLog->HistoryLog().size() == logged, "clearing a name never fails");
}

} // namespace quarn::fuzz
