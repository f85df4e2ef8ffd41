#include "views/DialogCommands.h"

#include "launch/frmGamSetup.h"
#include "launch/frmOptions.h"
#include "launch/frmSetPassword.h"
#include "query/frmAddServer.h"
#include "support/Trap.h"
#include "support/frmAbout.h"

#include <string>

namespace quarn {

template<class Body>
void DialogCommands::Run(const char* routine, Body body) {
    form_.gate.Run(CommandGate::Kind::Ordinary, [this, routine, body] {
        Trapped(*form_.program.AppLog, MainFormName, routine, OnError::LogAndShow, body);
    });
}

// The box before it may have been closed because the program ends.
template<class Form>
void DialogCommands::Show(Form& form) {
    if (!form_.gate.Closing())
        forms_.ShowModal(form, form_.program.KeepOnTop == 1);
}

void DialogCommands::mnuServSetPass_Click() {
    Run("mnuServSetPass_Click", [this] {
        if (!servers_.TakeSelectedServer())
            return;
        frmSetPassword form(form_.program, CloseDialog());
        Show(form);
    });
}

void DialogCommands::mnuServAdd_Click() {
    Run("mnuServAdd_Click", [this] {
        frmAddServer form(
            form_.program, form_.desktop,
            [this](const std::string& IP, const std::string& strPort) { servers_.AddServer(IP, strPort); },
            CloseDialog());
        Show(form);
    });
}

void DialogCommands::mnuExtrasGameSetup_Click() {
    Run("mnuExtrasGameSetup_Click", [this] { ShowGameSetup(); });
}

void DialogCommands::ShowGameSetup() {
    frmGamSetup form(
        form_.program, form_.desktop, [this] { tree_.RefreshTreeView(); }, CloseDialog());
    Show(form);
}

void DialogCommands::mnuExtrasOptions_Click() {
    Run("mnuExtrasOptions_Click", [this] {
        frmOptions form(
            form_.program, form_.desktop,
            {refreshInterface_, [this] { tree_.RefreshTreeView(); }, [this] { tree_.RefreshFavMenu(); }},
            CloseDialog());
        Show(form);
    });
}

void DialogCommands::mnuInfoAbout_Click() {
    Run("mnuInfoAbout_Click", [this] {
        frmAbout form(form_.program, form_.desktop, CloseDialog());
        Show(form);
    });
}

} // namespace quarn
