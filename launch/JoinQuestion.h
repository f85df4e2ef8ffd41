#pragma once

// The question before a game is started with a line that a server could have put commands into.
//
// A server reports the name of its MOD, which becomes a part of the game's command line. The engines take
// text after a "+" as a command, a word that begins with "-" as an option, and some names as files and
// folders outside the game's own.

#include "core/modDefinitions.h"
#include "desktop/LocaleText.h"

#include <string>

namespace quarn {

// The question, including the command line; empty if there is nothing to ask, because the game does not get
// the MOD name, the definitions contain that MOD, or nothing in the name is suspicious. The line is shown as
// it would be passed, with long words in parts and control characters as "\x0A"; of a longer line, only the
// first 1,000 characters.
std::string JoinQuestion(const ProgramState& program, const LocaleText& locale, const ServerRecord& server,
                         bool asSpectator);

} // namespace quarn
