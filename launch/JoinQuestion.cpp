#include "launch/JoinQuestion.h"

#include "core/modCommonSubs.h"
#include "launch/modGameStart.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

namespace quarn {

namespace {

constexpr std::size_t LongestWord = 40;
constexpr std::size_t MostCharacters = 1000;

bool IsControl(char character) {
    const auto code = static_cast<unsigned char>(character);
    return code < 0x20 || code == 0x7F;
}

bool IsSuspicious(std::string_view mod) {
    if (mod.empty())
        return false;
    return mod.find_first_of("\";:+") != std::string_view::npos || mod.find("..") != std::string_view::npos ||
           mod.front() == '/' || mod.front() == '\\' || mod.front() == '-' ||
           mod.find(" -") != std::string_view::npos || std::any_of(mod.begin(), mod.end(), IsControl);
}

bool IsDefined(const ProgramState& program, const GameDefinition& game, std::string_view mod) {
    for (std::int32_t m = 1; m <= program.MODNum; ++m)
        if (program.Mods[m].BasedGame == game.GameShort && program.Mods[m].GameName == mod)
            return true;
    return false;
}

bool MustAsk(const ProgramState& program, const ServerRecord& server) {
    const std::int32_t number = GameIndexOf(program, server);
    if (number == 0)
        return false;
    const GameDefinition& game = program.Games[number];
    const std::string_view name = server.ModName;
    const std::string_view mod = name.substr(0, name.find('\0'));
    return (game.Engine == "q3" || game.Engine == "hl") && IsSuspicious(mod) &&
           !IsDefined(program, game, mod);
}

// A character as the message box shows it: control characters by their code.
std::string Visible(std::string_view character) {
    if (!IsControl(character.front()))
        return std::string(character);
    std::array<char, 8> code{};
    std::snprintf(code.data(), code.size(), "\\x%02X", static_cast<unsigned char>(character.front()));
    return code.data();
}

// A message box breaks lines only at blanks, and one that is taller than the screen hides its buttons.
std::string ForMessageBox(const LocaleText& locale, std::string_view text) {
    std::string shown;
    std::size_t word = 0, count = 0;
    while (!text.empty()) {
        const std::string_view character = text.substr(0, locale.IsLeadByte(text.front()) ? 2 : 1);
        const std::string visible = Visible(character);
        if (count + visible.size() > MostCharacters)
            return shown + "\r\n... and " + std::to_string(text.size()) + " characters more.";
        if (character != " " && word + visible.size() > LongestWord) {
            shown += "\r\n";
            word = 0;
        }
        word = character == " " ? 0 : word + visible.size();
        count += visible.size();
        shown += visible;
        text.remove_prefix(character.size());
    }
    return shown;
}

} // namespace

std::string JoinQuestion(const ProgramState& program, const LocaleText& locale, const ServerRecord& server,
                         bool asSpectator) {
    if (!MustAsk(program, server))
        return {};
    return "The name of this server's MOD could give commands to the game. The game would be started with "
           "this line:\r\n\r\n" +
           ForMessageBox(locale, GameParameters(program, server, asSpectator)) +
           "\r\n\r\nDo you want to start it?";
}

} // namespace quarn
