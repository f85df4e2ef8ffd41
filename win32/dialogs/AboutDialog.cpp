#include "win32/dialogs/AboutDialog.h"

#include "win32/resources/ids.h"

namespace quarn {

void AboutDialog::OnInit() {
    form_.Form_Load();
    SetItemText(ID_lblVersion, form_.lblVersion);
}

void AboutDialog::OnCommand(int id, int notification) {
    if (id == ID_cmdSystemInfo && notification == BN_CLICKED)
        form_.cmdSystemInfo_Click();
}

} // namespace quarn
