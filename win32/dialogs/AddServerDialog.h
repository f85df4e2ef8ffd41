#pragma once

#include "query/frmAddServer.h"
#include "win32/dialogs/FormDialog.h"

namespace quarn {

// Stays open after OK, for one server after another.
class AddServerDialog final : public FormDialog {
  public:
    explicit AddServerDialog(frmAddServer& form) noexcept : FormDialog("frmAddServer"), form_(form) {}

  private:
    void OnInit() override;
    void OnOK() override;
    void OnCancel() override { form_.cmdCancel_Click(); }
    void OnDestroy() override { form_.MessageChanged = nullptr; }

    frmAddServer& form_;
};

} // namespace quarn
