#pragma once

// What the user is asked before a game is started with a line that a server could have given commands to.
//
// A server names its MOD, and the name is a part of the game's command line. The engines take what follows a
// "+" for a command, a word that begins with "-" for an option, and some names for files and folders outside
// the game's own.

#include "core/modDefinitions.h"
#include "desktop/LocaleText.h"

#include <string>

namespace quarn {

// The question, with the command line in it; empty when nothing has to be asked, because the game is not told
// the MOD name, the definitions name that MOD, or nothing in it is suspicious. The line is shown as it would
// be passed, long words in parts, control characters as "\x0A"; only the first 1,000 characters of a longer
// line.
std::string JoinQuestion(const ProgramState& program, const LocaleText& locale, const ServerRecord& server,
                         bool asSpectator);

} // namespace quarn
