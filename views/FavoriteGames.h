#pragma once

// The games of favorites, in "Favorites.ini" in the program's folder. A list file does not say which game its
// servers are of, and a favorites folder may hold servers of several games.
//
// The file is an INI file: a section for each favorites list ("fav1" to "fav9"), in it a key "address:port"
// for each address whose game is known, its value the game's GameShort. Section names compare without case;
// blanks around names, keys and values do not count. Where a key stands twice in a list's sections, the first
// one counts. Two entries of one address in a list share the key, and so the game.
//
// Lines that are none of this stay as they are when the file is written. A file that cannot be read is never
// written, because its lines would be lost.

#include "core/modDefinitions.h"
#include "desktop/Files.h"

#include <string>
#include <string_view>
#include <vector>

namespace quarn {

class FavoriteGames {
  public:
    // Both must outlive this object.
    FavoriteGames(const ProgramState& program, Files& files) : program_(program), files_(files) {}

    // Whether servers of the list can have a game of their own.
    static bool IsFavoritesList(std::string_view listName) noexcept;

    // Sets the game of each server of the list: 0 if the file names none that is in the definitions. Errors
    // of the file are left to the caller, here and below; then nothing is changed.
    void Read(const std::string& listName, OneBased<ServerRecord>& servers) const;

    // Stores the games of servers that were added to the list. Servers without one change nothing.
    void Add(const std::string& listName, const std::vector<ServerRecord>& servers);

    // Removes the addresses that are no longer in the list.
    void RemoveOthers(const std::string& listName, const OneBased<ServerRecord>& servers);

  private:
    std::string Path() const { return program_.AppPath + "Favorites.ini"; }

    const ProgramState& program_;
    Files& files_;
};

} // namespace quarn
