#include "tests/tools/gamenet/RunningProgram.h"

#include "tests/tools/gamenet/BrowserReading.h"
#include "tests/tools/gamenet/Samples.h"
#include "tools/gamenet/protocol/Wire.h"
#include "tools/gamenet/world/Text.h"

#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

#include <sys/wait.h>
#include <unistd.h>

namespace quarn::gamenet {
namespace {

using std::chrono::milliseconds;
using testing::HasSubstr;

const std::string Quake3Request = StatusRequests(Family::Quake3).front();

Endpoint EndpointOf(const TruthLine& line) {
    return ParseLoopbackEndpoint(line.at("address") + ':' + line.at("port"));
}

Endpoint MasterOf(const TruthLine& game) {
    return ParseLoopbackEndpoint(game.at("MasterAddress") + ':' + game.at("MasterPort"));
}

Reading ReadAnswers(Family family, const std::vector<Answer>& answers) {
    std::vector<std::string> replies;
    for (const Answer& answer : answers)
        replies.push_back(answer.bytes);
    return ReadReplies(family, replies);
}

std::vector<Answer> AskServer(const TruthLine& line) {
    Asker asker(EndpointOf(line));
    const std::vector<std::string> requests = StatusRequests(ParseFamily(line.at("family")));
    const Clock::time_point start = Clock::now(); // of the first request; all are answered in their order
    for (const std::string& request : requests)
        asker.Ask(request);
    std::vector<Answer> answers;
    while (answers.size() < requests.size()) {
        std::optional<Answer> answer = asker.AwaitAnswer();
        if (!answer)
            break;
        answer->after = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start);
        answers.push_back(*answer);
    }
    EXPECT_EQ(answers.size(), requests.size()) << line.at("address");
    return answers;
}

std::string JoinedNames(const Reading& reading) {
    std::string names;
    for (const ReadPlayer& player : reading.players)
        names += (names.empty() ? "" : "|") + TruthEscaped(player.name);
    return names;
}

TEST(LiveNetwork, EveryServerOfTheDemoRepliesWhatTheTruthFileSays) {
    RunningNetwork network({"--latency", "2-9"});
    const std::vector<TruthLine> truth = network.Truth();
    EXPECT_EQ(truth.size(), 60U);
    for (const TruthLine& line : truth) {
        SCOPED_TRACE(line.at("game") + ' ' + line.at("address") + ' ' + line.at("name"));
        const std::vector<Answer> answers = AskServer(line);
        for (const Answer& answer : answers)
            EXPECT_GE(answer.after,
                      milliseconds(std::stoi(line.at("latency"))) - std::chrono::microseconds(500));
        const Reading reading = ReadAnswers(ParseFamily(line.at("family")), answers);
        EXPECT_EQ(TruthEscaped(reading.name), line.at("name"));
        EXPECT_EQ(reading.map, line.at("map"));
        EXPECT_EQ(reading.mod, line.at("mod"));
        EXPECT_EQ(std::to_string(reading.players.size()), line.at("players"));
        EXPECT_EQ(std::to_string(reading.maxPlayers), line.at("max"));
        EXPECT_EQ(std::to_string(reading.locked), line.at("locked"));
        EXPECT_EQ(JoinedNames(reading), line.at("player_names"));
    }
}

TEST(LiveNetwork, MastersNameTheServersOfTheirGames) {
    RunningNetwork network({"--list-entries", "3"});
    std::map<std::string, std::set<std::string>> expected;
    for (const TruthLine& line : network.Truth())
        expected[line.at("game")].insert(EndpointText(EndpointOf(line)));
    EXPECT_EQ(expected.size(), 8U);
    for (const auto& [shortName, servers] : expected) {
        const TruthLine game = network.Game(shortName);
        Asker asker(MasterOf(game));
        asker.Ask(game.at("MasterPacket"));
        std::set<std::string> named;
        while (named.size() < servers.size()) {
            const std::optional<Answer> answer = asker.AwaitAnswer();
            ASSERT_TRUE(answer) << shortName;
            for (const Endpoint& server :
                 ReadMasterList(ParseFamily(game.at("Engine")), game.at("MasterResponse"), answer->bytes))
                named.insert(EndpointText(server));
        }
        EXPECT_EQ(named, servers);
    }
}

TEST(LiveNetwork, MastersNameListedServers) {
    TemporaryFolder folder;
    std::ofstream(folder.File("list")) << "oa 127.0.0.5:27960\n";
    RunningNetwork network({"--games", "oa", "--servers", "0", "--list", folder.File("list")});
    const TruthLine game = network.Game("oa");
    Asker asker(MasterOf(game));
    asker.Ask(game.at("MasterPacket"));
    const std::optional<Answer> answer = asker.AwaitAnswer();
    ASSERT_TRUE(answer);
    EXPECT_EQ(ReadMasterList(Family::Quake3, game.at("MasterResponse"), answer->bytes),
              (std::vector<Endpoint>{{0x7F000005, 27960}}));
    EXPECT_EQ(network.Truth().at(0).at("kind"), "listed");
}

TEST(LiveNetwork, CountsItsDatagramsAndExitsWithZeroOnSigterm) {
    RunningNetwork network({"--games", "q3a", "--servers", "2", "--silent", "50", "--latency", "1"});
    std::vector<TruthLine> truth = network.Truth();
    std::sort(truth.begin(), truth.end(),
              [](const auto& left, const auto& right) { return left.at("kind") > right.at("kind"); });
    ASSERT_EQ(truth.at(0).at("kind"), "silent");
    Asker silent(EndpointOf(truth[0]));
    silent.Ask(Quake3Request);
    // The honest server is asked later: once it has answered, the silent one has been asked too.
    AskServer(truth.at(1));
    EXPECT_FALSE(silent.AwaitAnswer(milliseconds(0)));
    network.Program().Terminate();
    EXPECT_EQ(network.Program().ExitCode(), 0);
    const std::string stats = network.Folder().Read("stats");
    EXPECT_THAT(stats, HasSubstr("server_requests=2\n"));
    EXPECT_THAT(stats, HasSubstr("server_replies=1\n"));
    EXPECT_THAT(stats, HasSubstr("silent=1\n"));
}

TEST(LiveNetwork, NothingListensOnClosedServers) {
    RunningNetwork network({"--games", "q3a", "--servers", "1", "--closed", "100"});
    Asker asker(EndpointOf(network.Truth().at(0)));
    asker.Ask(Quake3Request);
    EXPECT_FALSE(asker.AwaitAnswer());
    EXPECT_TRUE(asker.Refused());
}

TEST(LiveNetwork, LateLiarsAreLate) {
    RunningNetwork network({"--games", "d3", "--servers", "1", "--liars", "100", "--liar-kinds", "late",
                            "--late-by", "120", "--latency", "30"});
    const std::vector<Answer> answers = AskServer(network.Truth().at(0));
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_GE(answers[0].after, milliseconds(150) - std::chrono::microseconds(500));
}

std::string TypesOfReplies(const TruthLine& server) {
    std::string types;
    for (const Answer& answer : AskServer(server))
        types += answer.bytes.at(4);
    return types;
}

TEST(LiveNetwork, HalfLifeRepliesArriveInSeveralOrders) {
    RunningNetwork network({"--games", "cs", "--servers", "20", "--latency", "1"});
    std::set<std::string> orders;
    for (const TruthLine& line : network.Truth())
        orders.insert(TypesOfReplies(line));
    EXPECT_GT(orders.size(), 2U);
}

TEST(LiveNetwork, PlayersAndRulesOfHalfLifeServersFollowTheInfo) {
    RunningNetwork network({"--games", "cs", "--servers", "5", "--spread", "0", "--details-after", "30"});
    for (const TruthLine& line : network.Truth())
        EXPECT_EQ(TypesOfReplies(line), "CDE");
}

TEST(LiveNetwork, RecordsEveryRequestInItsOrder) {
    TemporaryFolder folder;
    const std::string path = folder.File("record");
    RunningNetwork network({"--games", "q3a", "--servers", "2", "--latency", "1", "--record", path,
                            "--asked-file", folder.File("asked")});
    EXPECT_EQ(folder.Read("asked"), "0");
    const TruthLine game = network.Game("q3a");
    std::string expected;
    for (const std::size_t index : {1, 0}) {
        const TruthLine line = network.Truth().at(index);
        AskServer(line);
        expected += "server q3a " + EndpointText(EndpointOf(line)) + " ffffffff676574737461747573\n";
    }
    EXPECT_EQ(folder.Read("asked"), "2");
    Asker asker(MasterOf(game));
    asker.Ask("nonsense");
    asker.Ask(game.at("MasterPacket"));
    ASSERT_TRUE(asker.AwaitAnswer());
    expected += "master q3a " + EndpointText(MasterOf(game)) + " 6e6f6e73656e7365\n";
    network.Program().Terminate();
    EXPECT_EQ(network.Program().ExitCode(), 0);
    EXPECT_TRUE(folder.Read("record").starts_with(expected)) << folder.Read("record");
    EXPECT_THAT(folder.Read("record"),
                HasSubstr("\nmaster q3a " + EndpointText(MasterOf(game)) + " ffffffff676574736572766572732"));
}

TEST(LiveNetwork, TheLargestDatagramArrivesWhole) {
    RunningNetwork network(
        {"--games", "q3a", "--servers", "1", "--liars", "100", "--liar-kinds", "oversized"});
    const std::vector<Answer> answers = AskServer(network.Truth().at(0));
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].bytes.size(), LargestDatagram);
}

