#include "support/clsSysTray.h"

#include "base/Conversions.h"
#include "base/RunTimeError.h"
#include "base/Scope.h"

#include <algorithm>

namespace quarn {

namespace {

constexpr std::uint32_t IconIdentifier = 1;
constexpr std::uint32_t MessageIconAndTipValid = 7;

constexpr std::int32_t MillisecondsBetweenAttempts = 1000;
constexpr int MostAttempts = 15;

// Mouse messages, with the platform's numbers.
constexpr std::uint32_t MouseMoveMessage = 512;
constexpr std::int32_t LButtonDownMessage = 513;
constexpr std::int32_t LButtonUpMessage = 514;
constexpr std::int32_t LButtonDblClkMessage = 515;
constexpr std::int32_t RButtonDownMessage = 516;
constexpr std::int32_t RButtonUpMessage = 517;
constexpr std::int32_t RButtonDblClkMessage = 518;

} // namespace

clsSysTray::clsSysTray(NotificationArea& area) : area_(area) {
    record_.identifier = IconIdentifier;
    record_.flags = MessageIconAndTipValid;
    record_.callbackMessage = MouseMoveMessage;
    tmrIcon.SetInterval(MillisecondsBetweenAttempts);
    tmrIcon.Tick = [this] { tmrIcon_Timer(); };
}

FormWindow& clsSysTray::SourceWindow() const {
    if (sourceWindow_ == nullptr)
        throw RunTimeError(ErrorNumber::ObjectVariableNotSet);
    return *sourceWindow_;
}

void clsSysTray::SetSourceWindow(FormWindow& window) {
    sourceWindow_ = &window;
    record_.icon = Icon();
    SetPicHook();
}

IconReference clsSysTray::Icon() const {
    return icon_ != 0 ? icon_ : SourceWindow().Icon();
}

void clsSysTray::SetIcon(IconReference icon) {
    icon_ = icon;
    record_.icon = icon;
}

void clsSysTray::SetToolTip(const std::string& text) {
    toolTip_ = text;
    record_.tip.fill('\0');
    std::copy_n(text.begin(), std::min(text.size(), record_.tip.size() - 1), record_.tip.begin());
}

void clsSysTray::SetPicHook() {
    pichook_.window =
        area_.AddPictureBox(SourceWindow().Reference(), [this](double X) { pichook_MouseMove(X); });
    pichook_.picture = SourceWindow().Icon();
    record_.owner = pichook_.window;
}

bool clsSysTray::IconInSysTray() {
    return area_.Notify(NotifyCommand::Add, record_);
}

void clsSysTray::RemoveFromSysTray() {
    inTray_ = false;
    tmrIcon.SetEnabled(false);
    record_.size = NotifyIconRecord::FirstVersionSize;
    area_.Notify(NotifyCommand::Delete, record_);
}

void clsSysTray::ChangeIcon(IconReference toNewIcon) {
    pichook_.picture = toNewIcon;
    record_.icon = pichook_.picture;
    area_.Notify(NotifyCommand::Modify, record_);
}

void clsSysTray::ChangeToolTip(const std::string& cNewTip) {
    SetToolTip(cNewTip);
    area_.Notify(NotifyCommand::Modify, record_);
    if (SourceWindow().State() == WindowState::Minimized)
        SourceWindow().SetCaption(cNewTip);
}

void clsSysTray::MinToSysTray() {
    if (AddIcon())
        HideWindow();
}

// A slow taskbar can report a failure for an icon that it then shows: in this case the icon can be changed.
bool clsSysTray::AddIcon() {
    const bool added = IconInSysTray() || area_.Notify(NotifyCommand::Modify, record_);
    if (!added && !tmrIcon.Enabled())
        attempts_ = 0;
    tmrIcon.SetEnabled(!added);
    return added;
}

void clsSysTray::HideWindow() {
    inTray_ = true;
    SourceWindow().SetVisible(false);
    SourceWindow().SetShownInTaskbar(false);
}

void clsSysTray::BringWindowBack() {
    SourceWindow().SetState(WindowState::Normal);
    SourceWindow().SetVisible(true);
    SourceWindow().SetShownInTaskbar(true);
    RemoveFromSysTray();
}

void clsSysTray::TaskbarCreated() {
    if (inTray_)
        AddIcon();
}

void clsSysTray::tmrIcon_Timer() {
    const bool waitsOnTaskbar = !inTray_ && SourceWindow().State() == WindowState::Minimized;
    if (!inTray_ && !waitsOnTaskbar) {
        tmrIcon.SetEnabled(false);
    } else if (AddIcon()) {
        if (waitsOnTaskbar)
            HideWindow();
    } else if (++attempts_ == MostAttempts) {
        tmrIcon.SetEnabled(false);
        if (inTray_)
            BringWindowBack();
    }
}

void clsSysTray::pichook_MouseMove(double X) {
    lastMessage_ = RoundToLong(X / area_.TwipsPerPixelX());
    if (busy_)
        return;
    const Restore busy(busy_, true);
    const Event* event = EventOf(lastMessage_);
    if (event != nullptr && *event)
        (*event)();
}

const clsSysTray::Event* clsSysTray::EventOf(std::int32_t message) const noexcept {
    switch (message) {
    case LButtonDownMessage:
        return &LButtonDown;
    case LButtonUpMessage:
        return &LButtonUp;
    case LButtonDblClkMessage:
        return &LButtonDblClk;
    case RButtonDownMessage:
        return &RButtonDown;
    case RButtonUpMessage:
        return &RButtonUp;
    case RButtonDblClkMessage:
        return &RButtonDblClk;
    default:
        return nullptr;
    }
}

} // namespace quarn
