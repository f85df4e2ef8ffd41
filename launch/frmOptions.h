#pragma once

// The Options dialog: the user's preferences. It edits the settings in memory; they are written to the
// settings file at a clean exit.

#include "core/modDefinitions.h"
#include "desktop/Desktop.h"

#include <cstdint>
#include <functional>
#include <string>

namespace quarn {

class frmOptions {
  public:
    // What the main window does when the dialog has closed, in this order.
    struct MainWindow {
        std::function<void()> RefreshInterface;
        std::function<void()> RefreshTreeView;
        std::function<void()> RefreshFavMenu;
    };
    using CloseFunction = std::function<void()>;

    frmOptions(ProgramState& program, Desktop& desktop, MainWindow mainWindow, CloseFunction close);

    static constexpr std::int32_t NoChoice = -1;

    // Check boxes: 0 or 1.
    std::int32_t chkMinToTray = 0;
    std::int32_t chkRemWinPos = 0;
    std::int32_t chkKeepOnTop = 0;
    std::string txtScanPingTimeout;
    std::int32_t optQuitAfterLaunch = NoChoice; // index of the chosen option, which is the setting's value
    std::int32_t cmbNumFavorites = NoChoice;    // index of the chosen entry; entry 0 reads "1"

    // The dialog stayed open because of this field. The window shows it, focuses it, selects its text, and
    // then resets this.
    bool txtScanPingTimeoutWrong = false;

    void Form_Load();
    void cmdOK_Click();
    void cmdCancel_Click();
    void Form_KeyDown(int KeyCode);
    void Form_Unload();

  private:
    ProgramState& program_;
    Desktop& desktop_;
    MainWindow mainWindow_;
    CloseFunction close_;
};

} // namespace quarn
