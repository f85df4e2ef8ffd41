#pragma once

#include "win32/WindowsHeaders.h"

namespace quarn {

// The main window, for the services that show something or speak in its name. It is created later and
// destroyed earlier than they are: no window is an ordinary state.
class OwnerWindow {
  public:
    HWND Main() const noexcept { return main_; }
    void SetMain(HWND window) noexcept { main_ = window; }

    // The owner of a new message box or dialog: the one that is open on top of the main window, otherwise the
    // main window. So the one below stays disabled while the new one is open.
    HWND ForBox() const noexcept { return main_ != nullptr ? GetLastActivePopup(main_) : nullptr; }

    bool IsTopMost() const noexcept {
        return main_ != nullptr && (GetWindowLongPtrA(main_, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
    }

  private:
    HWND main_ = nullptr;
};

} // namespace quarn
