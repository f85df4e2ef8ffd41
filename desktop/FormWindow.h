#pragma once

// What the main form asks of its window. Geometry is in twips of the window's own DPI.

#include "base/Geometry.h"
#include "desktop/SystemReferences.h"

#include <cstdint>
#include <string>

namespace quarn {

// The numbers are those of the settings file.
enum class WindowState : std::int32_t { Normal = 0, Minimized = 1, Maximized = 2 };

enum class PopupMenu { Server, AddToFavorites, TreeView, SysTray };

class FormWindow {
  public:
    virtual ~FormWindow() = default;

    virtual WindowReference Reference() const = 0;
    virtual IconReference Icon() const = 0;

    virtual WindowState State() const = 0;
    virtual void SetState(WindowState state) = 0;

    // The outer frame. A rectangle that no monitor shows is moved so that its title bar can be reached.
    virtual TwipsRect Bounds() const = 0;
    virtual void SetBounds(const TwipsRect& bounds) = 0;

    virtual TwipsSize InnerSize() const = 0;
    virtual TwipsSize ScreenSize() const = 0;

    virtual void SetCaption(const std::string& caption) = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual void SetShownInTaskbar(bool shown) = 0;

    // Restores a minimised window and brings it to the front.
    virtual void ComeToFront() = 0;

    virtual void SetTopMost(bool topMost) = 0;

    // At the mouse, or at the focused item if the keyboard opened the menu.
    virtual void PopUp(PopupMenu menu) = 0;

    // Updates the controls immediately, before a long step without events.
    virtual void ShowChanges() = 0;

    // False while a dialog is open in front of it.
    virtual bool TakesInput() const = 0;

    // Cancels the menu, message box or dialog on top and returns true if there was one. It closes a little
    // later; then frmMain::ContinueClosing is called.
    virtual bool CancelDialogs() = 0;

    // Destroys the window and ends the program; no handler of the form is called afterwards.
    virtual void Destroy() = 0;
};

} // namespace quarn
