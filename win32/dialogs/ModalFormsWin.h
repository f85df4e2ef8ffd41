#pragma once

#include "views/ModalForms.h"
#include "win32/OwnerWindow.h"
#include "win32/dialogs/FormDialog.h"

namespace quarn {

class ModalFormsWin final : public ModalForms {
  public:
    explicit ModalFormsWin(const OwnerWindow& owner) noexcept : owner_(owner) {}

    void ShowModal(frmAbout& form, bool topMost) override;
    void ShowModal(frmAddServer& form, bool topMost) override;
    void ShowModal(frmGamSetup& form, bool topMost) override;
    void ShowModal(frmOptions& form, bool topMost) override;
    void ShowModal(frmSetPassword& form, bool topMost) override;
    void Unload() override;

  private:
    void Show(FormDialog&& dialog, bool topMost);

    const OwnerWindow& owner_;
    FormDialog* open_ = nullptr; // the innermost
};

} // namespace quarn
