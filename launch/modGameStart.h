#pragma once

// Starts a game on a server.

#include "core/modDefinitions.h"
#include "desktop/Desktop.h"

#include <string>

namespace quarn {

// Full path of the game's executable, "" if the file does not exist. A backslash is appended to the given
// path if it has none, whether or not the file exists.
std::string GetGameExePath(const ProgramState& program, const Desktop& desktop, std::string& gamePath,
                           const std::string& gameShortName);

// The command line that joins a server. A NUL ends the MOD name.
std::string GameParameters(const ProgramState& program, const ServerRecord& server, bool asSpectator);

// Starts the server's game: writes "server.txt" into the current directory, one line with the server's name
// and address, and asks the shell to start the game's executable with the command line of its engine. False,
// after a message, if the executable was not found; the shell's result is not examined. A file that
// cannot be written is only logged; other errors are left to the caller.
bool StartGame(ProgramState& program, Desktop& desktop, const ServerRecord& server, bool asSpectator);

} // namespace quarn
