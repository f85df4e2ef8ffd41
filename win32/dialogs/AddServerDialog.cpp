#include "win32/dialogs/AddServerDialog.h"

#include "win32/resources/ids.h"

namespace quarn {

// The default button, so Enter in a field comes here as well.
void AddServerDialog::OnOK() {
    form_.txtIP = ItemText(ID_txtIP);
    form_.txtPort = ItemText(ID_txtPort);
    form_.cmdOK_Click();
    FocusItem(ID_txtIP);
}

} // namespace quarn
