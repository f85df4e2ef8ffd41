#pragma once

// The program's records and its global state: WinMain creates one ProgramState for the whole run and passes
// it by reference. Plain data without accessors. Everything runs on the user-interface thread, so nothing is
// locked; but events run during long loops, so a handler may run in the middle of one (see
// views/CommandGate.h for the rules).
//
// All text is 8-bit (codes 0..255 in the system's code page), never UTF-8: files and datagrams are bytes.

#include "base/DateTime.h"
#include "base/OneBased.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>

namespace quarn {

class clsAppLog;
class clsIPLocation;

// Limits against files and datagrams that would use up the memory; more is error 7.
inline constexpr std::int32_t MaxServers = 1'000'000;
inline constexpr std::int32_t MaxDefinitions = 10'000;

// Country of an address that is in no range.
inline constexpr const char* UnknownCountry = "--";

inline constexpr std::int32_t MaxFavoritesFolders = 9;
inline constexpr std::int32_t MostSimultaneous = 64;

// One game of "Games.ini".
struct GameDefinition {
    std::string Description;
    std::string ExeName;
    std::string MasterAddress;
    std::int32_t MasterPort = 0;
    std::string MasterPacket;   // the request datagram, escapes decoded
    std::string MasterResponse; // the header of a valid reply, escapes decoded
    std::string GameShort;      // the game's key: tree node, list file, MOD link
    std::string Engine;         // "q3", "d3" or "hl"
};

// One MOD of "Games.ini".
struct ModDefinition {
    std::string BasedGame; // GameShort of its game
    std::string Description;
    std::string GameVersion;
    std::string GameName; // as servers report it
};

struct PlayerRecord {
    std::int32_t Score = 0;
    std::int32_t Ping = 0; // milliseconds
    std::string Name;
};

struct ServerRecord {
    std::string Address; // dotted IPv4; empty: a hole that is never listed
    std::int32_t Port = 0;
    std::int32_t Locked = 0; // nonzero: a password is required
    std::string Country;
    std::int32_t Ping = 0; // milliseconds; PingTimeout when the server did not answer
    std::int32_t MaxPlayers = 0;
    std::string Name;
    std::string Map;
    std::string ModName;
    std::int32_t Players = 0;
    OneBased<PlayerRecord> PlayerList;
    std::string Variables; // \name\value\name\value...
    std::string Password;  // typed by the user; lives only while the program runs
    DateTime LastVisit;    // zero: never

    // Set when the record is first listed and never reused: finds the record after others were deleted. 0:
    // none.
    std::uint32_t Identity = 0;

    // Number of its own game, of a favorite whose game is known. 0: the game is that of the list.
    std::int32_t Game = 0;
};

// "address:port".
std::string AddressText(const ServerRecord& server);

// One pair from ServerRecord::Variables, for display.
struct ServerVariable {
    std::string Name;
    std::string Value;
};

struct ProgramState {
    ProgramState();
    ~ProgramState();
    ProgramState(const ProgramState&) = delete;
    ProgramState& operator=(const ProgramState&) = delete;

    std::string AppPath; // folder of the program, always ending in a backslash
    std::unique_ptr<clsAppLog> AppLog;
    std::unique_ptr<clsIPLocation> IPLocation;

    // Definitions; they never change after start-up.
    std::int32_t IniVer = 0;
    std::string IniDesc;
    std::int32_t GameNum = 0;
    std::int32_t MODNum = 0;
    OneBased<GameDefinition> Games;
    OneBased<ModDefinition> Mods;

    // The user's setup of each game, indexed as Games.
    OneBased<std::string> GamePath;
    OneBased<std::string> GameConfig;
    OneBased<std::string> GamePlayerName;
    OneBased<std::int32_t> GameVisible;

    // The current list. ServerCount may be one past the list's end after a master reply with a truncated last
    // record; loops use LastServerIndex().
    std::string CurrentGame; // GameShort, or the key of a favorites folder; "" before any selection
    OneBased<ServerRecord> Servers;
    std::int32_t ServerCount = 0;
    std::int32_t PreviousServerCount = 0; // entries up to here are already listed
    std::int32_t CurrentServer = 0;       // the record selected or queried; 0: none

    // The smaller of ServerCount and the list's highest index.
    std::int32_t LastServerIndex() const noexcept;

    // Increments the server count and adds a slot; error 7 beyond MaxServers.
    ServerRecord& AppendServer();

    // The record's identity, assigned now if it has none.
    std::uint32_t IdentityOf(std::int32_t index);

    // Index of the record with this identity, searched from `likely` outwards; 0 if it no longer exists.
    std::int32_t FindServer(std::uint32_t identity, std::int32_t likely) const noexcept;
    std::uint32_t LastIdentity = 0;

    // Settings ("Quarn.ini"), with the values of a first run.
    std::int32_t MinToTray = 1;
    std::int32_t KeepOnTop = 0;
    std::int32_t RemWinPos = 0;
    std::int32_t WinTop = 500; // twips, as the three below
    std::int32_t WinLeft = 500;
    std::int32_t WinHeight = 400;
    std::int32_t WinWidth = 400;
    std::int32_t WinState = 0; // 0 normal, 1 minimised, 2 maximised
    std::int32_t LastGame = 1; // position of the selected tree node
    std::int32_t LastServer = 1;
    std::int32_t LastSortColumn = 1;
    std::int32_t LastSortOrder = 1;  // 0 ascending, 1 descending
    std::int32_t FilterLocked = 1;   // nonzero: open servers only
    std::int32_t FilterPing = 1;     // 20, 50 or 100 filter; any other value does not
    std::int32_t PingTimeout = 1000; // milliseconds
    std::int32_t FavoritesNumber = 2;
    std::array<std::string, MaxFavoritesFolders + 1> FavoriteNames; // 1..9 are used
    std::int32_t QuitAfterStart = 0;

    // Quarn.ini exists but could not be read, so that the settings are the defaults. The file is not changed.
    bool SettingsUnreadable = false;

    // Extras ("Quarn.ini", section "Extras"): off by default, and then not in the file.
    std::int32_t Simultaneous = 1;   // servers asked at once, 1 to MostSimultaneous
    std::int32_t SaveListAtExit = 0; // the list shown is saved at the end and before it is reloaded
    std::int32_t ListOnce = 0;       // an address from a master that is already listed is not added again
    std::int32_t NaturalSort = 0;    // sorts Players by number, never visited before visited
    std::int32_t KeepSorted = 0;     // rows stay in the sort order
    std::int32_t ShowAtStart = 0;    // the window opens normal where WinState says minimized
    std::int32_t SearchBox = 0;      // a search box in the toolbar filters the list
    std::int32_t AskMasterFirst = 0; // "Renew" keeps the list until the master answers
    std::int32_t AskPassword = 0;    // joining a locked server asks for a missing password
    std::string ColumnWidths;        // that the user gave the lists, see views/ColumnWidths.h
};

// Name of a favorites folder; a number outside 0..9 is error 9.
std::string& FavoriteName(ProgramState& program, std::int32_t folder);

} // namespace quarn
