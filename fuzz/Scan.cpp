// Scans in both modes, and the ports of their queries: servers that answer in time, late, several times, with
// anything or not at all, while sockets run out and the user stops, deletes, sorts, filters, changes the list
// and scans again. No record gets another server's reply, every wait ends and every port is closed; and if
// the user does nothing, every honest server is shown with its own ping.
//
// The input: how many servers are queried at once, how many sockets there are, the game, the number of
// servers, a letter for each server (see Behaviors), and what happens during the scan: a delay and a letter
// of UserActions with its arguments, each.

#include "fuzz/ByteScript.h"
#include "fuzz/ReadArguments.h"
#include "fuzz/Require.h"
#include "query/QueryPorts.h"
#include "tests/fakes/Invariants.h"
#include "tests/fakes/UserActions.h"
#include "tools/gamenet/protocol/ServerReplies.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quarn::fuzz {

namespace {

using namespace std::string_literals;

constexpr std::int32_t MostServers = 12;
constexpr std::int32_t Timeout = 1000;    // milliseconds, the settings' default
constexpr std::int32_t Patience = 20'000; // milliseconds after which the user stops a scan
constexpr std::int32_t LatencyStep = 33;  // milliseconds
constexpr std::int32_t MostLatency = 31 * LatencyStep;

struct Game {
    const char* list;
    gamenet::Family family;
    int block; // of its servers' addresses
};

constexpr Game Games[] = {{"q3", gamenet::Family::Quake3, 11},
                          {"d3", gamenet::Family::Doom3, 12},
                          {"hl", gamenet::Family::HalfLife, 13}};

// Of UserActions: what the user does in the list and the tree, without dialogs.
constexpr std::string_view LettersDuringAScan = "asxdncroKmy";

class ScannedBrowser : public HeadlessBrowser {
  public:
    void Run(ByteScript& script);

  private:
    using Behavior = void (ScannedBrowser::*)(const SentDatagram&, std::int32_t latency);

    // What the servers answer to a request.
    void AnswerOnce(const SentDatagram& request, std::int32_t latency);
    void AnswerTwice(const SentDatagram& request, std::int32_t latency);
    void AnswerLate(const SentDatagram& request, std::int32_t latency);
    void AnswerShort(const SentDatagram& request, std::int32_t latency);
    void AnswerForeign(const SentDatagram& request, std::int32_t latency);
    void Flood(const SentDatagram& request, std::int32_t latency);
    void KeepSilent(const SentDatagram&, std::int32_t) {}

    void Prepare(ByteScript& script);
    void PutServer(const std::string& address, std::int32_t letter);
    void ReadUserActions(ByteScript& script);
    void StopInTime();
    void RequireOwnReplies();
    void RequireHonestRows();

