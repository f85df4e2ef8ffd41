#include "views/DialogCommands.h"

#include "launch/frmGamSetup.h"
#include "launch/frmOptions.h"
#include "launch/frmSetPassword.h"
#include "query/frmAddServer.h"
#include "support/Trap.h"
#include "support/frmAbout.h"

#include <string>

namespace quarn {

// The message box before this may have been closed because the program ends.
template<class Form>
void DialogCommands::Show(Form& form) {
    if (form_.gate.Closing())
        return;
    const CommandGate::DialogActivity open(form_.gate);
    forms_.ShowModal(form, form_.program.KeepOnTop == 1);
}

void DialogCommands::mnuServSetPass_Click(GivenRows rows) {
    servers_.CommandOnServer(CommandKind::Ordinary, "mnuServSetPass_Click", OnError::LogAndShow,
                             std::move(rows),
                             [this](const TargetRows& targets, std::int32_t) { AskPassword(targets); });
}

bool DialogCommands::AskPassword(const TargetRows& targets) {
    const auto server = [&] { return targets.ServerIndex(form_.controls.lvwServers, form_.program); };
    frmSetPassword form(form_.program, server, CloseDialog());
    Show(form);
    return form.Accepted();
}

void DialogCommands::mnuServAdd_Click() {
    form_.Command(CommandKind::Ordinary, "mnuServAdd_Click", OnError::LogAndShow,
                  [this] { ShowAddServer(); });
}

// Both commands wait for the scan to end, which the change of lists requests, and run in this order.
void DialogCommands::mnuTreeAddServer_Click(const std::string& node) {
    if (!GamesTree::IsListNode(node) || node == tree_.ShownNode())
        return mnuServAdd_Click();
    tree_.trvGames_NodeClick(node);
    form_.Command(CommandKind::ReplacesList, "mnuTreeAddServer_Click", OnError::LogAndShow, [this, node] {
        if (node == tree_.ShownNode())
            ShowAddServer();
    });
}

void DialogCommands::ShowAddServer() {
    frmAddServer form(
        form_.program, form_.desktop, tree_.ShownListText(),
        {[this](const std::string& IP, const std::string& strPort) {
             return servers_.AddServer(IP, strPort);
         },
         [this](const std::function<bool()>& condition) { return form_.gate.WaitUntil(condition); },
         CloseDialog()});
    Show(form);
}

void DialogCommands::mnuExtrasGameSetup_Click() {
    form_.Command(CommandKind::Ordinary, "mnuExtrasGameSetup_Click", OnError::LogAndShow,
                  [this] { ShowGameSetup(); });
}

void DialogCommands::ShowGameSetup(const std::string& game) {
    frmGamSetup form(
        form_.program, form_.desktop, [this] { tree_.RefreshTreeView(); }, CloseDialog(), game);
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
