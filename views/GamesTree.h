#pragma once

// The tree that selects what is shown: games with their MODs, favorites folders, filters. Node keys: a game's
// GameShort, "mod" and its number, "fav" and its folder number, "flt..." and "png..." for filters, and the
// fixed folders "games", "favorites" and "filters". The key of a game or folder is also the name of its list
// file.

#include "views/MainFormContext.h"
#include "views/ServerListFiles.h"
#include "views/ServerListView.h"

#include <cstdint>
#include <exception>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

class GamesTree {
  public:
    GamesTree(const MainFormContext& form, ServerListView& servers, ServerListFiles& listFiles);

    // The nodes that exist during the whole run, positions 1 to 8.
    void AddFixedNodes();

    // Rebuilds the game, MOD and favorites nodes; keeps selection and expansion by key.
    void RefreshTreeView();

    // Captions and visibility of the Add to Favorites entries.
    void RefreshFavMenu();

    void trvGames_NodeClick(const std::string& key);

    // The keyboard has moved the selection to the node. The list of a game, MOD or favorites folder is shown
    // when the selection stays there for a while; folders and filters react to Space, Enter or a click.
    void trvGames_SelectedByKeyboard(const std::string& key);

    // Renames a favorites folder: the given one, or the selected one.
    void mnuTreeRename_Click() { mnuTreeRename_Click(form_.controls.trvGames.SelectedKey()); }
    void mnuTreeRename_Click(const std::string& key);
    static bool CanRename(std::string_view key) noexcept;

    // Appends every server of the rows to a folder's list, in the order of the rows.
    void mnuServAddToFavorites_Click(std::int32_t Index, GivenRows rows = {});

    // At the end of the program: LastGame becomes the node whose list is shown; list and file do not change.
    void RecordSelection();

    // Saves the list that is shown, as showing another one does: not while a MOD filter is on.
    void SaveShownList();

    // Whether the node is that of a game, a MOD or a favorites folder.
    static bool IsListNode(std::string_view key) noexcept;

    // Key of the node whose list is shown, and that list's name; empty before the first selection.
    const std::string& ShownNode() const noexcept { return shownNode_; }
    const std::string& ShownList() const noexcept { return shownList_; }

    // The tree's name for the list that is shown.
    std::string ShownListText() const;

  private:
    static bool IsFilterNode(std::string_view key) noexcept;
    void SetGameFilter(const std::string& key);
    void ShowRestingNode();
    void MarkShownNode();
    void ToggleLockFilter(TreeNode& node);
    void TogglePingFilter(TreeNode& node);
    void SetCommandsFor(const std::string& listName);
    void AddGameNodes();
    void AddModNodes();
    void AddFavoritesNodes();
    void AddListNode(TreeNode node, std::initializer_list<std::string> images);
    std::vector<ServerRecord> CopiesOf(const TargetRows& targets) const;
    void AppendToList(const std::string& listName, const std::vector<ServerRecord>& servers);
    void TellGamesAreNotKept(const std::exception_ptr& failure);

    MainFormContext form_;
    ServerListView& servers_;
    ServerListFiles& listFiles_;
    std::string restingNode_; // selected by the keyboard, but not shown yet
    std::string shownNode_;
    std::string shownList_;
};

} // namespace quarn
