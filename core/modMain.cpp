#include "core/modMain.h"

#include "base/Succeeds.h"
#include "core/Version.h"
#include "core/modFileHelper.h"
#include "core/modXPCompat.h"
#include "query/clsIPLocation.h"
#include "support/Trap.h"
#include "support/clsAppLog.h"

namespace quarn {

namespace {

constexpr const char* FolderWithoutName =
    "Quarn cannot use its own folder: the folder's name holds characters that Windows cannot express in its "
    "language for programs without Unicode.\r\n"
    "Please move Quarn to a folder with another name, for example C:\\Quarn.";

// The maintainer's mailbox, in a domain that is reserved for examples; distributors set their own.
constexpr const char* SupportAddress = "support@quarn.example";

} // namespace

bool Main(ProgramState& program, Desktop& desktop, const std::function<void()>& showMainWindow) {
    if (!Succeeds([&] {
            program.AppPath = WithTrailingBackslash(desktop.locale, desktop.files.ProgramFolder());
        })) {
        clsAppLog(desktop, {}).ErrorMessage(FolderWithoutName); // there is no folder for the log
        return false;
    }
    program.AppLog = std::make_unique<clsAppLog>(desktop, program.AppPath);
    clsAppLog& log = *program.AppLog;
    log.NotifyEmailAddress = SupportAddress;

    bool windowShown = false;
    Trapped(log, "modMain", "Main", OnError::LogAndShow, [&] {
        log.Log("modMain", "Main", 0, "Application startup, initializing", false, false, true);
        if (desktop.system.AlreadyRunning(ApplicationTitle)) {
            desktop.system.ShowRunningInstance();
            log.Log("modMain", "Main", 0, std::string(ApplicationTitle) + " is already running.");
            return;
        }
        InitCommonControlsVB(desktop.system);
        program.IPLocation =
            std::make_unique<clsIPLocation>(desktop.files, program.AppPath + "countryip.dat");
        LoadGamesIniGeneral(program, desktop);
        LoadSettings(program, desktop);
        LoadGamesIniSections(program, desktop);
        showMainWindow();
        windowShown = true;
    });
    return windowShown;
}

} // namespace quarn
