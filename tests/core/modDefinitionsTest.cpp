#include "core/modDefinitions.h"

#include "query/clsIPLocation.h"
#include "support/clsAppLog.h"
#include "tests/fakes/Errors.h"

#include <gtest/gtest.h>
#include <string>

namespace quarn {
namespace {

TEST(modDefinitionsTest, ANewServerHasNoPlayersAndWasNeverVisited) {
    const ServerRecord server;
    EXPECT_EQ(server.PlayerList.HighestIndex(), 0);
    EXPECT_EQ(server.PlayerList[0].Name, "");
    EXPECT_TRUE(server.LastVisit.IsZero());
    EXPECT_EQ(server.Locked, 0);
}

TEST(modDefinitionsTest, AProgramBeginsEmpty) {
    const ProgramState program;
    EXPECT_EQ(program.CurrentGame, "");
    EXPECT_EQ(program.ServerCount, 0);
    EXPECT_EQ(program.PreviousServerCount, 0);
    EXPECT_EQ(program.CurrentServer, 0);
    EXPECT_EQ(program.Servers.HighestIndex(), 0);
    EXPECT_EQ(program.Games.HighestIndex(), 0);
    EXPECT_EQ(program.GamePath.HighestIndex(), 0);
    EXPECT_EQ(program.AppLog, nullptr);
    EXPECT_EQ(program.IPLocation, nullptr);
}

TEST(modDefinitionsTest, TheLastServerIsNeverBeyondTheList) {
    const struct {
        std::int32_t count;
        std::int32_t highest;
        std::int32_t last;
    } cases[] = {{0, 0, 0}, {3, 3, 3}, {2, 3, 2}, {4, 3, 3}, {1, 0, 0}, {-1, 3, -1}};
    for (const auto& c : cases) {
        ProgramState program;
        program.Servers.Reset(c.highest);
        program.ServerCount = c.count;
        EXPECT_EQ(program.LastServerIndex(), c.last) << c.count << " of " << c.highest;
    }
}

TEST(modDefinitionsTest, FavoriteNamesHaveTenSlots) {
    ProgramState program;
    for (std::int32_t folder = 0; folder <= 9; ++folder)
        FavoriteName(program, folder) = std::to_string(folder);
    EXPECT_EQ(program.FavoriteNames[9], "9");
    for (const std::int32_t folder : {-1, 10, 2147483647, -2147483647 - 1})
        EXPECT_EQ(ErrorOf([&] { FavoriteName(program, folder); }), ErrorNumber::SubscriptOutOfRange)
            << folder;
}

} // namespace
} // namespace quarn
