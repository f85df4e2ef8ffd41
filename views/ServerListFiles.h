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

#include <set>
#include <string>

namespace quarn {

class ServerListFiles {
  public:
    ServerListFiles(ProgramState& program, Files& files, CommandGate& gate)
        : program_(program), files_(files), gate_(gate) {}

    // Replaces Servers by the list's file and ServerCount by the count it states. Any damage, or no file,
    // gives an empty list, silently. Lets events run once for each entry.
    void LoadServerList(const std::string& listName);

    // Replaces the list's file by Servers, as one step. A file that could not be read is kept beside as
    // "servers-<list>.bak". Errors are left to the caller.
    void SaveServerList(const std::string& listName);

    std::string PathOf(const std::string& listName) const;

  private:
    OneBased<ServerRecord> ReadList(const std::string& content);
    std::string WriteList();

    ProgramState& program_;
    Files& files_;
    CommandGate& gate_;
    std::set<std::string> unreadable_; // lists whose file is there but could not be read
};

} // namespace quarn
