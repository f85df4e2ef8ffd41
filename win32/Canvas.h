#pragma once

#include "win32/WindowsHeaders.h"

namespace quarn {

// The drawing surface of a window, or of the whole screen, outside its paint message. Released on
// destruction.
class Canvas {
  public:
    explicit Canvas(HWND window) noexcept : window_(window), handle_(GetDC(window)) {}
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas() {
        if (handle_ != nullptr)
            ReleaseDC(window_, handle_);
    }

    static Canvas OfScreen() noexcept { return Canvas(nullptr); }

    HDC Handle() const noexcept { return handle_; } // null when the system has none left

  private:
    HWND window_;
    HDC handle_;
};

} // namespace quarn
