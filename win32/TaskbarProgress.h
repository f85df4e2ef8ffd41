#pragma once

// The progress that the taskbar shows on the program's button, on systems that can. Windows 7 and up.

#include "win32/WindowsHeaders.h"

#include <memory>
#include <shobjidl.h>

namespace quarn {

class TaskbarProgress {
  public:
    // Shows how much of `maximum` is done; no bar unless `active`. Costs nothing when nothing changed. What
    // the system refuses is not shown.
    void Show(HWND window, bool active, std::int32_t value, std::int32_t maximum) noexcept;

  private:
    struct Releaser {
        void operator()(ITaskbarList3* list) const noexcept { list->Release(); }
    };
    void Load() noexcept;

    std::unique_ptr<ITaskbarList3, Releaser> taskbar_;
    bool loaded_ = false; // tried, with or without success
    bool shownActive_ = false;
    std::int32_t shownValue_ = -1;
    std::int32_t shownMaximum_ = -1;
};

} // namespace quarn
