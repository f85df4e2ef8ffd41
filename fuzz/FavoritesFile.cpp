// A Favorites.ini of any content gives each favorite a game of the definitions or none. What is noted can be
// read again, what left the list is gone, and every other line stays as it was. A disk with any amount of
// space leaves the old file or the whole new one.

#include "base/LineReader.h"
#include "fuzz/FuzzedProgram.h"
#include "fuzz/Require.h"
#include "tests/fakes/Errors.h"
#include "tests/fakes/Samples.h"
#include "views/FavoriteGames.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quarn::fuzz {

namespace {

constexpr const char* Path = "C:\\Quarn\\Favorites.ini";
constexpr std::int32_t Games = 3;
constexpr std::int32_t Servers = 3;

// 1.2.3.4:5, 1.2.3.4:6 and 1.2.3.4:7.
OneBased<ServerRecord> SomeServers() {
    OneBased<ServerRecord> servers(Servers);
    for (std::int32_t i = 1; i <= Servers; ++i) {
        servers[i].Address = "1.2.3.4";
        servers[i].Port = 4 + i;
    }
    return servers;
}

std::vector<std::int32_t> GamesRead(const FavoriteGames& favorites, const std::string& list) {
    OneBased<ServerRecord> servers = SomeServers();
    favorites.Read(list, servers);
    std::vector<std::int32_t> games;
    for (std::int32_t i = 1; i <= Servers; ++i) {
        Require(servers[i].Game >= 0 && servers[i].Game <= Games, "a game of the definitions, or none");
        games.push_back(servers[i].Game);
    }
    return games;
}

// Without the empty ones: of a lone CR and a lone LF in two lines, the removal of a line between them makes
// one.
std::vector<std::string> Lines(const std::string& content) {
    std::vector<std::string> lines;
    for (LineReader reader(content); !reader.Rest().empty();)
        if (const std::string_view line = reader.ReadLine(); !line.empty())
            lines.emplace_back(line);
    return lines;
}

// Lines that are in `before` and, in this order, not in `after`. All of `after` must be in `before`.
std::vector<std::string> RemovedLines(const std::string& before, const std::string& after) {
    std::vector<std::string> removed;
    const std::vector<std::string> kept = Lines(after);
    std::size_t next = 0;
    for (const std::string& line : Lines(before)) {
        if (next < kept.size() && kept[next] == line)
            ++next;
        else
            removed.push_back(line);
    }
    Require(next == kept.size(), "lines are only removed");
    return removed;
}

void RequireOldOrNew(MemoryFiles& disk, FavoriteGames& favorites, const std::vector<ServerRecord>& added,
                     const std::string& before, const std::string& after) {
    disk.Put(Path, before);
    disk.freeBytes = before.size() * 37 % 1000;
    const ErrorNumber error = ErrorOf([&] { favorites.Add("fav1", added); });
    Require(disk.Get(Path) == (error == NoError ? after : before), "the old file or the new one");
    Require(disk.Paths() == std::vector<std::string>{Path}, "nothing is left next to the file");
    disk.freeBytes.reset();
}

} // namespace

} // namespace quarn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quarn;
    using namespace quarn::fuzz;
    const std::string content(reinterpret_cast<const char*>(data), size);
    FuzzedProgram fuzzed;
    MemoryFiles& disk = fuzzed.fake.files;
    ResetGames(fuzzed.program, Games);
    const char* const names[] = {"q3", "d3", "hl"};
    for (std::int32_t game = 1; game <= Games; ++game)
        fuzzed.program.Games[game].GameShort = names[game - 1];
    FavoriteGames favorites(fuzzed.program, disk);
    disk.Put(Path, content);

    const std::vector<std::int32_t> games = GamesRead(favorites, "fav1");
    const std::vector<std::int32_t> otherGames = GamesRead(favorites, "fav2");
    Require(disk.Writes(Path) == 0, "reading writes nothing");

    ServerRecord server = SomeServers()[2];
    server.Game = static_cast<std::int32_t>(size % Games) + 1;
    favorites.Add("fav1", {server});
    const std::string after = disk.Get(Path);
    const std::vector<std::int32_t> expected = {games[0], server.Game, games[2]};
    Require(GamesRead(favorites, "fav1") == expected, "what was noted is read, and the rest as before");
    Require(GamesRead(favorites, "fav2") == otherGames, "another list's games stay");
    favorites.Add("fav1", {server});
    Require(disk.Get(Path) == after, "noting it again changes nothing");

    favorites.RemoveOthers("fav1", SomeServers());
    favorites.RemoveOthers("fav1", OneBased<ServerRecord>());
    Require(GamesRead(favorites, "fav1") == std::vector<std::int32_t>(Servers, 0), "no game is left");
    Require(GamesRead(favorites, "fav2") == otherGames, "another list's games stay");
    for (const std::string& line : RemovedLines(after, disk.Get(Path)))
        Require(line.find('=') != std::string::npos && line.find(':') < line.find('='),
                "only entries are removed");

    disk.FailReads(Path, ErrorNumber::PermissionDenied);
    Require(ErrorOf([&] { favorites.Add("fav1", {server}); }) == ErrorNumber::PermissionDenied,
            "a file that cannot be read is not written");
    disk.ClearFaults();
    RequireOldOrNew(disk, favorites, {server}, content, after);
    return 0;
}
