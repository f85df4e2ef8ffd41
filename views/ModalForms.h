#pragma once

// Shows the program's forms as modal dialogs that the main window owns. A form knows nothing of its window:
// the dialog shows the form's state, stores the user's input in it and calls the form's handlers.

namespace quarn {

class frmAbout;
class frmAddServer;
class frmGamSetup;
class frmOptions;
class frmSetPassword;

class ModalForms {
  public:
    virtual ~ModalForms() = default;

    // Returns when the dialog is closed. A form's Form_Load, if any, runs before it is visible, its
    // Form_Unload after it was closed in any way.
    virtual void ShowModal(frmAbout& form, bool topMost) = 0;
    virtual void ShowModal(frmAddServer& form, bool topMost) = 0;
    virtual void ShowModal(frmGamSetup& form, bool topMost) = 0;
    virtual void ShowModal(frmOptions& form, bool topMost) = 0;
    virtual void ShowModal(frmSetPassword& form, bool topMost) = 0;

    // Closes the dialog that was opened last.
    virtual void Unload() = 0;
};

} // namespace quarn
