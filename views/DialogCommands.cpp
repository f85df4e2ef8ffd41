#include "views/DialogCommands.h"

#include "launch/frmGamSetup.h"
#include "launch/frmOptions.h"
#include "launch/frmSetPassword.h"
#include "query/frmAddServer.h"
#include "support/Trap.h"
#include "support/frmAbout.h"

#include <string>

namespace quarn {

// The box before it may have been closed because the program ends.
template<class Form>
void DialogCommands::Show(Form& form) {
    if (!form_.gate.Closing())
        forms_.ShowModal(form, form_.program.KeepOnTop == 1);
}

void DialogCommands::mnuServSetPass_Click() {
    form_.Command(CommandKind::Ordinary, "mnuServSetPass_Click", OnError::LogAndShow, [this] {
        if (!servers_.TakeSelectedServer())
            return;
        frmSetPassword form(form_.program, CloseDialog());
        Show(form);
    });
}

void DialogCommands::mnuServAdd_Click() {
    form_.Command(CommandKind::Ordinary, "mnuServAdd_Click", OnError::LogAndShow, [this] {
        frmAddServer form(
            form_.program, form_.desktop,
            [this](const std::string& IP, const std::string& strPort) { servers_.AddServer(IP, strPort); },
            CloseDialog());
        Show(form);
    });
}

void DialogCommands::mnuExtrasGameSetup_Click() {
    form_.Command(CommandKind::Ordinary, "mnuExtrasGameSetup_Click", OnError::LogAndShow,
                  [this] { ShowGameSetup(); });
}

void DialogCommands::ShowGameSetup() {
    frmGamSetup form(
        form_.program, form_.desktop, [this] { tree_.RefreshTreeView(); }, CloseDialog());
    Show(form);
}

void DialogCommands::mnuExtrasOptions_Click() {
    form_.Command(CommandKind::Ordinary, "mnuExtrasOptions_Click", OnError::LogAndShow, [this] {
        frmOptions form(
            form_.program, form_.desktop,
            {refreshInterface_, [this] { tree_.RefreshTreeView(); }, [this] { tree_.RefreshFavMenu(); }},
            CloseDialog());
        Show(form);
    });
}

void DialogCommands::mnuInfoAbout_Click() {
    form_.Command(CommandKind::Ordinary, "mnuInfoAbout_Click", OnError::LogAndShow, [this] {
        frmAbout form(form_.program, form_.desktop, CloseDialog());
        Show(form);
    });
}

} // namespace quarn
