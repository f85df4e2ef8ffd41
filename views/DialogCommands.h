#pragma once

// The commands that open one of the program's own dialogs.

#include "views/GamesTree.h"
#include "views/MainFormContext.h"
#include "views/ModalForms.h"
#include "views/ServerListView.h"

#include <functional>
#include <string>
#include <utility>

namespace quarn {

class DialogCommands {
  public:
    // `refreshInterface` applies the window settings to the main window.
    DialogCommands(const MainFormContext& form, ModalForms& forms, ServerListView& servers, GamesTree& tree,
                   std::function<void()> refreshInterface)
        : form_(form),
          forms_(forms),
          servers_(servers),
          tree_(tree),
          refreshInterface_(std::move(refreshInterface)) {}

    void mnuServSetPass_Click(GivenRows rows = {});
    void mnuServAdd_Click();

    // If the node has a list of its own, that list is shown first.
    void mnuTreeAddServer_Click(const std::string& node);
    void mnuExtrasGameSetup_Click();
    void mnuExtrasOptions_Click();
    void mnuInfoAbout_Click();

    // For commands that end in the game setup, with this game selected. Errors are left to the caller.
    void ShowGameSetup(const std::string& game = {});

    // The password of the first of these servers. False if the user cancelled. Errors are left to the caller.
    bool AskPassword(const TargetRows& targets);

  private:
    void ShowAddServer();
    template<class Form>
    void Show(Form& form);
    std::function<void()> CloseDialog() {
        return [this] { forms_.Unload(); };
    }

    MainFormContext form_;
    ModalForms& forms_;
    ServerListView& servers_;
    GamesTree& tree_;
    std::function<void()> refreshInterface_;
};

} // namespace quarn
