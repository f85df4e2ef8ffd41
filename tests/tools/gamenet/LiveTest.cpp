#include "tests/tools/gamenet/RunningProgram.h"

#include "tests/tools/gamenet/BrowserReading.h"
#include "tools/gamenet/Text.h"
#include "tools/gamenet/Wire.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>

#include <sys/wait.h>
#include <unistd.h>

namespace quarn::gamenet {
namespace {

using std::chrono::milliseconds;
using testing::HasSubstr;

const std::string quake3Request = "\xFF\xFF\xFF\xFFgetstatus";

Endpoint endpointOf(const TruthLine& line) {
    return parseLoopbackEndpoint(line.at("address") + ':' + line.at("port"));
}

Endpoint masterOf(const TruthLine& game) {
    return parseLoopbackEndpoint(game.at("MasterAddress") + ':' + game.at("MasterPort"));
}

std::vector<std::string> requestsOf(const std::string& family) {
    if (family == "q3")
        return {quake3Request};
    if (family == "d3")
        return {std::string("\xFF\xFFgetinfo\0\0\0\0", 13)};
    return {"\xFF\xFF\xFF\xFFinfo", "\xFF\xFF\xFF\xFFplayers", "\xFF\xFF\xFF\xFFrules"};
}

Reading readAnswers(const std::string& family, const std::vector<Answer>& answers) {
    if (family == "q3")
        return readQuake3Status(answers.at(0).bytes);
    if (family == "d3")
        return readDoom3Status(answers.at(0).bytes);
    Reading reading;
    for (const Answer& answer : answers)
        readHalfLife(answer.bytes, reading);
    return reading;
}

std::vector<Answer> askServer(const TruthLine& line) {
    Asker asker(endpointOf(line));
    const std::vector<std::string> requests = requestsOf(line.at("family"));
    for (const std::string& request : requests)
        asker.ask(request);
    std::vector<Answer> answers;
    while (answers.size() < requests.size()) {
        std::optional<Answer> answer = asker.answer();
        if (!answer)
            break;
        answers.push_back(*answer);
    }
    EXPECT_EQ(answers.size(), requests.size()) << line.at("address");
    return answers;
}

std::string joinedNames(const Reading& reading) {
    std::string names;
    for (const ReadPlayer& player : reading.players)
        names += (names.empty() ? "" : "|") + truthEscaped(player.name);
    return names;
}

TEST(LiveNetwork, everyServerOfTheDemoSaysWhatTheTruthFileSays) {
    RunningNetwork network({"--latency", "2-9"});
    const std::vector<TruthLine> truth = network.truth();
    EXPECT_EQ(truth.size(), 60U);
    for (const TruthLine& line : truth) {
        SCOPED_TRACE(line.at("game") + ' ' + line.at("address") + ' ' + line.at("name"));
        const std::vector<Answer> answers = askServer(line);
        // Three answers leave together, so the last question may wait less than the first.
        if (answers.size() == 1) {
            EXPECT_GE(answers[0].after,
                      milliseconds(std::stoi(line.at("latency"))) - std::chrono::microseconds(500));
        }
        const Reading reading = readAnswers(line.at("family"), answers);
        EXPECT_EQ(truthEscaped(reading.name), line.at("name"));
        EXPECT_EQ(reading.map, line.at("map"));
        EXPECT_EQ(reading.mod, line.at("mod"));
        EXPECT_EQ(std::to_string(reading.players.size()), line.at("players"));
        EXPECT_EQ(std::to_string(reading.maxPlayers), line.at("max"));
        EXPECT_EQ(std::to_string(reading.locked), line.at("locked"));
        EXPECT_EQ(joinedNames(reading), line.at("player_names"));
    }
}

TEST(LiveNetwork, mastersNameTheServersOfTheirGames) {
    RunningNetwork network({"--list-entries", "3"});
    std::map<std::string, std::set<std::string>> expected;
    for (const TruthLine& line : network.truth())
        expected[line.at("game")].insert(endpointText(endpointOf(line)));
    EXPECT_EQ(expected.size(), 8U);
    for (const auto& [shortName, servers] : expected) {
        const TruthLine game = network.game(shortName);
        Asker asker(masterOf(game));
        asker.ask(game.at("MasterPacket"));
        std::set<std::string> named;
        while (named.size() < servers.size()) {
            const std::optional<Answer> answer = asker.answer();
            ASSERT_TRUE(answer) << shortName;
            for (const Endpoint& server :
                 readMasterList(parseFamily(game.at("Engine")), game.at("MasterResponse"), answer->bytes))
                named.insert(endpointText(server));
        }
        EXPECT_EQ(named, servers);
    }
}

TEST(LiveNetwork, mastersNameListedServers) {
    TemporaryFolder folder;
    std::ofstream(folder.file("list")) << "oa 127.0.0.5:27960\n";
    RunningNetwork network({"--games", "oa", "--servers", "0", "--list", folder.file("list")});
    const TruthLine game = network.game("oa");
    Asker asker(masterOf(game));
    asker.ask(game.at("MasterPacket"));
    const std::optional<Answer> answer = asker.answer();
    ASSERT_TRUE(answer);
    EXPECT_EQ(readMasterList(Family::Quake3, game.at("MasterResponse"), answer->bytes),
              (std::vector<Endpoint>{{0x7F000005, 27960}}));
    EXPECT_EQ(network.truth().at(0).at("kind"), "listed");
}

TEST(LiveNetwork, countsWhatItSawAndEndsWellOnSigterm) {
    RunningNetwork network({"--games", "q3a", "--servers", "2", "--silent", "50", "--latency", "1"});
    std::vector<TruthLine> truth = network.truth();
    std::sort(truth.begin(), truth.end(),
              [](const auto& left, const auto& right) { return left.at("kind") > right.at("kind"); });
    ASSERT_EQ(truth.at(0).at("kind"), "silent");
    Asker silent(endpointOf(truth[0]));
    silent.ask(quake3Request);
    // The answer of the honest one, asked later, says that the silent one has been asked.
    askServer(truth.at(1));
    EXPECT_FALSE(silent.answer(milliseconds(0)));
    network.process().terminate();
    EXPECT_EQ(network.process().exitCode(), 0);
    const std::string stats = network.folder().read("stats");
    EXPECT_THAT(stats, HasSubstr("server_requests=2\n"));
    EXPECT_THAT(stats, HasSubstr("server_replies=1\n"));
    EXPECT_THAT(stats, HasSubstr("silent=1\n"));
}

TEST(LiveNetwork, nothingListensOnClosedServers) {
    RunningNetwork network({"--games", "q3a", "--servers", "1", "--closed", "100"});
    Asker asker(endpointOf(network.truth().at(0)));
    asker.ask(quake3Request);
    EXPECT_FALSE(asker.answer());
    EXPECT_TRUE(asker.refused());
}

TEST(LiveNetwork, lateLiarsAreLate) {
    RunningNetwork network({"--games", "d3", "--servers", "1", "--liars", "100", "--liar-kinds", "late",
                            "--late-by", "120", "--latency", "30"});
    const std::vector<Answer> answers = askServer(network.truth().at(0));
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_GE(answers[0].after, milliseconds(150) - std::chrono::microseconds(500));
}

TEST(LiveNetwork, halfLifeAnswersLeaveTogetherWhateverTheJitter) {
    RunningNetwork network({"--games", "cs", "--latency", "1", "--jitter", "40"});
    for (const TruthLine& line : network.truth()) {
        std::string types;
        for (const Answer& answer : askServer(line))
            types += answer.bytes.at(4);
        EXPECT_EQ(types, "CED");
    }
}

TEST(LiveNetwork, theLargestDatagramArrivesWhole) {
    RunningNetwork network(
        {"--games", "q3a", "--servers", "1", "--liars", "100", "--liar-kinds", "oversized"});
    const std::vector<Answer> answers = askServer(network.truth().at(0));
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].bytes.size(), largestDatagram);
}