    std::map<std::string, EmulatedServer> honest_;  // by address
    std::map<std::string, std::int32_t> latencies_; // of the servers that answer once and in time
    std::vector<std::string> liars_;                // whose replies are not their own
    bool userActs_ = false;
    bool socketsSuffice_ = false;
};

void ScannedBrowser::AnswerOnce(const SentDatagram& request, std::int32_t latency) {
    const EmulatedServer& server = honest_.at(request.address + ":" + std::to_string(request.port));
    if (auto reply = gamenet::ServerReply(server.family, server.status, request.bytes))
        request.socket->ReplyIn(latency, std::move(*reply));
}

void ScannedBrowser::AnswerTwice(const SentDatagram& request, std::int32_t latency) {
    AnswerOnce(request, latency);
    AnswerOnce(request, latency + 30);
}

void ScannedBrowser::AnswerLate(const SentDatagram& request, std::int32_t latency) {
    AnswerOnce(request, Timeout + latency);
}

void ScannedBrowser::AnswerShort(const SentDatagram& request, std::int32_t latency) {
    request.socket->ReplyIn(latency / 2, "\xFF\xFF");
    request.socket->ReplyIn(latency / 2, {});
    AnswerOnce(request, latency);
}

// As a server of another family, and under the name of another server.
void ScannedBrowser::AnswerForeign(const SentDatagram& request, std::int32_t latency) {
    for (const auto& [address, server] : honest_)
        if (auto reply = gamenet::ServerReply(server.family, server.status, request.bytes))
            request.socket->ReplyIn(latency, std::move(*reply));
    request.socket->ReplyIn(latency, "\xFF\xFF\xFF\xFFstatusResponse\n\\sv_hostname\\liar");
    request.socket->ReplyIn(latency, "\xFF\xFFinfoResponse\0\0\1\0si_name\0liar\0"s);
}

void ScannedBrowser::Flood(const SentDatagram& request, std::int32_t latency) {
    for (int i = 0; i <= QueryPorts::MostReplies; ++i)
        AnswerOnce(request, latency + i);
}

void ScannedBrowser::PutServer(const std::string& address, std::int32_t letter) {
    static constexpr Behavior Behaviors[] = {
        &ScannedBrowser::AnswerOnce,  &ScannedBrowser::AnswerOnce,    &ScannedBrowser::KeepSilent,
        &ScannedBrowser::AnswerTwice, &ScannedBrowser::AnswerLate,    &ScannedBrowser::AnswerShort,
        &ScannedBrowser::Flood,       &ScannedBrowser::AnswerForeign,
    };
    const Behavior behavior = Behaviors[letter % 8];
    const std::int32_t latency = letter / 8 * LatencyStep;
    if (behavior == &ScannedBrowser::AnswerOnce && latency < Timeout)
        latencies_[address] = latency;
    if (behavior == &ScannedBrowser::AnswerForeign)
        liars_.push_back(address);
    network.scripts[address] = [this, behavior, latency](const SentDatagram& request) {
        (this->*behavior)(request, latency);
    };
}

void ScannedBrowser::Prepare(ByteScript& script) {
    const std::int32_t atOnce = std::clamp(script.Number() - 1, 1, 64);
    sckServer.openLimit = script.Number() + 1;
    socketsSuffice_ = sckServer.openLimit > 2 * MostServers;
    const auto game = script.Number() % static_cast<std::int32_t>(std::size(Games));
    const std::int32_t count = script.Number() % MostServers + 1;
    for (const Game& each : Games) {
        PutList(each.list, Block(each.block, count));
        for (const std::string& address : Block(each.block, count))
            honest_[address] = MakeServer(each.family, "Live " + address, "map", "mod");
    }
    for (const std::string& address : Block(Games[game].block, count))
        PutServer(address, script.Number());
    fake.prompts.whileOpen = [this] { fake.prompts.yesNoAnswers.assign(1, true); };
    Set("Selection", "LastGame", Q3 + game);
    Require(Start(), "the program starts");
    Require(RowCount() == count, "the list is shown");
    program.Simultaneous = atOnce;
}

// A delay in hundredths of a second, a letter, and what the action's signature names.
void ScannedBrowser::ReadUserActions(ByteScript& script) {
    while (!script.AtEnd()) {
        const std::int32_t delay = script.Number() * 10;
        const char letter = script.Letter();
        const auto action = std::ranges::find(UserActions(), letter, &UserAction::letter);
        if (LettersDuringAScan.find(letter) == std::string_view::npos || action == UserActions().end())
            continue;
        const ActionArguments arguments = ReadArguments(action->signature, script);
        userActs_ = true;
        In(delay, [this, &run = action->run, arguments] { run(*this, arguments); });
    }
}

// A scan whose timer was disabled by a nested scan waits for "stop".
void ScannedBrowser::StopInTime() {
    In(Patience, [this] {
        Stop();
        StopInTime();
    });
}

void ScannedBrowser::RequireOwnReplies() {
    for (std::int32_t i = 1; i <= program.Servers.HighestIndex(); ++i) {
        const ServerRecord& server = program.Servers[i];
        const std::string address = server.Address + ":" + std::to_string(server.Port);
        const bool isHole = server.Address.empty(); // left by a deletion that a stale tag ended
        if (isHole || std::ranges::find(liars_, address) != liars_.end())
            continue;
        Require(server.Name == "Live " + address || server.Name.starts_with("Server "),
                "no record holds another server's reply");
        Require(server.Ping >= 0 && server.Ping <= Timeout + MostLatency, "pings are those of one query");
    }
}

void ScannedBrowser::RequireHonestRows() {
    for (std::int32_t i = 1; i <= program.Servers.HighestIndex(); ++i) {
        const ServerRecord& server = program.Servers[i];
        const auto honest = latencies_.find(server.Address + ":" + std::to_string(server.Port));
        if (honest == latencies_.end())
            continue;
        Require(server.Name == "Live " + honest->first, "an honest server is shown");
        Require(server.Ping == honest->second, "with its own ping");
    }
}

void ScannedBrowser::Run(ByteScript& script) {
    Prepare(script);
    ReadUserActions(script);
    StopInTime();
    fake.events.eventLimit = fake.events.eventsRun + 200'000;
    RefreshAll();
    fake.events.RunFor(256 * 10);    // until the user's last action
    Stop();                          // a scan that began meanwhile
    fake.events.RunFor(2 * Timeout); // until the last late reply
    RequireEveryWaitEnds();
    Require(sckServer.OpenCount() == 0, "every port is closed");
    Require(!Controls().tmrTimeout.Enabled() && !Controls().tmrDeadlines.Enabled() &&
                !Controls().tmrPorts.Enabled(),
            "every timer is off");
    RequireOwnReplies();
    if (!userActs_ && socketsSuffice_)
        RequireHonestRows();
    RequireNone(ViolationsOfRows(*this, Rows::Stale));
    RequireNone(ViolationsAtRest(*this, Rows::Stale));
}

} // namespace

} // namespace quarn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quarn::fuzz;
    ByteScript script(data, size);
    ScannedBrowser().Run(script);
    return 0;
}
