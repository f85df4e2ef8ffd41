#pragma once

// The program's icon in the notification area. A window is in one of two states: shown, without an icon, or
// in the tray, which means the icon is there and the window hidden and off the taskbar. What the mouse does
// to the icon comes as six events.
//
// While the taskbar starts, or starts again, it can refuse the icon. Then it is asked again for some seconds;
// a hidden window whose icon never appears is shown.
//
// The system reports the mouse to an invisible picture box on the window, as mouse moves whose position
// carries the message that is meant.

#include "controls/Timer.h"
#include "desktop/FormWindow.h"
#include "desktop/NotificationArea.h"

#include <cstdint>
#include <functional>
#include <string>

namespace quarn {

class clsSysTray {
  public:
    using Event = std::function<void()>;

    explicit clsSysTray(NotificationArea& area);
    clsSysTray(const clsSysTray&) = delete;
    clsSysTray& operator=(const clsSysTray&) = delete;

    // Raised one at a time: mouse messages that arrive while a handler runs are dropped.
    Event LButtonDblClk;
    Event LButtonDown;
    Event LButtonUp;
    Event RButtonDblClk;
    Event RButtonDown;
    Event RButtonUp;

    // The window that is minimised to the tray; it outlives this object. All members below need it and raise
    // error 91 without it. Setting it connects the window's events.
    FormWindow& SourceWindow() const;
    void SetSourceWindow(FormWindow& window);

    // The source window's icon until another one is set.
    IconReference Icon() const;
    void SetIcon(IconReference icon);

    const std::string& ToolTip() const noexcept { return toolTip_; }
    void SetToolTip(const std::string& text);

    // Stored for the owner; nothing here uses it.
    bool DefaultDblClk = true;

    void SetPicHook();

    // False if the system refused the icon.
    bool IconInSysTray();
    void RemoveFromSysTray();

    void ChangeIcon(IconReference toNewIcon);

    // A text longer than 63 characters is cut. The caption of a minimised window is set as well.
    void ChangeToolTip(const std::string& cNewTip);

    // The window stays visible until its icon is shown.
    void MinToSysTray();
    void BringWindowBack();
    bool InTray() const noexcept { return inTray_; }

    // There is a new taskbar, which has no icons yet.
    void TaskbarCreated();

    // Runs while an icon is missing.
    Timer tmrIcon;
    void tmrIcon_Timer();

    // Number of the last mouse message.
    std::int32_t LastMessage() const noexcept { return lastMessage_; }

  private:
    struct PictureBox {
        WindowReference window = 0;
        IconReference picture = 0;
    };

    bool AddIcon();
    void HideWindow();
    void pichook_MouseMove(double X);
    const Event* EventOf(std::int32_t message) const noexcept;

    NotificationArea& area_;
    NotifyIconRecord record_;
    FormWindow* sourceWindow_ = nullptr;
    PictureBox pichook_;
    IconReference icon_ = 0;
    std::string toolTip_;
    bool inTray_ = false;
    int attempts_ = 0; // on the missing icon
    bool busy_ = false;
    std::int32_t lastMessage_ = 0;
};

} // namespace quarn
