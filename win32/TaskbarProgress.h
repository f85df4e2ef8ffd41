#pragma once

// The progress that the taskbar shows on the program's button. Windows 7 and up.

#include "win32/WindowsHeaders.h"

#include <memory>
#include <shobjidl.h>

namespace quarn {

class TaskbarProgress {
  public:
    // Shows how much of `maximum` is done; no bar unless `active`. Does nothing if nothing has changed, or if
    // the system refuses.
    void Show(HWND window, bool active, std::int32_t value, std::int32_t maximum) noexcept;

  private:
    struct Releaser {
        void operator()(ITaskbarList3* list) const noexcept { list->Release(); }
    };
    void Load() noexcept;

    std::unique_ptr<ITaskbarList3, Releaser> taskbar_;
    bool loaded_ = false; // tried, successfully or not
    bool shownActive_ = false;
    std::int32_t shownValue_ = -1;
    std::int32_t shownMaximum_ = -1;
};

} // namespace quarn
