#include "win32/dialogs/AddServerDialog.h"

#include "win32/resources/ids.h"

namespace quarn {

void AddServerDialog::OnInit() {
    SetItemText(ID_lblList, form_.lblList);
    form_.MessageChanged = [this] { SetItemText(ID_lblMessage, form_.lblMessage); };
}

// The default button; Enter in a field comes here as well.
void AddServerDialog::OnOK() {
    form_.txtIP = ItemText(ID_txtIP);
    form_.txtPort = ItemText(ID_txtPort);
    form_.cmdOK_Click();
    if (!form_.Closed())
        FocusItem(form_.focus == AddressField::Port ? ID_txtPort : ID_txtIP);
}

} // namespace quarn
