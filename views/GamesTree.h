#pragma once

// The tree that chooses what is shown: games with their MODs, favorites folders, filters. Node keys are its
// vocabulary: a game's GameShort, "mod" and its number, "fav" and its folder number, "flt..." and "png..."
// for filters, and the fixed folders "games", "favorites" and "filters". The key of a game or folder is also
// the name of its list file.

#include "views/MainFormContext.h"
#include "views/ServerListFiles.h"
#include "views/ServerListView.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace quarn {

class GamesTree {
  public:
    GamesTree(const MainFormContext& form, ServerListView& servers, ServerListFiles& listFiles);

    // The nodes that are there for the whole run, positions 1 to 8.
    void AddFixedNodes();

    // Rebuilds the game, MOD and favorites nodes; keeps selection and expansion by key.
    void RefreshTreeView();

    // Captions and visibility of the Add to Favorites entries.
    void RefreshFavMenu();

    void trvGames_NodeClick(const std::string& key);
    void mnuTreeRename_Click();
    void mnuServAddToFavorites_Click(std::int32_t Index);

    // At shut-down: the selected node becomes LastGame; list and file stay as they are.
    void RecordSelection();

    // Whether a click on the node switches a filter instead of the list.
    static bool IsFilterNode(std::string_view key) noexcept;

    // Name of the list in force; empty before the first selection.
    const std::string& ShownList() const noexcept { return shownList_; }

  private:
    void SetGameFilter(const std::string& key);
    void ToggleLockFilter(TreeNode& node);
    void TogglePingFilter(TreeNode& node);
    void RelistServers();
    void SetCommandsFor(const std::string& listName);
    void AddGameNodes();
    void AddModNodes();
    void AddFavoritesNodes();
    void AddOrLog(TreeNode node);
    void AppendToList(const std::string& listName, const ServerRecord& server);

    MainFormContext form_;
    ServerListView& servers_;
    ServerListFiles& listFiles_;
    std::string shownNode_;
    std::string shownList_;
};

} // namespace quarn
