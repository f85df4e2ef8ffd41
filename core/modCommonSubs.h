#pragma once

// The small routines that parsers, list files, launcher and main window share.

#include "base/DateTime.h"
#include "controls/ProgressBar.h"
#include "controls/StatusBar.h"
#include "core/modDefinitions.h"
#include "desktop/Desktop.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace quarn {

// Position of the separator, searched from the second character on; npos if it is not found.
inline std::size_t FindSeparator(std::string_view text, std::string_view separator) noexcept {
    return separator.size() == 1 ? text.find(separator.front(), 1) : text.find(separator, 1);
}

// Logs, under ExtractString, that no separator follows a field.
void LogMissingSeparator(clsAppLog& log) noexcept;

// The text up to the first occurrence of the separator, searched from the second character on: a separator at
// the very first position is not found. The text keeps everything after the occurrence's first character, so
// that the other characters of a longer separator remain in it. Without an occurrence the routine fails: it
// logs an error, returns "", and does not change the text.
std::string ExtractString(clsAppLog& log, std::string& text, std::string_view separator);

// The first `count` characters. A text of `count` characters or fewer is deliberately left as it is. Error 5
// for a negative count.
std::string TakeLeft(std::string& text, std::int32_t count);

// Number of the game with this GameShort (exact comparison), 0 if there is none.
std::int32_t GameIndexOfShort(const ProgramState& program, std::string_view gameShort);

// Its engine, "" if there is no such game.
std::string EngineOfShort(const ProgramState& program, std::string_view gameShort);

// Number of the game of a server in the current list: its own, else the list's; 0 if the list is no game's.
std::int32_t GameIndexOf(const ProgramState& program, const ServerRecord& server);

// That game's GameShort, "" if there is no such game.
std::string GameShortOf(const ProgramState& program, const ServerRecord& server);

// Seconds since 1900-01-01 as in the list files: decimal text, "" for no date. A date that SecondsToDate
// could not read, before 1921-12-13 or after 2058-01-19, becomes the nearest one that it can.
std::string DateToSeconds(DateTime date);

// The reverse, for a list file's number. Error 6 if the seconds since 1990 do not fit 32 bits.
DateTime SecondsToDate(double secondsSince1900);

// The digits of major, minor and build, concatenated, as a number: 2, 1, 5 give 215. Errors (no file, no
// version resource, 6 for a number beyond 32 bits) are left to the caller.
std::int32_t GetFileVersionNumber(const Desktop& desktop, const std::string& path);

// Sends the text to the window of this title as a copy-data message, identifier 3. An empty title or text
// sends nothing and does not search.
void SendCopyData(Desktop& desktop, const std::string& title, const std::string& text);

// Puts the progress bar into a panel of the status bar (1-based), inside the panel's frame.
void PlaceInStatusPanel(ProgressBar& control, StatusBar& statusBar, std::int32_t panel);

} // namespace quarn