TEST(LiveNetwork, theSameSeedIsTheSameNetwork) {
    std::string first;
    {
        RunningNetwork network({"--seed", "4711"});
        first = network.folder().read("write-truth");
        network.process().terminate();
        ASSERT_EQ(network.process().exitCode(), 0);
    }
    RunningNetwork network({"--seed", "4711"});
    EXPECT_EQ(network.folder().read("write-truth"), first);
}

TEST(LiveProgram, endsByItselfAfterItsDuration) {
    Process process({"--servers", "0", "--master-port", "0", "--duration", "0.05"});
    EXPECT_EQ(process.exitCode(), 0);
}

// In a process of its own: starts a network, names its process through the pipe, waits for the pipe's
// other end to close, and ends without the care that an owner takes of its child.
[[noreturn]] void beANegligentParent(int names, int untilClosed) {
    try {
        const auto* network = new RunningNetwork({"--games", "q3a"});
        const std::string pid = network->folder().read("ready");
        std::filesystem::remove_all(network->folder().file(""));
        char nothing = 0;
        if (write(names, pid.data(), pid.size()) > 0 && read(untilClosed, &nothing, 1) == 0)
            _exit(0);
    } catch (const std::exception&) {
    }
    _exit(1);
}

TEST(LiveProgram, endsWithItsParent) {
    int names[2];
    int leash[2];
    ASSERT_EQ(pipe(names), 0);
    ASSERT_EQ(pipe(leash), 0);
    const pid_t parent = fork();
    if (parent == 0) {
        close(leash[1]);
        beANegligentParent(names[1], leash[0]);
    }
    char text[32] = {};
    ASSERT_GT(read(names[0], text, sizeof text - 1), 0);
    const Descriptor network = watchProcess(static_cast<pid_t>(std::stol(text)));
    ASSERT_GE(network.get(), 0);
    EXPECT_FALSE(isReadable(network, milliseconds(0)));
    close(leash[1]);
    int status = -1;
    waitpid(parent, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(isReadable(network, patience));
}

TEST(LiveProgram, aTakenPortIsAnErrorThatNamesIt) {
    RunningNetwork network({"--games", "q3a", "--servers", "0"});
    const std::string port = network.game("q3a").at("MasterPort");
    Process second({"--games", "q3a", "--servers", "0", "--master-port", port, "--duration", "5"});
    EXPECT_EQ(second.exitCode(), 1);
}

TEST(LiveProgram, badArgumentsEndWithTwo) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--nonsense"}, {"--seed"}, {"--masters", "10.0.0.1"}, {"--loss", "200"}}) {
        Process process(arguments);
        EXPECT_EQ(process.exitCode(), 2) << arguments[0];
    }
}

TEST(LiveProgram, filesThatCannotBeWrittenEndWithOne) {
    Process process({"--servers", "0", "--master-port", "0", "--write-truth", "/nonexistent/truth"});
    EXPECT_EQ(process.exitCode(), 1);
}

} // namespace
} // namespace quarn::gamenet
