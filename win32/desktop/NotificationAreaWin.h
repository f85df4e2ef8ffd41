#pragma once

#include "desktop/NotificationArea.h"
#include "win32/WindowsHeaders.h"

namespace quarn {

// Owns the handlers of the picture boxes that it created, so it outlives their parents. Belongs to the
// user-interface thread.
class NotificationAreaWin final : public NotificationArea {
  public:
    bool Notify(NotifyCommand command, const NotifyIconRecord& record) override;
    WindowReference AddPictureBox(WindowReference parent, MouseMove handler) override;
    double TwipsPerPixelX() const override;

  private:
    static LRESULT CALLBACK PictureBoxProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                           UINT_PTR id, DWORD_PTR reference) noexcept;

    void OnMouseMove(LPARAM position) noexcept;

    MouseMove mouseMove_;
};

} // namespace quarn
