#include "launch/modMonitor.h"

#include "query/clsIPLocation.h"
#include "tests/fakes/Errors.h"
#include "tests/fakes/ProgramTest.h"

#include <gtest/gtest.h>
#include <string>

namespace quarn {
namespace {

constexpr const char* Velmar = "C:\\Quarn\\..\\Velmar\\Velmar.exe";

class modMonitorTest : public ProgramTest {
  protected:
    modMonitorTest() {
        program.Servers.Reset(1);
        program.ServerCount = 1;
        program.CurrentServer = 1;
        server().Address = "1.2.3.4";
        server().Port = 28960;
        fake.peers.versions[Velmar] = {2, 1, 5};
        fake.peers.openWindows = {"Velmar 215"};
    }

    ServerRecord& server() { return program.Servers[1]; }
    void Monitor() {
        MonitorWithVelmar(program, fake.desktop, AddressText(program.Servers[program.CurrentServer]));
    }
};

TEST_F(modMonitorTest, StartsVelmarFromTheNeighbouringFolder) {
    Monitor();
    Monitor(); // also when it runs already
    ASSERT_EQ(fake.shell.opened.size(), 2U);
    for (const Shell::Request& request : fake.shell.opened) {
        EXPECT_EQ(request.verb, "open");
        EXPECT_EQ(request.file, Velmar);
        EXPECT_EQ(request.parameters, "");
        EXPECT_EQ(request.folder, "C:\\Quarn\\");
        EXPECT_EQ(static_cast<int>(request.show), 1);
        EXPECT_TRUE(request.ownedByWindow);
    }
}

TEST_F(modMonitorTest, SendsTheServerToVelmarsWindow) {
    Monitor();
    ASSERT_EQ(fake.peers.received.size(), 1U);
    EXPECT_EQ(fake.peers.received[0].windowTitle, "Velmar 215");
    EXPECT_EQ(fake.peers.received[0].identifier, 3U);
    EXPECT_EQ(fake.peers.received[0].payload, std::string("ConGam:1.2.3.4:28960\0", 21));
}

TEST_F(modMonitorTest, SendsAddressAndPortAsTheyAreStored) {
    const struct {
        std::string address;
        std::int32_t port;
        std::string text;
    } cases[] = {
        {"10.0.0.1", 1, "ConGam:10.0.0.1:1"},
        {"", 0, "ConGam::0"},
        {"host.example", -5, "ConGam:host.example:-5"},
        {"a:b c\"\xff", 65536, "ConGam:a:b c\"\xff:65536"},
        {std::string(10'000, '1'), 2147483647, "ConGam:" + std::string(10'000, '1') + ":2147483647"},
    };
    for (const auto& c : cases) {
        fake.peers.received.clear();
        server().Address = c.address;
        server().Port = c.port;
        Monitor();
        ASSERT_EQ(fake.peers.received.size(), 1U);
        EXPECT_EQ(fake.peers.received[0].payload, c.text + '\0');
    }
}

TEST_F(modMonitorTest, LooksForTheWindowOfExactlyThisVersion) {
    const struct {
        FileVersion version;
        const char* title;
    } cases[] = {
        {{2, 1, 5}, "Velmar 215"}, {{0, 0, 0}, "Velmar 0"},         {{1, 0, 0}, "Velmar 100"},
        {{0, 9, 1}, "Velmar 91"},  {{10, 20, 30}, "Velmar 102030"},
    };
    for (const auto& c : cases) {
        fake.peers.searched.clear();
        fake.peers.versions[Velmar] = c.version;
        Monitor();
        EXPECT_EQ(fake.peers.searched, std::vector<std::string>{c.title});
    }
    EXPECT_EQ(fake.peers.received.size(), 1U) << "only 2.1.5 has a window";
}

TEST_F(modMonitorTest, SendsNothingToOtherWindows) {
    fake.peers.openWindows = {"Velmar",     "Velmar 21",   "Velmar 2155",
                              "velmar 215", "Velmar 215 ", "My Velmar 215"};
    Monitor();
    EXPECT_TRUE(fake.peers.received.empty());
    EXPECT_TRUE(fake.prompts.shown.empty());
}

TEST_F(modMonitorTest, AMissingVelmarIsNoError) {
    fake.peers.versions.clear();
    Monitor();
    fake.peers.unversioned.insert(Velmar);
    Monitor();
    fake.peers.unversioned.clear();
    fake.peers.versions[Velmar] = {65535, 65535, 65535}; // no number of 32 bits
    Monitor();
    EXPECT_EQ(fake.shell.opened.size(), 3U);
    EXPECT_TRUE(fake.peers.searched.empty());
    EXPECT_TRUE(fake.prompts.shown.empty());
    EXPECT_EQ(program.AppLog->ErrorCount(), 0);
}

TEST_F(modMonitorTest, StartsVelmarBeforeItLooksForTheWindow) {
    fake.shell.openFault = ErrorNumber::OutOfMemory;
    EXPECT_EQ(ErrorOf([&] { Monitor(); }), ErrorNumber::OutOfMemory);
    EXPECT_TRUE(fake.peers.searched.empty());
}

TEST_F(modMonitorTest, HandsOverTheServerThatWasSelectedWhenItBegan) {
    program.Servers.Reset(2);
    program.Servers[1].Address = "1.2.3.4";
    program.Servers[2].Address = "9.9.9.9";
    for (const std::int32_t meanwhile : {2, 0}) {
        program.CurrentServer = 1;
        fake.shell.whileOpening = [&] { program.CurrentServer = meanwhile; };
        Monitor();
        EXPECT_EQ(fake.peers.received.back().payload, std::string("ConGam:1.2.3.4:0\0", 17));
    }
}

// Velmar may be updated by its start, and its window then has the new version.
TEST_F(modMonitorTest, ReadsTheVersionAfterTheStart) {
    fake.shell.whileOpening = [this] { fake.peers.versions[Velmar] = {2, 1, 6}; };
    Monitor();
    EXPECT_EQ(fake.peers.searched, std::vector<std::string>{"Velmar 216"});
}

TEST_F(modMonitorTest, LooksForTheWindowOnce) {
    fake.peers.openWindows.clear();
    Monitor();
    EXPECT_EQ(fake.peers.searched, std::vector<std::string>{"Velmar 215"});
    EXPECT_TRUE(fake.peers.received.empty());
}

TEST_F(modMonitorTest, PropagatesOtherErrors) {
    program.CurrentServer = 2;
    EXPECT_EQ(ErrorOf([&] { Monitor(); }), ErrorNumber::SubscriptOutOfRange);
    EXPECT_TRUE(fake.peers.received.empty());
}

} // namespace
} // namespace quarn
