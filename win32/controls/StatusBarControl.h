#pragma once

// Shows a StatusBar: texts and tooltips from the model, the states of the lock keys from the keyboard. The
// geometry is reported from the control to the model.

#include "controls/StatusBar.h"
#include "win32/Dpi.h"
#include "win32/ToolTips.h"
#include "win32/controls/Control.h"

#include <string>
#include <vector>

namespace quarn {

class StatusBarControl final : public Control {
  public:
    explicit StatusBarControl(StatusBar& model) noexcept : model_(model) {}

    void Create(HWND parent, int id);

    void SetLook(Dpi dpi, HFONT font);

    // Docks the bar at the bottom of its parent, divides it and reports the geometry to the model.
    void Dock();

    void Flush();

    // Asks the keyboard; after one of its keys, and when the window becomes active.
    void ReadLockKeys() noexcept;
    static bool IsLockKey(WPARAM key) noexcept;

  private:
    void Divide();
    void Report();
    void AddToolTips();
    std::string TextOf(std::int32_t panel) const;

    StatusBar& model_;
    Dpi dpi_ = Dpi(96);
    ToolTips toolTips_;
    std::vector<std::string> shownTexts_;
    std::vector<bool> lockKeysOn_; // by panel
};

} // namespace quarn
