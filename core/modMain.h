#pragma once

// Start-up, the definitions file and the settings file.

#include "core/modDefinitions.h"
#include "desktop/Desktop.h"

#include <functional>
#include <string>

namespace quarn {

// The program's entry: prepares state, log, definitions and settings and then calls `showMainWindow`, which
// returns when the window is shown (not when it is closed). False if the program has to end at once: another
// instance is running, or the start failed before the window was shown.
bool Main(ProgramState& program, Desktop& desktop, const std::function<void()>& showMainWindow);

// "Games.ini": the General section and the sizes of the game lists; before LoadSettings. Values are not
// checked, except the number of games: error 9 if it is negative, error 7 above MaxDefinitions.
void LoadGamesIniGeneral(ProgramState& program, const Desktop& desktop);

// "Games.ini": the game and MOD sections; after LoadSettings. The number of MODs is checked like that of
// games.
void LoadGamesIniSections(ProgramState& program, const Desktop& desktop);

// Replaces the escapes of the definitions file ($255 $32 $10 $1 $0, in this order) in place, and returns the
// decoded text, which may contain NULs.
std::string DecodeIniEscapes(std::string& text);

// "Quarn.ini": reads every setting; a missing or unreadable file gives the defaults.
void LoadSettings(ProgramState& program, const Desktop& desktop);

// Writes every setting to a copy of the file ("Quarn.ini.new"), which then replaces the file, so that a crash
// at any moment leaves the old settings or the new ones. Before that, every setting is read back from the
// copy. Other keys in the file are kept. A failure is not reported; it leaves the file unchanged and removes
// the copy. A file that could not be read at the start is not replaced.
void SaveSettings(const ProgramState& program, Desktop& desktop);

} // namespace quarn
