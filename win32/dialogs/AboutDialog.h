#pragma once

#include "support/frmAbout.h"
#include "win32/dialogs/FormDialog.h"

namespace quarn {

class AboutDialog final : public FormDialog {
  public:
    explicit AboutDialog(frmAbout& form) noexcept : FormDialog("frmAbout"), form_(form) {}

  private:
    void OnInit() override;
    void OnCommand(int id, int notification) override;
    void OnOK() override { form_.cmdOK_Click(); }
    void OnCancel() override { form_.cmdOK_Click(); }

    frmAbout& form_;
};

} // namespace quarn
