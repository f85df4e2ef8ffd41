#include "views/ListedAddresses.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ListedAddressesTest : public ::testing::Test {
  protected:
    // Appends servers at port 1 of these hosts and removes those that are known.
    void Arrive(const std::vector<std::string>& hosts) {
        const std::int32_t before = program.LastServerIndex();
        for (const std::string& host : hosts) {
            ServerRecord& server = program.AppendServer();
            server.Address = host;
            server.Port = 1;
        }
        addresses.RemoveKnown(program, before);
        EXPECT_EQ(program.ServerCount, program.Servers.HighestIndex());
    }
    std::vector<std::string> Hosts() {
        std::vector<std::string> hosts;
        for (std::int32_t index = 1; index <= program.LastServerIndex(); ++index)
            hosts.push_back(program.Servers[index].Address);
        return hosts;
    }

    ProgramState program;
    ListedAddresses addresses;
};

TEST_F(ListedAddressesTest, KeepsEachAddressOnceInItsOrder) {
    Arrive({"b", "a", "b", "", "a", "c"});
    EXPECT_THAT(Hosts(), ElementsAre("b", "a", "c"));
    Arrive({"c", "d", "b", "e", "d"});
    EXPECT_THAT(Hosts(), ElementsAre("b", "a", "c", "d", "e"));
    Arrive({"a", ""});
    EXPECT_THAT(Hosts(), ElementsAre("b", "a", "c", "d", "e"));
    Arrive({});
    EXPECT_THAT(Hosts(), ElementsAre("b", "a", "c", "d", "e"));
}

TEST_F(ListedAddressesTest, TellsPortsApart) {
    Arrive({"a", "b"});
    ServerRecord& server = program.AppendServer();
    server.Address = "a";
    server.Port = 2;
    addresses.RemoveKnown(program, 2);
    EXPECT_EQ(program.ServerCount, 3);
}

TEST_F(ListedAddressesTest, LeavesNothingOfNothing) {
    Arrive({"", ""});
    EXPECT_THAT(Hosts(), IsEmpty());
}

TEST_F(ListedAddressesTest, NoticesThatTheListWasChangedMeanwhile) {
    Arrive({"a", "b", "c"});
    program.Servers[2] = ServerRecord{};
    program.Servers[2].Address = "x"; // "b" was replaced, the last record is another one
    program.Servers[2].Port = 1;
    program.Servers.Resize(2);
    program.ServerCount = 2;
    Arrive({"b", "x", "c"});
    EXPECT_THAT(Hosts(), ElementsAre("a", "x", "b", "c"));
}

TEST_F(ListedAddressesTest, NoticesAnotherListOfTheSameLength) {
    Arrive({"a", "b"});
    program.Servers.Reset();
    program.ServerCount = 0;
    for (const char* host : {"c", "d"}) {
        ServerRecord& server = program.AppendServer();
        server.Address = host;
        server.Port = 1;
    }
    Arrive({"a", "c"});
    EXPECT_THAT(Hosts(), ElementsAre("c", "d", "a"));
}

} // namespace
} // namespace quarn
