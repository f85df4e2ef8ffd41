#pragma once

#include "win32/Window.h"
#include "win32/controls/Control.h"

namespace quarn {

// A visible window that holds one control, and passes on what it tells.
class ControlHost final : public Window {
  public:
    ControlHost() : Window("ControlHost") {
        Creation creation{"QuarnControlHost", "Quarn control host"};
        creation.style = WS_OVERLAPPEDWINDOW | WS_VISIBLE;
        creation.bounds = {100, 100, 800, 600};
        Create(creation);
    }

    void Watch(Control& control) { control_ = &control; }

    // Runs what is posted, painting included.
    static void RunPendingEvents() {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }

  private:
    Answer OnNotify(NMHDR& notification) override {
        const bool fromControl = control_ != nullptr && notification.hwndFrom == control_->Handle();
        return fromControl ? control_->OnNotify(notification) : NotHandled;
    }

    Control* control_ = nullptr;
};

} // namespace quarn
