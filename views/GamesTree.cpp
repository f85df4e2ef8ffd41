#include "views/GamesTree.h"

#include "base/Conversions.h"
#include "base/Succeeds.h"
#include "core/modCommonSubs.h"
#include "support/Trap.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace quarn {

namespace {

constexpr const char* OpenFolder = "fldrop";
constexpr const char* ClosedFolder = "fldrcls";
constexpr const char* Checked = "checked";
constexpr const char* Unchecked = "unchecked";
constexpr const char* Favorite = "favorite";
constexpr const char* FamilyPrefix = "family-"; // in front of the engine's key

const char* CheckImage(bool on) {
    return on ? Checked : Unchecked;
}

void SetImage(TreeNode& node, const char* image) {
    node.image = node.selectedImage = image;
}

std::string_view Prefix(std::string_view key) {
    return key.substr(0, 3);
}

// The number after a prefix of three characters.
std::int32_t NumberOf(std::string_view key) {
    return ToLong(key.substr(std::min<std::size_t>(3, key.size())));
}

// How long the keyboard's selection must stay on a node before its list is shown.
constexpr std::int32_t RestMilliseconds = 250;

// Folders of the tree that have no list.
bool IsFixedFolder(std::string_view key) {
    return key == "games" || key == "favorites";
}

bool IsFavoritesFolder(std::string_view key) {
    return Prefix(key) == "fav" && !IsFixedFolder(key);
}

std::vector<std::string> ExpandedKeys(const TreeView& tree) {
    std::vector<std::string> keys;
    for (std::int32_t position = 1; position <= tree.Count(); ++position)
        if (tree.At(position).expanded)
            keys.push_back(tree.At(position).key);
    return keys;
}

void RemoveChildren(TreeView& tree, std::string_view key) {
    for (const std::string& child : tree.Children(key))
        tree.Remove(child);
}

} // namespace

bool GamesTree::IsFilterNode(std::string_view key) noexcept {
    return Prefix(key) == "flt" || Prefix(key) == "png";
}

bool GamesTree::IsListNode(std::string_view key) noexcept {
    return !key.empty() && !IsFilterNode(key) && !IsFixedFolder(key) && key != "filters";
}

bool GamesTree::CanRename(std::string_view key) noexcept {
    return IsFavoritesFolder(key);
}

GamesTree::GamesTree(const MainFormContext& form, ServerListView& servers, ServerListFiles& listFiles)
    : form_(form), servers_(servers), listFiles_(listFiles) {
    form_.controls.tmrTreeRest.SetInterval(RestMilliseconds);
    form_.controls.tmrTreeRest.Tick = [this] { ShowRestingNode(); };
}

void GamesTree::AddFixedNodes() {
    TreeView& tree = form_.controls.trvGames;
    const auto add = [&](const char* key, const char* text, const char* parent, const char* image) {
        tree.Add({key, text, parent, image, image});
    };
    const std::int32_t ping = form_.program.FilterPing;
    add("games", "Games", "", OpenFolder);
    add("favorites", "Favorites", "", OpenFolder);
    add("filters", "Filters", "", OpenFolder);
    add("fltkey", "Open servers only", "filters", CheckImage(form_.program.FilterLocked != 0));
    add("fltping", "Ping", "filters", OpenFolder);
    add("png20", "<= 20", "fltping", CheckImage(ping == 20));
    add("png50", "<= 50", "fltping", CheckImage(ping == 50));
    add("png100", "<= 100", "fltping", CheckImage(ping == 100));
    for (const std::int32_t position : {1, 2, 3, 5})
        tree.At(position).expanded = true;
}

void GamesTree::RefreshTreeView() {
    TreeView& tree = form_.controls.trvGames;
    const std::string selected = tree.SelectedKey();
    const std::string selectedParent = tree.Has(selected) ? tree.Node(selected).parent : std::string();
    const std::vector<std::string> expanded = ExpandedKeys(tree);

    form_.Trapped("RefreshTreeView", OnError::LogAndShow, [&] {
        RemoveChildren(tree, "games");
        RemoveChildren(tree, "favorites");
        AddGameNodes();
        AddModNodes();
        AddFavoritesNodes();
    });

    for (const std::string& key : expanded)
        if (tree.Has(key))
            tree.Node(key).expanded = true;
    if (tree.Has(selected))
        tree.Select(selected);
    else if (tree.Has(selectedParent))
        tree.Select(selectedParent);
    else if (!selected.empty())
        tree.Select("games");
    MarkShownNode();
}

void GamesTree::MarkShownNode() {
    TreeView& tree = form_.controls.trvGames;
    for (std::int32_t position = 1; position <= tree.Count(); ++position)
        tree.At(position).bold = tree.At(position).key == shownNode_;
}

std::string GamesTree::ShownListText() const {
    const TreeView& tree = form_.controls.trvGames;
    return tree.Has(shownList_) ? tree.Node(shownList_).text : shownList_;
}

