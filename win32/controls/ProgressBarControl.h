#pragma once

// Shows a ProgressBar inside a panel of the status bar. It is a child of the status bar, so it moves with the
// bar and the bar never paints over it. Its bounds are those of the model, relative to the main window's
// corner.

#include "controls/ProgressBar.h"
#include "win32/Dpi.h"
#include "win32/ToolTips.h"
#include "win32/controls/Control.h"

#include <string>

namespace quarn {

class ProgressBarControl final : public Control {
  public:
    explicit ProgressBarControl(ProgressBar& model) noexcept : model_(model) {}

    void Create(HWND statusBar, int id);
    void SetDpi(Dpi dpi);

    void Flush();

  private:
    void Place();
    void ShowValue();

    ProgressBar& model_;
    Dpi dpi_ = Dpi(96);
    TwipsRect shownBounds_;
    std::int32_t shownMaximum_ = -1;
    std::int32_t shownValue_ = -1;
    ToolTips toolTips_;
    std::string shownToolTip_;
};

} // namespace quarn
