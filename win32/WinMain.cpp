// The program's start and end.
//
// Objects are destroyed in reverse order: the window and its form, then the desktop's services, then the
// program's records and its log.

#include "core/modDefinitions.h"
#include "core/modMain.h"
#include "support/Trap.h"
#include "support/clsAppLog.h"
#include "win32/Libraries.h"
#include "win32/MainWindow.h"
#include "win32/SystemError.h"
#include "win32/UncaughtErrors.h"
#include "win32/desktop/WindowsDesktop.h"

#include <memory>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    using namespace quarn;
    RestrictLibrarySearch();
    SuppressDriveMessages();

    ProgramState program;
    SetUncaughtErrorReporter([&program](std::string_view module, std::string_view handler) {
        const CaughtError error = CurrentError();
        if (program.AppLog)
            program.AppLog->Log(module, handler, error.number, error.description, true);
    });

    WindowsDesktop desktop;
    std::unique_ptr<MainWindow> window;
    const bool running = Main(program, desktop.Interfaces(), [&] {
        window = std::make_unique<MainWindow>(program, desktop);
        window->Show();
    });
    if (running)
        desktop.Events().Run();
    return 0;
}
