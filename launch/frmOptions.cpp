#include "launch/frmOptions.h"

#include "base/Succeeds.h"
#include "controls/Keys.h"
#include "support/Trap.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace quarn {

namespace {

constexpr const char* FormName = "frmOptions";
constexpr std::int32_t LastQuitAction = 2;

std::int32_t CheckValue(bool checked) {
    return checked ? 1 : 0;
}

// Nothing unless the text is a 32-bit whole number in the user's locale.
std::optional<std::int32_t> WholeNumber(const LocaleText& locale, const std::string& text) {
    std::optional<std::int32_t> number;
    Succeeds([&] { number = locale.ToLong(text); });
    return number;
}

} // namespace

frmOptions::frmOptions(ProgramState& program, Desktop& desktop, MainWindow mainWindow, CloseFunction close)
    : program_(program), desktop_(desktop), mainWindow_(std::move(mainWindow)), close_(std::move(close)) {}

// A settings file may contain any number; each control shows what the number does.
void frmOptions::Form_Load() {
    Trapped(*program_.AppLog, FormName, "Form_Load", OnError::LogAndShow, [&] {
        chkMinToTray = CheckValue(program_.MinToTray != 0);
        chkRemWinPos = CheckValue(program_.RemWinPos == 1);
        chkKeepOnTop = CheckValue(program_.KeepOnTop == 1);
        txtScanPingTimeout = std::to_string(program_.PingTimeout);
        const std::int32_t action = program_.QuitAfterStart;
        optQuitAfterLaunch = action >= 0 && action <= LastQuitAction ? action : NoChoice;
        cmbNumFavorites = program_.FavoritesNumber < 1
                              ? NoChoice
                              : std::min(program_.FavoritesNumber, MaxFavoritesFolders) - 1;
    });
}

void frmOptions::cmdOK_Click() {
    Trapped(*program_.AppLog, FormName, "cmdOK_Click", OnError::LogAndShow, [&] {
        const std::optional<std::int32_t> timeout = WholeNumber(desktop_.locale, txtScanPingTimeout);
        if (!timeout) {
            program_.AppLog->ErrorMessage("The scan timeout must be a whole number of milliseconds!");
            txtScanPingTimeoutWrong = true;
            return;
        }
        program_.MinToTray = chkMinToTray;
        program_.RemWinPos = chkRemWinPos;
        program_.KeepOnTop = chkKeepOnTop;
        program_.PingTimeout = *timeout;
        if (optQuitAfterLaunch != NoChoice)
            program_.QuitAfterStart = optQuitAfterLaunch;
        program_.FavoritesNumber = cmbNumFavorites + 1;
        close_();
    });
}

void frmOptions::cmdCancel_Click() {
    Trapped(*program_.AppLog, FormName, "cmdCancel_Click", OnError::LogAndShow, [&] { close_(); });
}

void frmOptions::Form_KeyDown(int KeyCode) {
    if (KeyCode == EscapeKey)
        cmdCancel_Click();
}

void frmOptions::Form_Unload() {
    Trapped(*program_.AppLog, FormName, "Form_Unload", OnError::LogAndShow, [&] {
        mainWindow_.RefreshInterface();
        mainWindow_.RefreshTreeView();
        mainWindow_.RefreshFavMenu();
    });
}

} // namespace quarn
