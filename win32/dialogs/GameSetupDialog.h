#pragma once

#include "launch/frmGamSetup.h"
#include "win32/Images.h"
#include "win32/ToolTips.h"
#include "win32/dialogs/FormDialog.h"

namespace quarn {

class GameSetupDialog final : public FormDialog {
  public:
    explicit GameSetupDialog(frmGamSetup& form) noexcept : FormDialog("frmGamSetup"), form_(form) {}

  private:
    void OnInit() override;
    void OnCommand(int id, int notification) override;
    LRESULT OnNotify(NMHDR& notification) override;
    void OnOK() override { form_.cmdOK_Click(); }
    void OnCancel() override { form_.cmdCancel_Click(); }
    void OnDestroy() override { form_.Form_Unload(); }

    void FillGameList();
    int MarkOf(const frmGamSetup::GameItem& game) const;
    int SelectedGame() const;
    void SelectGame(int index) noexcept;
    void ShowMark();
    LRESULT OnCustomDraw(NMLVCUSTOMDRAW& stage) const;
    void AddToolTips();
    void ShowFields();
    void TakeField(int id);
    void GameSelected(int index);

    frmGamSetup& form_;
    ToolTips toolTips_;
    Images images_;              // outlives the list, which does not own it
    bool showingFields_ = false; // changes reported meanwhile are not the user's
};

} // namespace quarn
