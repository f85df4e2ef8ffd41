// A definitions file of any content gives as many games and MODs as it counts, or an error that ends the
// start; texts are as long as the file's at most, and no escape is left in those that are decoded.

#include "base/RunTimeError.h"
#include "core/modMain.h"
#include "fuzz/FuzzedProgram.h"
#include "fuzz/Require.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace quarn::fuzz {

namespace {

constexpr std::size_t LongestText = 254;

// MemoryProfiles reads the file again for every key.
constexpr std::int32_t MostSectionsWorthReading = 12;

bool IsWorthReading(std::int32_t count) {
    return count <= MostSectionsWorthReading || count > MaxDefinitions;
}

void RequireDecoded(const std::string& text) {
    Require(text.size() <= LongestText, "a text fits its buffer");
    for (const char* escape : {"$255", "$32", "$10", "$1", "$0"})
        Require(text.find(escape) == std::string::npos, "no escape is left");
}

void RequireShort(const std::string& text) {
    Require(text.size() <= LongestText, "a text fits its buffer");
}

void RequireGames(const ProgramState& program) {
    Require(program.Games.HighestIndex() == program.GameNum, "a record for each game");
    for (std::int32_t i = 1; i <= program.GameNum; ++i) {
        const GameDefinition& game = program.Games[i];
        for (const std::string* text :
             {&game.Description, &game.ExeName, &game.GameShort, &game.Engine, &game.MasterAddress})
            RequireShort(*text);
        RequireDecoded(game.MasterPacket);
        RequireDecoded(game.MasterResponse);
    }
}

void RequireMods(const ProgramState& program) {
    Require(program.Mods.HighestIndex() == program.MODNum, "a record for each MOD");
    for (std::int32_t i = 1; i <= program.MODNum; ++i) {
        const ModDefinition& mod = program.Mods[i];
        RequireShort(mod.BasedGame);
        for (const std::string* text : {&mod.Description, &mod.GameName, &mod.GameVersion})
            RequireDecoded(*text);
    }
}

// Calls the reader and demands that it fails as this count must make it.
template<class Reader>
bool ReadsAsCounted(const std::int32_t& count, Reader read) {
    try {
        read();
    } catch (const RunTimeError& error) {
        Require(error.Kind() == (count < 0 ? ErrorNumber::SubscriptOutOfRange : ErrorNumber::OutOfMemory),
                "no other error than that of the count");
        Require(count < 0 || count > MaxDefinitions, "a good count does not fail");
        return false;
    }
    Require(count >= 0 && count <= MaxDefinitions, "a bad count fails");
    return true;
}

} // namespace

} // namespace quarn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quarn;
    using namespace quarn::fuzz;
    FuzzedProgram fuzzed;
    ProgramState& program = fuzzed.program;
    const std::string path = "C:\\Quarn\\Games.ini";
    fuzzed.fake.files.Put(path, std::string(reinterpret_cast<const char*>(data), size));
    const ProfileFiles& profiles = fuzzed.fake.profiles;
    if (!IsWorthReading(profiles.ReadInteger(path, "General", "GameNum", 0)) ||
        !IsWorthReading(profiles.ReadInteger(path, "General", "MODNum", 0)))
        return 0;

    if (!ReadsAsCounted(program.GameNum, [&] { LoadGamesIniGeneral(program, fuzzed.fake.desktop); }))
        return 0;
    const bool all =
        ReadsAsCounted(program.MODNum, [&] { LoadGamesIniSections(program, fuzzed.fake.desktop); });
    RequireGames(program);
    if (all)
        RequireMods(program);
    return 0;
}
