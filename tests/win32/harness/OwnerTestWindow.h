#pragma once

#include "win32/Handles.h"
#include "win32/OwnerWindow.h"

#include <gtest/gtest.h>

namespace quarn {

// A visible window in the part of the main window.
class OwnerTestWindow {
  public:
    OwnerTestWindow()
        : window_(CreateWindowExA(0, "STATIC", "Quarn owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 200, 150, 600,
                                  400, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr)) {
        EXPECT_TRUE(window_) << "is there a display?";
        owner_.SetMain(window_.Get());
    }

    HWND Handle() const noexcept { return window_.Get(); }
    const OwnerWindow& AsOwner() const noexcept { return owner_; }

  private:
    WindowHandle window_;
    OwnerWindow owner_;
};

} // namespace quarn
