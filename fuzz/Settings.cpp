// A settings file of any content gives every setting a value, and the same values are written and read again.

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

} // namespace

} // namespace quarn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quarn;
    using namespace quarn::fuzz;
    FuzzedProgram fuzzed;
    ProgramState& program = fuzzed.program;
    const std::string path = "C:\\Quarn\\Quarn.ini";
    fuzzed.fake.files.Put(path, std::string(reinterpret_cast<const char*>(data), size));
    ResetGames(program, Games);
    LoadSettings(program, fuzzed.fake.desktop);
    for (const std::string& text : Texts(program))
        Require(text.size() <= LongestText, "a text fits its buffer");

    SaveSettings(program, fuzzed.fake.desktop);
    Require(!fuzzed.fake.files.Has(path + ".new"), "the copy has become the file");
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
    return 0;
}