// The first one that there is, else a folder, which is open while it is selected.
void GamesTree::AddListNode(TreeNode node, std::initializer_list<std::string> images) {
    node.image = ClosedFolder;
    node.selectedImage = OpenFolder;
    const std::vector<std::string>& known = form_.controls.trvGames.images;
    for (const std::string& image : images)
        if (std::find(known.begin(), known.end(), image) != known.end()) {
            SetImage(node, image.c_str());
            break;
        }
    // If a key is empty or already exists, only this node is missing, not the rest of the tree.
    form_.Trapped("RefreshTreeView", OnError::Log, [&] { form_.controls.trvGames.Add(std::move(node)); });
}

void GamesTree::AddGameNodes() {
    const ProgramState& program = form_.program;
    for (std::int32_t i = 1; i <= program.GameNum; ++i) {
        if (program.GameVisible[i] == 0)
            continue;
        const GameDefinition& game = program.Games[i];
        AddListNode({game.GameShort, game.Description, "games"},
                    {game.GameShort, FamilyPrefix + game.Engine});
    }
}

void GamesTree::AddModNodes() {
    const ProgramState& program = form_.program;
    const TreeView& tree = form_.controls.trvGames;
    for (std::int32_t m = 1; m <= program.MODNum; ++m) {
        const ModDefinition& mod = program.Mods[m];
        if (tree.Has(mod.BasedGame) && tree.Node(mod.BasedGame).parent == "games")
            AddListNode({"mod" + std::to_string(m), mod.Description, mod.BasedGame}, {});
    }
}

void GamesTree::AddFavoritesNodes() {
    for (std::int32_t i = 1; i <= form_.program.FavoritesNumber; ++i)
        AddListNode({"fav" + std::to_string(i), FavoriteName(form_.program, i), "favorites"}, {Favorite});
}

void GamesTree::RefreshFavMenu() {
    for (std::int32_t i = 1; i <= MaxFavoritesFolders; ++i) {
        MenuEntry& entry = form_.controls.mnuServAddToFavorites[i];
        entry.visible = i <= form_.program.FavoritesNumber;
        if (entry.visible)
            entry.caption = FavoriteName(form_.program, i);
    }
}

void GamesTree::trvGames_SelectedByKeyboard(const std::string& key) {
    restingNode_ = IsListNode(key) && key != shownNode_ ? key : std::string();
    form_.controls.tmrTreeRest.SetEnabled(false); // every move restarts it
    form_.controls.tmrTreeRest.SetEnabled(!restingNode_.empty());
}

void GamesTree::ShowRestingNode() {
    if (!form_.window.TakesInput())
        return; // a dialog works on the current list
    form_.controls.tmrTreeRest.SetEnabled(false);
    const std::string key = std::exchange(restingNode_, {});
    if (key == form_.controls.trvGames.SelectedKey())
        trvGames_NodeClick(key);
}

void GamesTree::trvGames_NodeClick(const std::string& key) {
    form_.controls.tmrTreeRest.SetEnabled(false);
    restingNode_.clear();
    // A click on the current node only saves its list.
    const bool replaces = !IsFilterNode(key) && key != shownNode_;
    const auto kind = replaces ? CommandKind::ReplacesList : CommandKind::Ordinary;
    form_.Command(kind, "trvGames_NodeClick", OnError::LogAndShow, [this, key] {
        TreeView& tree = form_.controls.trvGames;
        if (!tree.Has(key))
            return; // it was removed while the click had to wait
        if (Prefix(key) == "flt") {
            ToggleLockFilter(tree.Node(key));
        } else if (Prefix(key) == "png") {
            TogglePingFilter(tree.Node(key));
        } else {
            SetGameFilter(key);
            form_.program.LastGame = tree.Find(key);
        }
    });
}

void GamesTree::ToggleLockFilter(TreeNode& node) {
    if (node.image == Checked || node.image == Unchecked) {
        form_.program.FilterLocked = node.image == Checked ? 0 : 1;
        SetImage(node, CheckImage(form_.program.FilterLocked != 0));
    }
    servers_.Relist();
}

void GamesTree::TogglePingFilter(TreeNode& node) {
    TreeView& tree = form_.controls.trvGames;
    if (node.image == Checked) {
        SetImage(node, Unchecked);
        form_.program.FilterPing = 0;
    } else if (node.image == Unchecked) { // a game may have the name of a filter
        const std::string other = "png" + std::to_string(form_.program.FilterPing);
        if (form_.program.FilterPing > 0 && tree.Has(other))
            SetImage(tree.Node(other), Unchecked);
        SetImage(node, Checked);
        form_.program.FilterPing = NumberOf(node.key);
    }
    servers_.Relist();
}

