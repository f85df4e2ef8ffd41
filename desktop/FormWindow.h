#pragma once

// What the main form asks of its window. Geometry is in twips of the window's own DPI.

#include "base/Geometry.h"
#include "desktop/SystemReferences.h"

#include <cstdint>
#include <string>

namespace quarn {

// With the numbers that the settings file holds.
enum class WindowState : std::int32_t { Normal = 0, Minimized = 1, Maximized = 2 };

enum class PopupMenu { Server, AddToFavorites, TreeView, SysTray };

class FormWindow {
  public:
    virtual ~FormWindow() = default;

    virtual WindowReference Reference() const = 0;
    virtual IconReference Icon() const = 0;

    virtual WindowState State() const = 0;
    virtual void SetState(WindowState state) = 0;

    // The outer frame. Setting it moves a rectangle that no monitor shows to where its title bar can be
    // reached.
    virtual TwipsRect Bounds() const = 0;
    virtual void SetBounds(const TwipsRect& bounds) = 0;

    virtual TwipsSize InnerSize() const = 0;
    virtual TwipsSize ScreenSize() const = 0;

    virtual void SetCaption(const std::string& caption) = 0;
    virtual void SetVisible(bool visible) = 0;
    virtual void SetShownInTaskbar(bool shown) = 0;

    // Restores a minimised window, and puts it in front of those of other programs.
    virtual void ComeToFront() = 0;

    virtual void SetTopMost(bool topMost) = 0;

    // At the mouse, or where the menu belongs when the keyboard asked for it.
    virtual void PopUp(PopupMenu menu) = 0;

    // Brings the controls up to date at once, where a long step without events follows.
    virtual void ShowChanges() = 0;

    // Whether a mouse button is down, anywhere.
    virtual bool IsMouseDown() const = 0;

    // False while a dialog is open in front of it.
    virtual bool TakesInput() const = 0;

    // Cancels the menu, and the message box or dialog that is open on top, if any: true. It is gone a little
    // later; as long as there was one, frmMain::ContinueClosing follows then.
    virtual bool CancelDialogs() = 0;

    // Destroys the window and ends the program; no handler of the form runs any more.
    virtual void Destroy() = 0;
};

} // namespace quarn
