#pragma once

// The implementations of all desktop interfaces, created and destroyed together, on the user-interface
// thread.

#include "desktop/Desktop.h"
#include "win32/ComApartment.h"
#include "win32/OwnerWindow.h"
#include "win32/desktop/ClockWin.h"
#include "win32/desktop/EventPumpWin.h"
#include "win32/desktop/FilesWin.h"
#include "win32/desktop/HelpViewerWin.h"
#include "win32/desktop/HostNamesWin.h"
#include "win32/desktop/LocaleTextWin.h"
#include "win32/desktop/NotificationAreaWin.h"
#include "win32/desktop/PeerProgramsWin.h"
#include "win32/desktop/ProfileFilesWin.h"
#include "win32/desktop/PromptsWin.h"
#include "win32/desktop/RegistryWin.h"
#include "win32/desktop/ShellWin.h"
#include "win32/desktop/SystemInformationWin.h"

namespace quarn {

class WindowsDesktop {
  public:
    WindowsDesktop();
    WindowsDesktop(const WindowsDesktop&) = delete;
    WindowsDesktop& operator=(const WindowsDesktop&) = delete;

    Desktop& Interfaces() noexcept { return interfaces_; }
    EventPumpWin& Events() noexcept { return events_; }
    PromptsWin& Prompts() noexcept { return prompts_; }

    // The main window, null before it is created and after it is destroyed: it owns message boxes and
    // dialogs.
    void SetMainWindow(HWND window) noexcept { owner_.SetMain(window); }
    const OwnerWindow& Owner() const noexcept { return owner_; }

  private:
    ComApartment apartment_; // the shell's calls may need it
    OwnerWindow owner_;
    ClockWin clock_;
    EventPumpWin events_;
    FilesWin files_;
    HelpViewerWin help_;
    HostNamesWin hosts_;
    LocaleTextWin locale_;
    NotificationAreaWin notifications_;
    PeerProgramsWin peers_;
    ProfileFilesWin profiles_;
    PromptsWin prompts_;
    RegistryWin registry_;
    ShellWin shell_;
    SystemInformationWin system_;
    Desktop interfaces_;
};

} // namespace quarn
