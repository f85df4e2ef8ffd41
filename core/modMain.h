#pragma once

// Start-up, the definitions file and the settings file.

#include "core/modDefinitions.h"
#include "desktop/Desktop.h"

#include <functional>
#include <string>

namespace quarn {

// The program's entry: prepares state, log, definitions and settings and then calls `showMainWindow`, which
// returns when the window is shown (not when it is closed). False when the program is to end at once:
// another instance runs, or start-up failed before the window was shown.
bool Main(ProgramState& program, Desktop& desktop, const std::function<void()>& showMainWindow);

// "Games.ini": the General section and the sizes of the game lists; before LoadSettings. No value is checked,
// but a number of games that no list can have is error 9 below zero and error 7 above MaxDefinitions.
void LoadGamesIniGeneral(ProgramState& program, const Desktop& desktop);

// "Games.ini": the game and MOD sections; after LoadSettings. The number of MODs fails as that of games does.
void LoadGamesIniSections(ProgramState& program, const Desktop& desktop);

// Replaces the escapes of the definitions file ($255 $32 $10 $1 $0, in this order) in place, and returns the
// decoded text. The result may hold NULs.
std::string DecodeIniEscapes(std::string& text);

// "Quarn.ini": every setting into its global; a missing or unreadable file gives the defaults.
void LoadSettings(ProgramState& program, const Desktop& desktop);

// Writes every setting, into a copy of the file ("Quarn.ini.new") that then replaces it, so that a crash at
// any moment leaves the old settings or the new ones. Before that, every setting is read back from the copy.
// Keys of the file that are no settings stay. A failure is not reported, leaves the file as it was and
// removes the copy. A file that could not be read at the start is not replaced.
void SaveSettings(const ProgramState& program, Desktop& desktop);

} // namespace quarn
