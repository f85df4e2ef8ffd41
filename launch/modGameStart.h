#pragma once

// Starts a game on the selected server.

#include "core/modDefinitions.h"
#include "desktop/Desktop.h"

#include <string>

namespace quarn {

// Full path of the game's executable, "" when there is no such file. The path given gains the backslash at
// its end that it lacks, whether or not the file is found.
std::string GetGameExePath(const ProgramState& program, const Desktop& desktop, std::string& gamePath,
                           const std::string& gameShortName);

// The command line that a server's game is joined with. A NUL ends the MOD name.
std::string GameParameters(const ProgramState& program, const ServerRecord& server, bool asSpectator);

// Starts the server's game on it: writes "server.txt" into the current directory, one line that names the
// server, and asks the shell for the game's executable with the command line of its engine. False, after a
// message, when the executable was not found; whether the shell could start it is not examined. A file that
// cannot be written is only logged; other errors are left to the caller. The server is a copy, because events
// may run meanwhile.
bool StartGame(ProgramState& program, Desktop& desktop, ServerRecord server, bool asSpectator);

} // namespace quarn
