#pragma once

#include "launch/frmSetPassword.h"
#include "win32/dialogs/FormDialog.h"

namespace quarn {

class SetPasswordDialog final : public FormDialog {
  public:
    explicit SetPasswordDialog(frmSetPassword& form) noexcept : FormDialog("frmSetPassword"), form_(form) {}

  private:
    void OnInit() override;
    void OnOK() override;
    void OnCancel() override { form_.cmdCancel_Click(); }

    frmSetPassword& form_;
};

} // namespace quarn
