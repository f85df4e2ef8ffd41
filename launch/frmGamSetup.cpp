#include "launch/frmGamSetup.h"

#include "controls/Keys.h"
#include "core/modCommonSubs.h"
#include "launch/modGameStart.h"
#include "support/Trap.h"
#include "support/modFolderBrowse.h"

#include <algorithm>
#include <utility>

namespace quarn {

namespace {

constexpr const char* FormName = "frmGamSetup";

} // namespace

std::string DefinitionVersionText(std::int32_t IniVer) {
    const std::string digits = std::to_string(IniVer);
    const std::string middle = digits.substr(std::min<std::size_t>(1, digits.size()), 2);
    const std::string last = digits.substr(digits.size() - std::min<std::size_t>(4, digits.size()));
    return digits.substr(0, 1) + "." + middle + "." + last;
}

frmGamSetup::frmGamSetup(ProgramState& program, Desktop& desktop, RefreshFunction refreshTreeView,
                         CloseFunction close, std::string game)
    : program_(program),
      desktop_(desktop),
      refreshTreeView_(std::move(refreshTreeView)),
      close_(std::move(close)),
      game_(std::move(game)) {}

void frmGamSetup::Form_Load() {
    Trapped(*program_.AppLog, FormName, "Form_Load", OnError::LogAndShow, [&] {
        working_.Reset(program_.GameNum);
        for (std::int32_t i = 1; i <= program_.GameNum; ++i) {
            working_[i] = {program_.GamePath[i], program_.GameConfig[i], program_.GamePlayerName[i],
                           program_.GameVisible[i]};
            AddItem(program_.Games[i]);
        }
        lblDefinition = program_.IniDesc;
        lblDefVersion = DefinitionVersionText(program_.IniVer);
        if (!HasSelection())
            return;
        const bool isListed =
            !game_.empty() && std::any_of(lvwGameSel.begin(), lvwGameSel.end(),
                                          [this](const GameItem& item) { return item.key == game_; });
        lvwGameSel_ItemClick(isListed ? std::string(game_) : lvwGameSel.front().key);
    });
}

// A second game with the same key could never be selected: the key means the first one.
void frmGamSetup::AddItem(const GameDefinition& game) {
    const bool isTaken = std::any_of(lvwGameSel.begin(), lvwGameSel.end(),
                                     [&](const GameItem& item) { return item.key == game.GameShort; });
    Trapped(*program_.AppLog, FormName, "Form_Load", OnError::Log, [&] {
        if (isTaken)
            throw RunTimeError(ErrorNumber::KeyNotUnique);
        lvwGameSel.push_back({game.Description, game.GameShort});
    });
}

frmGamSetup::GameSetup& frmGamSetup::Working() {
    return working_[GameIndexOfShort(program_, game_)];
}

// A launch without a path leaves a lone backslash.
bool frmGamSetup::IsSetUp(const std::string& key) const {
    const std::int32_t index = GameIndexOfShort(program_, key);
    return working_.Holds(index) && !working_[index].path.empty() && working_[index].path != "\\";
}

// Filling a field also fires its handler, which stores the same value again.
void frmGamSetup::lvwGameSel_ItemClick(const std::string& key) {
    Trapped(*program_.AppLog, FormName, "lvwGameSel_ItemClick", OnError::LogAndShow, [&] {
        game_ = key;
        const GameSetup& setup = Working();
        txtPath = setup.path;
        txtPath_Change();
        txtConfig = setup.config;
        txtConfig_Change();
        txtName = setup.name;
        txtName_Change();
        chkVisible = setup.visible != 0 ? 1 : 0;
        chkVisible_Click();
    });
}

void frmGamSetup::txtPath_Change() {
    Trapped(*program_.AppLog, FormName, "txtPath_Change", OnError::LogAndShow,
            [&] { Working().path = txtPath; });
}

void frmGamSetup::txtConfig_Change() {
    Trapped(*program_.AppLog, FormName, "txtConfig_Change", OnError::LogAndShow,
            [&] { Working().config = txtConfig; });
}

void frmGamSetup::txtName_Change() {
    Trapped(*program_.AppLog, FormName, "txtName_Change", OnError::LogAndShow,
            [&] { Working().name = txtName; });
}

void frmGamSetup::chkVisible_Click() {
    Trapped(*program_.AppLog, FormName, "chkVisible_Click", OnError::LogAndShow,
            [&] { Working().visible = chkVisible; });
}

void frmGamSetup::cmdBrowse_Click() {
    Trapped(*program_.AppLog, FormName, "cmdBrowse_Click", OnError::LogAndShow, [&] {
        GameSetup& setup = Working();
        setup.path = BrowseForFolder(desktop_.prompts, program_.AppPath);
        if (GetGameExePath(program_, desktop_, setup.path, game_).empty()) {
            setup.path.clear();
            program_.AppLog->ErrorMessage("The selected game was not found in this directory!");
            return;
        }
        txtPath = setup.path;
        txtPath_Change();
        chkVisible = 1;
        chkVisible_Click();
    });
}

void frmGamSetup::cmdOK_Click() {
    Trapped(*program_.AppLog, FormName, "cmdOK_Click", OnError::LogAndShow, [&] {
        for (std::int32_t i = 1; i <= working_.HighestIndex(); ++i) {
            program_.GamePath[i] = working_[i].path;
            program_.GameConfig[i] = working_[i].config;
            program_.GamePlayerName[i] = working_[i].name;
            program_.GameVisible[i] = working_[i].visible;
        }
        close_();
    });
}

void frmGamSetup::cmdCancel_Click() {
    Trapped(*program_.AppLog, FormName, "cmdCancel_Click", OnError::LogAndShow, [&] { close_(); });
}

void frmGamSetup::Form_KeyDown(int KeyCode) {
    if (KeyCode == EscapeKey)
        cmdCancel_Click();
}

void frmGamSetup::Form_Unload() {
    Trapped(*program_.AppLog, FormName, "Form_Unload", OnError::LogAndShow, [&] { refreshTreeView_(); });
}

} // namespace quarn
