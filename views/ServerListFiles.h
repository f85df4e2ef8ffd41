#pragma once

// Server lists on disk: "servers-<list>.dat" in the program's folder, one for each game and each favorites
// folder.
//
// The file is text in the system's code page with CR LF line ends. Line 1 is the number of entries with one
// leading blank; then one line for each entry, fields separated by ";" without quoting:
//   Address;Port;Country;Name;Ping;Players;MaxPlayers;ModName;Map;Locked;Password;Variables;LastVisit
// The writer leaves the password field empty and puts the password directly in front of the variables: a
// password lives only while the program runs and is never stored as a field of its own. LastVisit is the
// number of seconds since 1900-01-01 local time, empty for never.

#include "core/modDefinitions.h"
#include "desktop/Files.h"
#include "views/CommandGate.h"
#include "views/FavoriteGames.h"

#include <exception>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace quarn {

class ServerListFiles {
  public:
    ServerListFiles(ProgramState& program, Files& files, CommandGate& gate)
        : program_(program), files_(files), gate_(gate), games_(program, files) {}

    // Replaces Servers by the list's file and ServerCount by the count it states. Any damage, no file, or a
    // file that cannot be read gives an empty list, silently. Lets events run once for each entry. Favorites
    // get the games that are noted for them.
    void LoadServerList(const std::string& listName);

    // Throws the error that the last load met when it read the list's file. Returns if the file was read,
    // even if it was damaged, or if there was none.
    void RequireRead(const std::string& listName) const;

    // Replaces the list's file by Servers, as one step. A file that the last load could not make out is kept
    // first: as "servers-<list>.bak", or where that name is taken as "servers-<list>.2.bak" and so on. A file
    // that the last load could not read is not replaced by an empty list: the load's error is thrown again.
    // Errors are left to the caller. The games of favorites that are not in the list any more are forgotten,
    // but not while the file that is kept may hold them.
    void SaveServerList(const std::string& listName);

    // The same for a list that is about to be replaced by another. If an empty list cannot be saved, nothing
    // is lost: the error is only logged.
    void SaveBeforeLeaving(const std::string& listName);

    // Notes the games of servers that were added to a favorites list. Errors are left to the caller.
    void NoteGames(const std::string& listName, const std::vector<ServerRecord>& added) {
        games_.Add(listName, added);
    }

    std::string PathOf(const std::string& listName) const;

  private:
    OneBased<ServerRecord> ReadList(const std::string& content);
    std::string WriteList();
    void KeepExisting(const std::string& listName);
    void ReadGames(const std::string& listName, OneBased<ServerRecord>& list);
    void ForgetGames(const std::string& listName);

    ProgramState& program_;
    Files& files_;
    CommandGate& gate_;
    FavoriteGames games_;
    std::set<std::string> damaged_; // lists whose file was read but could not be parsed
    std::map<std::string, std::exception_ptr> unreadable_; // lists whose file could not be read, and why
};

} // namespace quarn
