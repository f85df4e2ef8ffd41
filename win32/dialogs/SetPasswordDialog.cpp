#include "win32/dialogs/SetPasswordDialog.h"

#include "win32/resources/ids.h"

namespace quarn {

void SetPasswordDialog::OnInit() {
    form_.Form_Load();
    SetItemText(ID_txtPass, form_.txtPass);
}

// The default button; Enter in the field comes here as well.
void SetPasswordDialog::OnOK() {
    form_.txtPass = ItemText(ID_txtPass);
    form_.cmdOK_Click();
}

} // namespace quarn
