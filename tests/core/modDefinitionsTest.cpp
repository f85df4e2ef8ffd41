#include "core/modDefinitions.h"

#include "base/RunTimeError.h"
#include "query/clsIPLocation.h"
#include "support/clsAppLog.h"
#include "tests/fakes/Errors.h"

#include <gtest/gtest.h>
#include <string>
#include <type_traits>

namespace quarn {
namespace {

// Counts and numbers of the records have 32 bits and a sign.
static_assert(std::is_same_v<decltype(ServerRecord::Port), std::int32_t>);
static_assert(std::is_same_v<decltype(ServerRecord::Ping), std::int32_t>);
static_assert(std::is_same_v<decltype(PlayerRecord::Score), std::int32_t>);
static_assert(std::is_same_v<decltype(GameDefinition::MasterPort), std::int32_t>);
static_assert(std::is_same_v<decltype(ProgramState::ServerCount), std::int32_t>);

TEST(Records, HaveTheirFieldsInOrder) {
    const GameDefinition game = {"Description",  "ExeName",        "MasterAddress", 1,
                                 "MasterPacket", "MasterResponse", "GameShort",     "Engine"};
    EXPECT_EQ(game.Description, "Description");
    EXPECT_EQ(game.ExeName, "ExeName");
    EXPECT_EQ(game.MasterAddress, "MasterAddress");
    EXPECT_EQ(game.MasterPort, 1);
    EXPECT_EQ(game.MasterPacket, "MasterPacket");
    EXPECT_EQ(game.MasterResponse, "MasterResponse");
    EXPECT_EQ(game.GameShort, "GameShort");
    EXPECT_EQ(game.Engine, "Engine");

    const ModDefinition mod = {"BasedGame", "Description", "GameVersion", "GameName"};
    EXPECT_EQ(mod.BasedGame, "BasedGame");
    EXPECT_EQ(mod.Description, "Description");
    EXPECT_EQ(mod.GameVersion, "GameVersion");
    EXPECT_EQ(mod.GameName, "GameName");

    const PlayerRecord player = {1, 2, "Name"};
    EXPECT_EQ(player.Score, 1);
    EXPECT_EQ(player.Ping, 2);
    EXPECT_EQ(player.Name, "Name");

    const ServerRecord server = {"Address",
                                 1,
                                 2,
                                 "Country",
                                 3,
                                 4,
                                 "Name",
                                 "Map",
                                 "ModName",
                                 5,
                                 OneBased<PlayerRecord>(6),
                                 "Variables",
                                 "Password",
                                 DateTime{7}};
    EXPECT_EQ(server.Address, "Address");
    EXPECT_EQ(server.Port, 1);
    EXPECT_EQ(server.Locked, 2);
    EXPECT_EQ(server.Country, "Country");
    EXPECT_EQ(server.Ping, 3);
    EXPECT_EQ(server.MaxPlayers, 4);
    EXPECT_EQ(server.Name, "Name");
    EXPECT_EQ(server.Map, "Map");
    EXPECT_EQ(server.ModName, "ModName");
    EXPECT_EQ(server.Players, 5);
    EXPECT_EQ(server.PlayerList.HighestIndex(), 6);
    EXPECT_EQ(server.Variables, "Variables");
    EXPECT_EQ(server.Password, "Password");
    EXPECT_EQ(server.LastVisit, DateTime{7});
}

TEST(Records, ANewServerHasNoPlayersAndWasNeverVisited) {
    const ServerRecord server;
    EXPECT_EQ(server.PlayerList.HighestIndex(), 0);
    EXPECT_EQ(server.PlayerList[0].Name, "");
    EXPECT_TRUE(server.LastVisit.IsZero());
    EXPECT_EQ(server.Locked, 0);
}

TEST(ProgramState, BeginsEmpty) {
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

TEST(ProgramState, TheLastServerIsNeverBeyondTheList) {
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

TEST(FavoriteName, IsOneOfTheFixedSlots) {
    ProgramState program;
    for (std::int32_t folder = 0; folder <= 9; ++folder)
        FavoriteName(program, folder) = std::to_string(folder);
    EXPECT_EQ(program.FavoriteNames[9], "9");
    for (const std::int32_t folder : {-1, 10, 2147483647, -2147483647 - 1})
        EXPECT_EQ(ErrorOf([&] { FavoriteName(program, folder); }), ErrorNumber::SubscriptOutOfRange)
            << folder;
}

TEST(RunTimeError, IsNamedByItsNumber) {
    const struct {
        std::int32_t number;
        const char* name;
    } cases[] = {
        {5, "Invalid procedure call or argument"},
        {6, "Overflow"},
        {7, "Out of memory"},
        {9, "Subscript out of range"},
        {11, "Division by zero"},
        {13, "Type mismatch"},
        {51, "Internal error"},
        {52, "Bad file name or number"},
        {53, "File not found"},
        {55, "File already open"},
        {57, "Device I/O error"},
        {61, "Disk full"},
        {62, "Input past end of file"},
        {67, "Too many files"},
        {68, "Device unavailable"},
        {70, "Permission denied"},
        {71, "Disk not ready"},
        {75, "Path/File access error"},
        {76, "Path not found"},
        {91, "Object variable not set"},
        {380, "Invalid property value"},
        {521, "Can't open Clipboard"},
        {35600, "Index out of bounds"},
        {35601, "Element not found"},
        {35602, "Key is not unique in collection"},
    };
    for (const auto& c : cases) {
        const RunTimeError error(static_cast<ErrorNumber>(c.number));
        EXPECT_EQ(error.Number(), c.number);
        EXPECT_STREQ(error.what(), c.name);
    }
    EXPECT_STREQ(RunTimeError(ErrorNumber{1}).what(), "Application-defined or object-defined error");
}

} // namespace
} // namespace quarn