void GamesTree::SetGameFilter(const std::string& key) {
    form_.Trapped("SetGameFilter", OnError::LogAndShow, [&] {
        const bool isMod = Prefix(key) == "mod";
        const std::int32_t modFilter = isMod ? NumberOf(key) : 0;
        const std::string listName = isMod ? form_.controls.trvGames.Node(key).parent : key;

        SaveShownList();
        if (listName == shownList_ && modFilter == servers_.ModFilter)
            return;

        if (listName != shownList_)
            form_.controls.sckMaster.Close(); // a master's later replies belong to the list being left
        shownNode_ = key;
        shownList_ = listName;
        servers_.ModFilter = modFilter;
        MarkShownNode();
        SetCommandsFor(listName);
        form_.controls.sckServer.CloseAll();
        listFiles_.LoadServerList(listName);
        form_.program.CurrentGame = listName;
        servers_.Relist();
    });
}

void GamesTree::SaveShownList() {
    if (!shownList_.empty() && servers_.ModFilter == 0)
        listFiles_.SaveBeforeLeaving(shownList_);
}

void GamesTree::SetCommandsFor(const std::string& listName) {
    MainControls& controls = form_.controls;
    const bool isList = !IsFixedFolder(listName);
    const bool isFavorites = IsFavoritesFolder(listName);
    controls.mnuServer.enabled = isList;
    controls.mnuServerList.enabled = isList;
    controls.mnuServerListExport.enabled = isList;
    OneBased<ToolbarButton>& buttons = controls.tbMain.buttons;
    for (std::int32_t position = 1; position <= buttons.HighestIndex(); ++position)
        buttons[position].enabled = isList && !(isFavorites && buttons[position].key == FavoritesButton);
    if (isList)
        controls.mnuServAddToFavorites[1].enabled = !isFavorites;
}

// The node of a game that was hidden meanwhile does not exist any more; then its folder is used.
void GamesTree::RecordSelection() {
    const TreeView& tree = form_.controls.trvGames;
    if (shownNode_.empty())
        return;
    for (const std::string& key : {shownNode_, shownList_, std::string("games")})
        if (tree.Has(key)) {
            form_.program.LastGame = tree.Find(key);
            return;
        }
}

// Cancelling gives a folder an empty name; if the program closes, the name is not changed.
void GamesTree::mnuTreeRename_Click(const std::string& key) {
    form_.Command(CommandKind::Ordinary, "mnuTreeRename_Click", OnError::LogAndShow, [this, key] {
        if (!CanRename(key))
            return;
        std::string& name = FavoriteName(form_.program, NumberOf(key));
        std::string answer = form_.desktop.prompts.AskText("Enter a new name:", "Change name");
        if (form_.gate.Closing())
            return;
        name = std::move(answer);
        RefreshTreeView();
        RefreshFavMenu();
    });
}

void GamesTree::mnuServAddToFavorites_Click(std::int32_t Index, GivenRows rows) {
    servers_.CommandOnServer(CommandKind::ReplacesList, "mnuServAddToFavorites_Click", OnError::LogAndShow,
                             std::move(rows), [this, Index](const TargetRows& targets, std::int32_t) {
                                 AppendToList("fav" + std::to_string(Index), CopiesOf(targets));
                             });
}

std::vector<ServerRecord> GamesTree::CopiesOf(const TargetRows& targets) const {
    const ProgramState& program = form_.program;
    std::vector<ServerRecord> copies;
    for (const std::int32_t index : targets.ServerIndexes(form_.controls.lvwServers, program)) {
        copies.push_back(program.Servers[index]);
        copies.back().Identity = 0;
        copies.back().Game = GameIndexOf(program, program.Servers[index]);
    }
    return copies;
}

void GamesTree::AppendToList(const std::string& listName, const std::vector<ServerRecord>& servers) {
    ProgramState& program = form_.program;
    std::exception_ptr gameFailure;
    // The shown list is read again from its file at the end, which drops what was not saved.
    if (program.SaveListAtExit != 0)
        SaveShownList();
    form_.controls.sckServer.CloseAll();
    listFiles_.LoadServerList(listName);
    // The shown list is always restored: otherwise the next switch would save the folder's servers to its
    // file.
    form_.Trapped("mnuServAddToFavorites_Click", OnError::LogAndShow, [&] {
        listFiles_.RequireRead(listName); // otherwise the folder would contain only this server
        program.ServerCount = program.Servers.HighestIndex();
        for (const ServerRecord& server : servers)
            program.AppendServer() = server;
        listFiles_.SaveServerList(listName);
        gameFailure = FailureOf([&] { listFiles_.NoteGames(listName, servers); });
    });
    listFiles_.LoadServerList(shownList_);
    program.ServerCount = program.Servers.HighestIndex();
    servers_.ShowServerCount();
    if (gameFailure)
        TellGamesAreNotKept(gameFailure);
}

void GamesTree::TellGamesAreNotKept(const std::exception_ptr& failure) {
    form_.Trapped("mnuServAddToFavorites_Click", OnError::Log, [&] { std::rethrow_exception(failure); });
    form_.program.AppLog->ErrorMessage("The file \"Favorites.ini\" could not be read or written.\r\n"
                                       "Quarn has added to the folder what you selected, but will not know "
                                       "there which game it is for.");
}

} // namespace quarn
