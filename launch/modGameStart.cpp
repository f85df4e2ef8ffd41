#include "launch/modGameStart.h"

#include "core/modCommonSubs.h"
#include "core/modFileHelper.h"
#include "core/modStringHelper.h"
#include "support/clsAppLog.h"

namespace quarn {

namespace {

constexpr const char* ServerFile = "server.txt";

// Whoever reads the file takes its first line: a line end inside the name must not hide the address.
void WriteServerFile(Files& files, const ServerRecord& server) {
    std::string name = server.Name;
    ReplaceAll(name, "\r", " ");
    ReplaceAll(name, "\n", " ");
    files.Write(ServerFile, name + " " + AddressText(server) + "\r\n");
}

// Every keyword stands there also when its value is empty, and values go in as they are, without quotes: the
// engines read the rest of the line up to the next keyword as the value.
std::string ParametersOf(const ProgramState& program, std::int32_t game, const ServerRecord& server,
                         bool asSpectator) {
    const std::string& engine = program.Games[game].Engine;
    if (engine == "q3")
        return "+set fs_game " + server.ModName + " +exec " + program.GameConfig[game] + " +name " +
               program.GamePlayerName[game] + " +set password " + server.Password + " +connect " +
               AddressText(server) + (asSpectator ? " +setu team s" : "");
    if (engine == "hl")
        return "+connect " + AddressText(server) + " -game " + server.ModName + (asSpectator ? " -s" : "");
    return {};
}

} // namespace

std::string GetGameExePath(const ProgramState& program, const Files& files, std::string& gamePath,
                           const std::string& gameShortName) {
    if (gamePath.empty() || gamePath.back() != '\\')
        gamePath += '\\';
    const std::int32_t game = GameIndexOfShort(program, gameShortName);
    const std::string candidate = gamePath + program.Games[game].ExeName;
    return FileExists(files, candidate) ? candidate : std::string();
}

bool StartGame(ProgramState& program, Desktop& desktop, ServerRecord server, bool asSpectator) {
    const std::int32_t game = GameIndexOfShort(program, program.CurrentGame);
    const std::string exe =
        game == 0 ? std::string()
                  : GetGameExePath(program, desktop.files, program.GamePath[game], program.CurrentGame);
    if (exe.empty()) {
        program.AppLog->ErrorMessage("The game executable could not be found. Please check game path!");
        return false;
    }
    WriteServerFile(desktop.files, server);

    Shell::Request request;
    request.file = exe;
    request.parameters = ParametersOf(program, game, server, asSpectator);
    request.folder = program.GamePath[game];
    request.show = ShowState::Show;
    desktop.shell.Open(request);
    return true;
}

} // namespace quarn
