#include "win32/dialogs/ModalFormsWin.h"

#include "win32/dialogs/AboutDialog.h"
#include "win32/dialogs/AddServerDialog.h"
#include "win32/dialogs/GameSetupDialog.h"
#include "win32/dialogs/OptionsDialog.h"
#include "win32/dialogs/SetPasswordDialog.h"

#include <utility>

namespace quarn {

namespace {

// Takes the place of what stands in a variable for as long as this lives.
class Replacement {
  public:
    Replacement(FormDialog*& place, FormDialog& dialog)
        : place_(place), outer_(std::exchange(place, &dialog)) {}
    ~Replacement() { place_ = outer_; }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

  private:
    FormDialog*& place_;
    FormDialog* outer_;
};

} // namespace

void ModalFormsWin::Show(FormDialog&& dialog, bool topMost) {
    const Replacement innermost(open_, dialog);
    dialog.ShowModal(owner_.ForBox(), topMost);
}

void ModalFormsWin::ShowModal(frmAbout& form, bool topMost) {
    Show(AboutDialog(form), topMost);
}

void ModalFormsWin::ShowModal(frmAddServer& form, bool topMost) {
    Show(AddServerDialog(form), topMost);
}

void ModalFormsWin::ShowModal(frmGamSetup& form, bool topMost) {
    Show(GameSetupDialog(form), topMost);
}

void ModalFormsWin::ShowModal(frmOptions& form, bool topMost) {
    Show(OptionsDialog(form), topMost);
}

void ModalFormsWin::ShowModal(frmSetPassword& form, bool topMost) {
    Show(SetPasswordDialog(form), topMost);
}

void ModalFormsWin::Unload() {
    if (open_ != nullptr)
        open_->Unload();
}

} // namespace quarn
