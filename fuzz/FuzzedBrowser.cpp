#include "fuzz/FuzzedBrowser.h"

#include "base/Conversions.h"
#include "fuzz/BrowserActions.h"
#include "fuzz/Require.h"
#include "support/clsAppLog.h"
#include "tests/fakes/IniText.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <utility>
#include <vector>

namespace quarn::fuzz {

namespace {

constexpr std::int32_t ServersAtStart = 5;

// A step ends after so many events, or it never would.
constexpr std::int32_t EventsOfAStep = 200'000;

// Nobody waits longer for a scan.
constexpr std::int32_t Patience = 20'000; // milliseconds

// Entries that one thing may write to the log, and what an entry may hold beside what came from outside.
constexpr std::int64_t EntriesOfAThing = 8;
constexpr std::int64_t LengthOfAnEntry = 400;

// MemoryProfiles reads the file again for every key of a game or MOD.
bool CountsFew(const std::string& definitions) {
    const auto isFew = [&](const char* key) {
        return LeadingInteger(IniValue(definitions, "General", key).value_or("0")) <= 12;
    };
    return isFew("GameNum") && isFew("MODNum");
}

std::vector<std::string> Block(int block) {
    std::vector<std::string> servers;
    for (int i = 1; i <= ServersAtStart; ++i)
        servers.push_back("127.0." + std::to_string(block) + "." + std::to_string(i) + ":27960");
    return servers;
}

// A wait that would never end is recorded by the fakes as a failed test.
bool AnyWaitWithoutEnd() {
    return ::testing::UnitTest::GetInstance()->ad_hoc_test_result().Failed();
}

} // namespace

FuzzedBrowser::FuzzedBrowser(const std::string& settings, const std::string& definitions) {
    int block = 11;
    for (const char* list : {"q3", "d3", "hl", "fav1"})
        PutList(list, Block(block++));
    fake.files.Put("C:\\Quarn\\countryip.dat", "1\r\n2130706432;2147483647;LO\r\n");
    if (!settings.empty())
        fake.files.Put("C:\\Quarn\\Quarn.ini", settings);
    if (!definitions.empty() && CountsFew(definitions))
        fake.files.Put("C:\\Quarn\\Games.ini", definitions);
    network.whenAsked = [this](const std::string&) {
        ++things_;
        if (nextReplies_.empty())
            return;
        Deliver(sckServer, std::move(nextReplies_.front()));
        nextReplies_.pop_front();
    };
    fake.prompts.whileOpen = [this] { BeforeBoxEnds(); };
}

bool FuzzedBrowser::UserCanAct() const {
    return !Ended() && !fake.prompts.IsOpen() && dialogs.open.empty();
}

std::int32_t FuzzedBrowser::AnyRow(std::int32_t number) {
    return RowCount() == 0 ? 0 : number % RowCount() + 1;
}

std::string FuzzedBrowser::AnyNode(std::int32_t number) {
    const TreeView& tree = Controls().trvGames;
    return tree.At(number % tree.Count() + 1).key;
}

void FuzzedBrowser::NoteStaleRows() {
    staleRows_ = true;
    staleList_.clear();
}

void FuzzedBrowser::PutFile(const std::string& path, std::string content) {
    bytes_ += static_cast<std::int64_t>(content.size());
    foreignFiles_.insert_or_assign(path, content);
    fake.files.Put(path, std::move(content));
}

void FuzzedBrowser::BeforeBoxEnds() {
    fake.prompts.yesNoAnswers.assign(1, answer);
    fake.prompts.textAnswers.assign(1, text);
    fake.prompts.fileAnswers.assign(1, answer ? "C:\\export.txt" : "");
    fake.prompts.folderAnswers.assign(1, answer ? "C:\\Arena" : "");
    fake.events.RunFor(std::exchange(boxOpenFor, 0));
}

// A scan whose timer another one has switched off inside it waits for that.
void FuzzedBrowser::StopWhenItTakesTooLong() {
    In(Patience, [this, step = step_] {
        if (Ended() || step != step_)
            return;
        if (UserCanAct())
            Stop();
        StopWhenItTakesTooLong();
    });
}

void FuzzedBrowser::Run(ByteScript& script) {
    if (!Start())
        return;
    while (!script.AtEnd() && !Ended())
        Step(script);
    if (!Ended())
        RequireSound();
    RequireEnd();
}

// "@" and a number in front of an action put it off, so that it comes in the middle of what follows.
void FuzzedBrowser::Step(ByteScript& script) {
    const bool later = script.Takes('@');
    const std::int32_t delay = later ? script.Number() * 10 : 0;
    const Action action = ReadAction(*this, script);
    if (!action)
        return;
    const auto act = [this, action] {
        if (Ended())
            return;
        ++things_;
        action();
    };
    if (later)
        return In(delay, act);
    fake.events.eventLimit = fake.events.eventsRun + EventsOfAStep;
    StopWhenItTakesTooLong();
    act();
    fake.events.DoEvents();
    ++step_;
    if (!Ended())
        RequireSound();
}

void FuzzedBrowser::RequireSound() {
    Require(!AnyWaitWithoutEnd(), "every wait ends");
    if (staleRows_ && staleList_.empty())
        staleList_ = Form().tree.ShownList();
    else if (staleRows_ && staleList_ != Form().tree.ShownList())
        staleRows_ = false;
    RequireRowsOfTheList();
    RequireBounds();
    RequireAtRest();
}

void FuzzedBrowser::RequireRowsOfTheList() {
    const ListView& list = Controls().lvwServers;
    std::set<std::int32_t> tags;
    for (std::int32_t row = 1; row <= list.RowCount(); ++row) {
        const std::string& tag = list.Row(row).main.tag;
        const std::int32_t index = ToLong(tag);
        Require(index >= 1 && std::to_string(index) == tag, "a row's tag is an index");
        if (staleRows_)
            continue;
        Require(program.Servers.Holds(index), "every row has a record");
        Require(tags.insert(index).second, "no record has two rows");
        const ServerRecord& server = program.Servers[index];
        Require(list.Cell(row, 1 + AddressColumn).text == server.Address + ":" + std::to_string(server.Port),
                "a row shows its record's address");
    }
    Require(list.SelectedCount() <= list.RowCount(), "no more rows are selected than there are");
}

void FuzzedBrowser::RequireBounds() {
    const std::string& history = program.AppLog->HistoryLog();
    const std::int64_t entries = std::count(history.begin(), history.end(), '\n');
    Require(entries <= EntriesOfAThing * (things_ + 4), "the log's entries are bounded by what happens");
    Require(static_cast<std::int64_t>(history.size()) <=
                LengthOfAnEntry * (entries + 1) + 2 * bytes_ * entries,
            "a log entry is short");

    const std::int64_t mostServers = ServersAtStart + things_ + bytes_;
    Require(program.Servers.HighestIndex() <= mostServers, "no more servers than came in");
    Require(RowCount() <= mostServers, "no more rows than servers that came in");
    for (std::int32_t i = 1; i <= program.Servers.HighestIndex(); ++i) {
        const ServerRecord& server = program.Servers[i];
        Require(static_cast<std::int64_t>(server.Variables.size()) <= 2 * bytes_ + 100 * things_,
                "variables are no longer than what came in");
        Require(server.PlayerList.HighestIndex() <= bytes_ + 64, "no more players than came in");
    }
}

// Between two steps nothing is at work.
void FuzzedBrowser::RequireAtRest() {
    const std::int32_t highest = program.Servers.HighestIndex();
    // A Half-Life master's reply may leave empty slots behind the last server counted.
    Require(program.ServerCount >= 0 && program.ServerCount <= highest + 1,
            "the count is at most one past the list");
    Require(program.CurrentGame == Form().tree.ShownList(), "the list in memory is the one shown");
    Require(staleRows_ || program.CurrentServer == 0 || program.Servers.Holds(program.CurrentServer),
            "the current server is in the list");
    Require(program.Servers[0].Name.empty() && program.Servers[0].Address.empty(), "slot 0 stays empty");
    Require(!Controls().tmrTimeout.Enabled(), "no scan, no timer");
    Require(Form().scan.QuerySentTick == 0, "no scan, no query");
    Require(!Controls().lvwServers.updatesLocked, "the list is painted");
    Require(window.destroyCalls == 0, "the window is there");
}

void FuzzedBrowser::RequireEnd() {
    if (!Ended()) {
        fake.files.ClearFaults();
        fake.files.freeBytes.reset();
        answer = false;
        Form().Unload();
        Require(LogFile() == std::vector<std::string>{"frmMain;Form_Unload;0"},
                "the log tells of a clean end");
    }
    Require(window.destroyCalls == 1, "the program ends once");
    Require(!AnyWaitWithoutEnd(), "every wait ends");
    RequireWholeFiles();
}

// A file that the program wrote has the lines that its first one counts.
void FuzzedBrowser::RequireWholeFiles() {
    for (const std::string& path : fake.files.Paths()) {
        if (path.find("\\servers-") == std::string::npos || !path.ends_with(".dat"))
            continue;
        const std::string content = fake.files.Get(path);
        if (const auto foreign = foreignFiles_.find(path);
            foreign != foreignFiles_.end() && foreign->second == content)
            continue;
        const std::int64_t entries = std::count(content.begin(), content.end(), '\n') - 1;
        Require(content.rfind(" " + std::to_string(entries) + "\r\n", 0) == 0, "a list file is whole");
        Require(content.ends_with("\r\n"), "a list file's last line is whole");
    }
}

} // namespace quarn::fuzz
