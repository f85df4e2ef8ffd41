#pragma once

// A main window that only records the calls of the form.

#include "base/RunTimeError.h"
#include "desktop/FormWindow.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quarn {

class FakeFormWindow : public FormWindow {
  public:
    WindowState state = WindowState::Normal;
    TwipsRect bounds = {0, 0, 13500, 9600};
    TwipsSize innerSize = {13300, 9000};
    TwipsSize screenSize = {28800, 16200};
    std::string caption;
    bool visible = true;
    bool shownInTaskbar = true;
    bool topMost = false;
    bool mouseDown = false;

    std::int32_t broughtToFront = 0;
    std::int32_t topMostCalls = 0;
    std::int32_t boundsCalls = 0;
    std::vector<WindowState> statesSet;
    std::vector<PopupMenu> poppedUp;
    std::int32_t showChangesCalls = 0;
    std::int32_t destroyCalls = 0;

    // Moving the window or making it topmost throws this error.
    std::optional<ErrorNumber> fault;

    // Called when the window's size or state has changed, like the system's notification.
    std::function<void()> resized;

    // Called after that, for what the window reads then.
    std::function<void()> whenSized;

    // Whether a message box or dialog is open, and what follows when the form has it cancelled.
    std::function<bool()> dialogIsOpen;
    std::function<void()> whenCancelled;

    // Called when the form updates its controls.
    std::function<void()> whenShowingChanges;

    static constexpr WindowReference TheReference = 0x1234;
    static constexpr IconReference TheIcon = 0x77;

    WindowReference Reference() const override { return TheReference; }
    IconReference Icon() const override { return TheIcon; }
    WindowState State() const override { return state; }
    void SetState(WindowState newState) override {
        statesSet.push_back(newState);
        state = newState;
        TellResized();
    }
    TwipsRect Bounds() const override { return bounds; }
    void SetBounds(const TwipsRect& newBounds) override {
        Fail();
        ++boundsCalls;
        bounds = newBounds;
        TellResized();
    }
    TwipsSize InnerSize() const override { return innerSize; }
    TwipsSize ScreenSize() const override { return screenSize; }
    void SetCaption(const std::string& newCaption) override { caption = newCaption; }
    void SetVisible(bool isVisible) override { visible = isVisible; }
    void SetShownInTaskbar(bool shown) override { shownInTaskbar = shown; }
    void ComeToFront() override {
        ++broughtToFront;
        if (state == WindowState::Minimized)
            state = WindowState::Normal;
        TellResized();
    }
    void SetTopMost(bool isTopMost) override {
        Fail();
        ++topMostCalls;
        topMost = isTopMost;
    }
    void PopUp(PopupMenu menu) override { poppedUp.push_back(menu); }
    void ShowChanges() override {
        ++showChangesCalls;
        if (whenShowingChanges)
            whenShowingChanges();
    }
    bool IsMouseDown() const override { return mouseDown; }
    bool TakesInput() const override { return !dialogIsOpen || !dialogIsOpen(); }
    bool CancelDialogs() override {
        const bool open = dialogIsOpen && dialogIsOpen();
        if (open && whenCancelled)
            whenCancelled();
        return open;
    }
    void Destroy() override { ++destroyCalls; }

  private:
    void Fail() const {
        if (fault)
            throw RunTimeError(*fault);
    }
    void TellResized() {
        if (resized)
            resized();
        if (whenSized)
            whenSized();
    }
};

} // namespace quarn
