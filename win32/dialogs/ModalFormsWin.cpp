#include "win32/dialogs/ModalFormsWin.h"

#include "base/Scope.h"
#include "win32/dialogs/AboutDialog.h"
#include "win32/dialogs/AddServerDialog.h"
#include "win32/dialogs/GameSetupDialog.h"
#include "win32/dialogs/OptionsDialog.h"
#include "win32/dialogs/SetPasswordDialog.h"

namespace quarn {

void ModalFormsWin::Show(FormDialog&& dialog, bool topMost) {
    const Restore innermost(open_, &dialog);
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
