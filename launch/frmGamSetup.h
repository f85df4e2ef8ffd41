#pragma once

// The Game Setup dialog: where each game is installed, what is passed to it at a launch, and whether the tree
// shows it. It works on copies; OK puts them into the settings.

#include "core/modDefinitions.h"
#include "desktop/Desktop.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quarn {

class frmGamSetup {
  public:
    using RefreshFunction = std::function<void()>; // the main window's tree
    using CloseFunction = std::function<void()>;

    // `game` is the GameShort of the game to begin with; without one, or an unknown one, it is the first.
    frmGamSetup(ProgramState& program, Desktop& desktop, RefreshFunction refreshTreeView, CloseFunction close,
                std::string game = {});

    struct GameItem {
        std::string text;
        std::string key; // the game's GameShort
    };
    std::vector<GameItem> lvwGameSel;

    // The fields of the selected game.
    std::string txtPath;
    std::string txtConfig;
    std::string txtName;
    std::int32_t chkVisible = 0; // 0 or 1

    std::string lblDefinition;
    std::string lblDefVersion;

    // Key of the selected item, and whether there is one. Without one, the fields belong to no game and are
    // disabled.
    const std::string& SelectedGame() const noexcept { return game_; }
    bool HasSelection() const noexcept { return !lvwGameSel.empty(); }

    // Whether the dialog holds a path of the game now.
    bool IsSetUp(const std::string& key) const;

    void Form_Load();
    void lvwGameSel_ItemClick(const std::string& key);

    // Each stores the field's current value in the working copy.
    void txtPath_Change();
    void txtConfig_Change();
    void txtName_Change();
    void chkVisible_Click();

    void cmdBrowse_Click();
    void cmdOK_Click();
    void cmdCancel_Click();
    void Form_KeyDown(int KeyCode);
    void Form_Unload();

  private:
    struct GameSetup {
        std::string path;
        std::string config;
        std::string name;
        std::int32_t visible = 0;
    };

    GameSetup& Working();
    void AddItem(const GameDefinition& game);

    ProgramState& program_;
    Desktop& desktop_;
    RefreshFunction refreshTreeView_;
    CloseFunction close_;
    OneBased<GameSetup> working_;
    std::string game_;
};

// "1050012" becomes "1.05.0012": the first character, the next two, and the last four, whatever the length.
std::string DefinitionVersionText(std::int32_t IniVer);

} // namespace quarn
