#include "tests/fakes/Invariants.h"

#include "base/Conversions.h"

#include <algorithm>
#include <set>

namespace quarn {

namespace {

constexpr std::int64_t HandfulOfLines = 6;
constexpr std::int32_t ShortestServer = 6;
constexpr std::int32_t ShortestPlayer = 4;

// Collects the statements that do not hold.
class Statements {
  public:
    void Expect(bool holds, const char* statement) {
        if (!holds)
            violations_.emplace_back(statement);
    }
    Violations Broken() { return std::move(violations_); }

  private:
    Violations violations_;
};

std::int64_t LineCount(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

} // namespace

Violations ViolationsAfterDatagram(HeadlessProgram& headless, std::size_t datagramSize) {
    const ProgramState& program = headless.program;
    const auto size = static_cast<std::int32_t>(datagramSize);
    const std::int32_t mostServers = 1 + size / ShortestServer + 1;
    const ServerRecord& server = program.Servers[1];
    Statements statements;
    statements.Expect(LineCount(program.AppLog->HistoryLog()) <= HandfulOfLines,
                      "there are a handful of log entries");
    statements.Expect(headless.fake.prompts.shown.empty(), "no message box was shown");
    statements.Expect(program.Servers.HighestIndex() <= mostServers,
                      "there are no more slots than servers sent");
    statements.Expect(program.ServerCount <= mostServers, "no more servers are counted than were sent");
    statements.Expect(program.ServerCount <= program.Servers.HighestIndex() + 1,
                      "the count is at most one past the end");
    statements.Expect(program.PreviousServerCount <= program.ServerCount, "new servers follow the old ones");
    statements.Expect(server.PlayerList.HighestIndex() <= size / ShortestPlayer + 1,
                      "there are no more players than were sent");
    statements.Expect(server.Players <= server.PlayerList.HighestIndex(), "every counted player has a slot");
    statements.Expect(server.Variables.size() <= 2 * datagramSize,
                      "the variables are no longer than what was sent");
    return statements.Broken();
}

Violations ViolationsOfRows(HeadlessBrowser& browser, Rows rows) {
    const ListView& list = browser.Controls().lvwServers;
    Statements statements;
    std::set<std::int32_t> tags;
    for (std::int32_t row = 1; row <= list.RowCount(); ++row) {
        const std::string& tag = list.Row(row).main.tag;
        const std::int32_t index = ToLong(tag);
        statements.Expect(index >= 1 && std::to_string(index) == tag, "a row's tag is an index");
        if (rows == Rows::Stale)
            continue;
        statements.Expect(tags.insert(index).second, "no record has two rows");
        if (!browser.program.Servers.Holds(index)) {
            statements.Expect(false, "every row has a record");
            continue;
        }
        const ServerRecord& server = browser.program.Servers[index];
        statements.Expect(list.Cell(row, 1 + AddressColumn).text ==
                              server.Address + ":" + std::to_string(server.Port),
                          "a row shows the address of its record");
    }
    statements.Expect(list.SelectedCount() <= list.RowCount(), "no more rows are selected than exist");
    return statements.Broken();
}

Violations ViolationsAtRest(HeadlessBrowser& browser, Rows rows) {
    const ProgramState& program = browser.program;
    const std::int32_t highest = program.Servers.HighestIndex();
    Statements statements;
    // A Half-Life master's reply may leave empty slots after the last server counted.
    statements.Expect(program.ServerCount >= 0 && program.ServerCount <= highest + 1,
                      "the count is at most one past the list");
    statements.Expect(program.CurrentGame == browser.Form().tree.ShownList(),
                      "the list in memory is the one shown");
    statements.Expect(rows == Rows::Stale || program.CurrentServer == 0 ||
                          program.Servers.Holds(program.CurrentServer),
                      "the current server is in the list");
    statements.Expect(program.Servers[0].Name.empty() && program.Servers[0].Address.empty(),
                      "slot 0 stays empty");
    statements.Expect(!browser.Controls().tmrTimeout.Enabled(), "without a scan the timer is off");
    statements.Expect(browser.Form().scan.wait.QuerySentTick == 0, "without a scan no query is pending");
    statements.Expect(!browser.Controls().lvwServers.updatesLocked, "the list is painted");
    statements.Expect(browser.window.destroyCalls == 0, "the window exists");
    return statements.Broken();
}

Violations ViolationsOfListFiles(const MemoryFiles& files,
                                 const std::function<bool(const std::string& path)>& isForeign) {
    Statements statements;
    for (const std::string& path : files.Paths()) {
        if (path.find("\\servers-") == std::string::npos || !path.ends_with(".dat") ||
            (isForeign && isForeign(path)))
            continue;
        const std::string content = files.Get(path);
        const std::string count = " " + std::to_string(LineCount(content) - 1) + "\r\n";
        statements.Expect(content.starts_with(count), "a list file has as many entries as it counts");
        statements.Expect(content.ends_with("\r\n"), "the last line of a list file is complete");
    }
    return statements.Broken();
}

} // namespace quarn
