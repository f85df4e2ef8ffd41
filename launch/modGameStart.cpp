#include "launch/modGameStart.h"

#include "core/modCommonSubs.h"
#include "core/modFileHelper.h"
#include "core/modStringHelper.h"
#include "support/Trap.h"
#include "support/clsAppLog.h"

namespace quarn {

namespace {

constexpr const char* ServerFile = "server.txt";

// Readers of the file read its first line: a line end inside the name must not hide the address.
std::string ServerLine(const ServerRecord& server) {
    std::string name = server.Name;
    ReplaceAll(name, "\r", " ");
    ReplaceAll(name, "\n", " ");
    return name + " " + AddressText(server) + "\r\n";
}

} // namespace

// Every keyword is present even if its value is empty, and values are inserted as they are, without quotes:
// the engines take the rest of the line up to the next keyword as the value.
std::string GameParameters(const ProgramState& program, const ServerRecord& server, bool asSpectator) {
    const std::int32_t game = GameIndexOf(program, server);
    const std::string engine = game == 0 ? std::string() : program.Games[game].Engine;
    const std::string mod = server.ModName.substr(0, server.ModName.find('\0'));
    if (engine == "q3")
        return "+set fs_game " + mod + " +exec " + program.GameConfig[game] + " +name " +
               program.GamePlayerName[game] + " +set password " + server.Password + " +connect " +
               AddressText(server) + (asSpectator ? " +setu team s" : "");
    if (engine == "hl")
        return "+connect " + AddressText(server) + " -game " + mod + (asSpectator ? " -s" : "");
    return {};
}

std::string GetGameExePath(const ProgramState& program, const Desktop& desktop, std::string& gamePath,
                           const std::string& gameShortName) {
    gamePath = WithTrailingBackslash(desktop.locale, gamePath);
    const std::int32_t game = GameIndexOfShort(program, gameShortName);
    const std::string candidate = gamePath + program.Games[game].ExeName;
    return FileExists(desktop.files, candidate) ? candidate : std::string();
}

bool StartGame(ProgramState& program, Desktop& desktop, const ServerRecord& server, bool asSpectator) {
    const std::int32_t game = GameIndexOf(program, server);
    const std::string exe =
        game == 0 ? std::string()
                  : GetGameExePath(program, desktop, program.GamePath[game], program.Games[game].GameShort);
    if (exe.empty()) {
        program.AppLog->ErrorMessage("The game executable could not be found. Please check game path!");
        return false;
    }
    Shell::Request request;
    request.file = exe;
    request.parameters = GameParameters(program, server, asSpectator);
    request.folder = program.GamePath[game];
    request.show = ShowState::Show;
    const std::string line = ServerLine(server);
    // Events may run from here on, and the record may change.
    Trapped(*program.AppLog, "modGameStart", "StartGame", OnError::Log,
            [&] { desktop.files.Write(ServerFile, line); });
    desktop.shell.Open(request);
    return true;
}

} // namespace quarn