TEST(LiveNetwork, TheSameSeedIsTheSameNetwork) {
    std::string first;
    {
        RunningNetwork network({"--seed", "4711"});
        first = network.Folder().Read("write-truth");
        network.Program().Terminate();
        ASSERT_EQ(network.Program().ExitCode(), 0);
    }
    RunningNetwork network({"--seed", "4711"});
    EXPECT_EQ(network.Folder().Read("write-truth"), first);
}

TEST(LiveProgram, EndsByItselfAfterItsDuration) {
    Process process({"--servers", "0", "--master-port", "0", "--duration", "0.05"});
    EXPECT_EQ(process.ExitCode(), 0);
}

// In a separate process: starts a network, writes its process id into the pipe, waits for the other end of
// the second pipe to close, and ends without ending its child.
[[noreturn]] void BeANegligentParent(int names, int untilClosed) {
    try {
        const auto* network = new RunningNetwork({"--games", "q3a"});
        const std::string pid = network->Folder().Read("ready");
        std::filesystem::remove_all(network->Folder().File(""));
        char nothing = 0;
        if (write(names, pid.data(), pid.size()) > 0 && read(untilClosed, &nothing, 1) == 0)
            _exit(0);
    } catch (const std::exception&) {
    }
    _exit(1);
}

TEST(LiveProgram, EndsWithItsParent) {
    int names[2];
    int leash[2];
    ASSERT_EQ(pipe(names), 0);
    ASSERT_EQ(pipe(leash), 0);
    const pid_t parent = fork();
    if (parent == 0) {
        close(leash[1]);
        BeANegligentParent(names[1], leash[0]);
    }
    char text[32] = {};
    ASSERT_GT(read(names[0], text, sizeof text - 1), 0);
    const Descriptor network = WatchProcess(static_cast<pid_t>(std::stol(text)));
    ASSERT_GE(network.Get(), 0);
    EXPECT_FALSE(IsReadable(network, milliseconds(0)));
    close(leash[1]);
    int status = -1;
    waitpid(parent, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(IsReadable(network, Patience));
}

TEST(LiveProgram, ATakenPortIsAnErrorThatNamesIt) {
    RunningNetwork network({"--games", "q3a", "--servers", "0"});
    const std::string port = network.Game("q3a").at("MasterPort");
    Process second({"--games", "q3a", "--servers", "0", "--master-port", port, "--duration", "5"});
    EXPECT_EQ(second.ExitCode(), 1);
}

TEST(LiveProgram, BadArgumentsEndWithTwo) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--nonsense"}, {"--seed"}, {"--masters", "10.0.0.1"}, {"--loss", "200"}}) {
        Process process(arguments);
        EXPECT_EQ(process.ExitCode(), 2) << arguments[0];
    }
}

TEST(LiveProgram, FilesThatCannotBeWrittenEndWithOne) {
    Process process({"--servers", "0", "--master-port", "0", "--write-truth", "/nonexistent/truth"});
    EXPECT_EQ(process.ExitCode(), 1);
}

} // namespace
} // namespace quarn::gamenet
