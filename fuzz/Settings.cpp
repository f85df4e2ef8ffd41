// A settings file of any content gives every setting a value, and these values are what is written and read
// again. A disk with any amount of space leaves the old file or the whole new one, and nothing else.

#include "core/modMain.h"
#include "fuzz/FuzzedProgram.h"
#include "fuzz/Require.h"
#include "tests/fakes/Samples.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quarn::fuzz {

namespace {

constexpr std::int32_t Games = 2;
constexpr std::size_t LongestText = 254;

std::vector<std::int32_t> Numbers(const ProgramState& program) {
    std::vector<std::int32_t> numbers = {
        program.MinToTray,      program.KeepOnTop,      program.RemWinPos,      program.WinTop,
        program.WinLeft,        program.WinHeight,      program.WinWidth,       program.WinState,
        program.LastGame,       program.LastServer,     program.LastSortColumn, program.LastSortOrder,
        program.FilterLocked,   program.FilterPing,     program.PingTimeout,    program.FavoritesNumber,
        program.QuitAfterStart, program.GameVisible[1], program.GameVisible[2]};
    return numbers;
}

std::vector<std::string> Texts(const ProgramState& program) {
    std::vector<std::string> texts(program.FavoriteNames.begin(), program.FavoriteNames.end());
    for (std::int32_t game = 1; game <= Games; ++game)
        for (const auto* values : {&program.GamePath, &program.GameConfig, &program.GamePlayerName})
            texts.push_back((*values)[game]);
    return texts;
}

// The profile functions remove blanks and a pair of quotes around a value, which no writer can prevent.
bool IsKeptByProfileCalls(const std::string& text) {
    constexpr const char* Taken = " \t\r\n\v\f\"'";
    return text.empty() || (std::string(Taken).find(text.front()) == std::string::npos &&
                            std::string(Taken).find(text.back()) == std::string::npos);
}

constexpr const char* Path = "C:\\Quarn\\Quarn.ini";

void RequireOldOrNew(FuzzedProgram& fuzzed, const std::string& before, const std::string& after) {
    MemoryFiles& disk = fuzzed.fake.files;
    disk.Put(Path, before);
    disk.Protect(Path);
    SaveSettings(fuzzed.program, fuzzed.fake.desktop);
    Require(disk.Get(Path) == before, "a write-protected file stays as it is");
    disk.Unprotect(Path);

    disk.freeBytes = before.size() * 37 % 70'000;
    SaveSettings(fuzzed.program, fuzzed.fake.desktop);
    const std::string saved = disk.Get(Path);
    Require(saved == before || saved == after, "a full disk leaves the old file or the new one");
    disk.freeBytes.reset();
    Require(disk.Paths() == std::vector<std::string>{Path}, "nothing is left next to the file");

    disk.FailReads(Path, ErrorNumber::PermissionDenied);
    LoadSettings(fuzzed.program, fuzzed.fake.desktop);
    disk.ClearFaults();
    SaveSettings(fuzzed.program, fuzzed.fake.desktop);
    Require(disk.Get(Path) == saved, "settings that could not be read are not replaced by defaults");
}

} // namespace

} // namespace quarn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quarn;
    using namespace quarn::fuzz;
    FuzzedProgram fuzzed;
    ProgramState& program = fuzzed.program;
    const std::string content(reinterpret_cast<const char*>(data), size);
    fuzzed.fake.files.Put(Path, content);
    ResetGames(program, Games);
    LoadSettings(program, fuzzed.fake.desktop);
    for (const std::string& text : Texts(program))
        Require(text.size() <= LongestText, "a text fits its buffer");

    SaveSettings(program, fuzzed.fake.desktop);
    Require(!fuzzed.fake.files.Has(std::string(Path) + ".new"), "the copy has become the file");
    const std::string after = fuzzed.fake.files.Get(Path);
    ProgramState again;
    again.AppPath = program.AppPath;
    ResetGames(again, Games);
    LoadSettings(again, fuzzed.fake.desktop);
    Require(Numbers(again) == Numbers(program), "the numbers written are the numbers read");
    const std::vector<std::string> written = Texts(program);
    const std::vector<std::string> read = Texts(again);
    for (std::size_t i = 0; i < written.size(); ++i)
        Require(!IsKeptByProfileCalls(written[i]) || read[i] == written[i],
                "the texts written are the texts read");
    RequireOldOrNew(fuzzed, content, after);
    return 0;
}
