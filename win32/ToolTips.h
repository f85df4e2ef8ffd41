#pragma once

// Texts that appear when the mouse rests on a control of a dialog.

#include "win32/WindowsHeaders.h"

#include <string>

namespace quarn {

// The system's tooltip window goes with the dialog it was made for.
class ToolTips {
  public:
    void Add(HWND dialog, int control, std::string text);

  private:
    HWND window_ = nullptr;
};

} // namespace quarn
