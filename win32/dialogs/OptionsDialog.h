#pragma once

#include "launch/frmOptions.h"
#include "win32/ToolTips.h"
#include "win32/dialogs/FormDialog.h"

#include <array>
#include <string>

namespace quarn {

// The content of a tab of the Options dialog: a dialog within the dialog, with its frames and fields.
class OptionsPage final : public Dialog {
  public:
    explicit OptionsPage(const char* templateName) noexcept : Dialog(templateName) {}

    using Dialog::FocusItem;
    using Dialog::IsChecked;
    using Dialog::Item;
    using Dialog::ItemText;
    using Dialog::SetChecked;
    using Dialog::SetItemText;
};

class OptionsDialog final : public FormDialog {
  public:
    explicit OptionsDialog(frmOptions& form) noexcept : FormDialog("frmOptions"), form_(form) {}

  private:
    enum Tab { General, Scanning, Interface, Extras, TabCount };

    void OnInit() override;
    LRESULT OnNotify(NMHDR& notification) override;
    bool OnKeyDown(WPARAM key) override;
    void OnOK() override;
    void OnCancel() override { form_.cmdCancel_Click(); }
    void OnDestroy() override { form_.Form_Unload(); }

    void AddTabs();
    void AddPages();
    void ShowTab(int tab) noexcept;
    int ShownTab() const noexcept;
    void ShowFields();
    void TakeFields();
    void FillNumFavorites();
    void AddToolTips();
    void ShowAgain(OptionsPage& page, Tab tab, int field);

    frmOptions& form_;
    std::array<OptionsPage, TabCount> pages_{
        OptionsPage("frmOptionsGeneral"), OptionsPage("frmOptionsScanning"),
        OptionsPage("frmOptionsInterface"), OptionsPage("frmOptionsExtras")};
    OptionsPage& general_ = pages_[General];
    OptionsPage& scanning_ = pages_[Scanning];
    OptionsPage& interface_ = pages_[Interface];
    OptionsPage& extras_ = pages_[Extras];
    ToolTips toolTips_;
};

} // namespace quarn
