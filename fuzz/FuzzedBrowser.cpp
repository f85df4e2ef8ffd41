#include "fuzz/FuzzedBrowser.h"

#include "fuzz/BrowserActions.h"
#include "fuzz/Require.h"
#include "support/clsAppLog.h"
#include "tests/fakes/IniText.h"
#include "tests/fakes/Invariants.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace quarn::fuzz {

namespace {

constexpr std::int32_t ServersAtStart = 5;

// A step that runs more events than this is endless.
constexpr std::int32_t EventsOfAStep = 200'000;

// A user who has waited this long for a scan stops it.
constexpr std::int32_t Patience = 20'000; // milliseconds

// The most log entries for one thing that happens, and the length of an entry without text from outside.
constexpr std::int64_t EntriesOfAThing = 8;
constexpr std::int64_t LengthOfAnEntry = 400;

// MemoryProfiles reads the file again for every key of a game or MOD.
bool CountsFew(const std::string& definitions) {
    const auto isFew = [&](const char* key) {
        return LeadingInteger(IniValue(definitions, "General", key).value_or("0")) <= 12;
    };
    return isFew("GameNum") && isFew("MODNum");
}

} // namespace

FuzzedBrowser::FuzzedBrowser(const std::string& settings, const std::string& definitions) {
    int block = 11;
    for (const char* list : {"q3", "d3", "hl", "fav1"})
        PutList(list, Block(block++, ServersAtStart));
    fake.files.Put("C:\\Quarn\\countryip.dat", "1\r\n2130706432;2147483647;LO\r\n");
    if (!settings.empty())
        fake.files.Put("C:\\Quarn\\Quarn.ini", settings);
    if (!definitions.empty() && CountsFew(definitions))
        fake.files.Put("C:\\Quarn\\Games.ini", definitions);
    network.whenAsked = [this](const std::string&) {
        ++things_;
        if (nextReplies_.empty())
            return;
        NextReply next = std::move(nextReplies_.front());
        nextReplies_.pop_front();
        Deliver(sckServer, std::move(next.datagram), next.milliseconds);
    };
    fake.prompts.whileOpen = [this] { BeforePromptEnds(); };
    dialogs.whileOpen = [this] { fake.events.RunFor(openFor); };
}

bool FuzzedBrowser::UserCanAct() const {
    return !Ended() && !fake.prompts.IsOpen() && dialogs.open.empty();
}

void FuzzedBrowser::NoteStaleRows() {
    staleRows_ = true;
    staleList_.clear();
    copies_ += RowCount(); // the most that may be added to a folder
}

void FuzzedBrowser::PutFile(const std::string& path, std::string content) {
    bytes_ += static_cast<std::int64_t>(content.size());
    foreignFiles_.insert_or_assign(path, content);
    fake.files.Put(path, std::move(content));
}

void FuzzedBrowser::BeforePromptEnds() {
    fake.prompts.yesNoAnswers.assign(1, answer);
    fake.prompts.textAnswers.assign(1, text);
    fake.prompts.fileAnswers.assign(1, answer ? "C:\\export.txt" : "");
    fake.prompts.folderAnswers.assign(1, answer ? "C:\\Arena" : "");
    fake.events.RunFor(std::exchange(openFor, 0));
}

// A scan whose timer was disabled by a nested scan waits for "stop". After "stop" a scan waits for the end of
// the time-out. That may take days, so the time-out is ended here.
void FuzzedBrowser::StopWhenItTakesTooLong() {
    In(Patience, [this, step = step_] {
        if (Ended() || step != step_)
            return;
        if (UserCanAct()) {
            Stop();
            Form().scan.tmrTimeout_Timer();
        }
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

// "@" and a number before an action delay it, so that it runs in the middle of the following ones.
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
    RequireEveryWaitEnds();
    if (staleRows_ && staleList_.empty())
        staleList_ = Form().tree.ShownList();
    else if (staleRows_ && staleList_ != Form().tree.ShownList())
        staleRows_ = false;
    const Rows rows = staleRows_ ? Rows::Stale : Rows::OfTheList;
    RequireNone(ViolationsOfRows(*this, rows));
    RequireBounds();
    RequireNone(ViolationsAtRest(*this, rows));
}

void FuzzedBrowser::RequireBounds() {
    const std::string& history = program.AppLog->HistoryLog();
    const std::int64_t entries = std::count(history.begin(), history.end(), '\n');
    Require(entries <= EntriesOfAThing * (things_ + 4), "the log's entries are bounded by what happens");
    Require(static_cast<std::int64_t>(history.size()) <=
                LengthOfAnEntry * (entries + 1) + 2 * bytes_ * entries,
            "a log entry is short");

    const std::int64_t mostServers = ServersAtStart + things_ + bytes_ + copies_;
    Require(program.Servers.HighestIndex() <= mostServers, "no more servers than came in");
    Require(RowCount() <= mostServers, "no more rows than servers that came in");
    for (std::int32_t i = 1; i <= program.Servers.HighestIndex(); ++i) {
        const ServerRecord& server = program.Servers[i];
        Require(static_cast<std::int64_t>(server.Variables.size()) <= 2 * bytes_ + 100 * things_,
                "variables are no longer than what came in");
        Require(server.PlayerList.HighestIndex() <= bytes_ + 64, "no more players than came in");
    }
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
    RequireEveryWaitEnds();
    RequireNone(ViolationsOfListFiles(fake.files, [this](const std::string& path) {
        const auto foreign = foreignFiles_.find(path);
        return foreign != foreignFiles_.end() && foreign->second == fake.files.Get(path);
    }));
}

} // namespace quarn::fuzz
