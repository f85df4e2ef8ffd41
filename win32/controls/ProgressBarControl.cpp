#include "win32/controls/ProgressBarControl.h"

#include <commctrl.h>

namespace quarn {

void ProgressBarControl::Create(HWND statusBar, int id) {
    Control::Create(statusBar, {PROGRESS_CLASSA, "Progress", PBS_SMOOTH, 0, id});
    shownToolTip_ = model_.toolTip;
    toolTips_.AddControl(statusBar, Handle(), shownToolTip_);
}

void ProgressBarControl::SetDpi(Dpi dpi) {
    dpi_ = dpi;
    shownBounds_ = {};
}

void ProgressBarControl::Flush() {
    Place();
    if (model_.toolTip != shownToolTip_) {
        shownToolTip_ = model_.toolTip;
        toolTips_.ChangeText(GetParent(Handle()), Handle(), shownToolTip_);
    }
    if (model_.Maximum() != shownMaximum_) {
        shownMaximum_ = model_.Maximum();
        Send(PBM_SETRANGE32, 0, shownMaximum_);
    }
    if (model_.Value() != shownValue_) {
        shownValue_ = model_.Value();
        ShowValue();
    }
}

// A themed bar moves slowly to a greater value, and would still be moving when a scan has ended. It moves to
// a smaller value at once.
void ProgressBarControl::ShowValue() {
    const bool isFull = shownValue_ == shownMaximum_;
    if (isFull)
        Send(PBM_SETRANGE32, 0, shownMaximum_ + 1);
    Send(PBM_SETPOS, static_cast<WPARAM>(shownValue_ + 1));
    Send(PBM_SETPOS, static_cast<WPARAM>(shownValue_));
    if (isFull)
        Send(PBM_SETRANGE32, 0, shownMaximum_);
}

void ProgressBarControl::Place() {
    if (model_.bounds == shownBounds_)
        return;
    shownBounds_ = model_.bounds;
    const HWND statusBar = GetParent(Handle());
    POINT corner{};
    MapWindowPoints(statusBar, GetParent(statusBar), &corner, 1);
    RECT bounds = dpi_.ToPixels(model_.bounds);
    OffsetRect(&bounds, -corner.x, -corner.y);
    MoveTo(bounds);
}

} // namespace quarn
