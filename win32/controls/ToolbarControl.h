#pragma once

// Shows a Toolbar: a picture and a short label for each button, tooltips from the model.

#include "controls/Toolbar.h"
#include "win32/Dpi.h"
#include "win32/Images.h"
#include "win32/controls/Control.h"

#include <functional>
#include <string>
#include <vector>

namespace quarn {

class ToolbarControl final : public Control {
  public:
    explicit ToolbarControl(Toolbar& model) noexcept : model_(model) {}

    // The button at position n, from 1 with the separators counted, has the command firstCommand + n.
    void Create(HWND parent, int id, int firstCommand);

    // Pictures and font for a DPI; both must outlive their use.
    void SetLook(Dpi dpi, HFONT font);

    // Puts the buttons that do not fit into this width into further rows. Between rows there is no separator.
    void Wrap(int width);

    // Docks the bar at the top of its parent.
    void Dock();

    void Flush();

    // Pixels, with the edge that sets the bar off from what is below. A bar can be higher than its buttons
    // need.
    int Height() const noexcept { return ButtonsSize().cy + addedHeight_; }
    void SetAddedHeight(int pixels) noexcept { addedHeight_ = pixels; }

    // The width of the longest row of buttons, and the height without what was added.
    SIZE ButtonsSize() const noexcept;

    // Pixels that all buttons take in one row.
    int LeastWidth() const noexcept;

    // Of the button on the screen.
    RECT ButtonBounds(std::int32_t position) const noexcept;

    // A tooltip must not lie on top of the menu that a button opens.
    void AllowToolTips(bool allowed) noexcept;

    // True when the command is one of a button, whose key goes to ButtonClicked.
    bool OnCommand(int command);

    Answer OnNotify(NMHDR& notification) override;

    std::function<void(const std::string& key)> ButtonClicked;

  private:
    Answer OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void AddButtons();
    void SizeButtons(HFONT font);
    void LayOut();
    int WidthOf(std::int32_t position) const noexcept;

    Toolbar& model_;
    int firstCommand_ = 0;
    Dpi dpi_ = Dpi(96);
    int top_ = 0;
    int height_ = 0; // without the added height
    int rows_ = 1;
    int longestRow_ = 0;
    SIZE button_{};
    int addedHeight_ = 0;
    Images pictures_;
    Images disabledPictures_;
    std::vector<bool> shownEnabled_; // by position
    std::vector<int> shownStates_;   // TBSTATE_WRAP at the end of a row, TBSTATE_HIDDEN; by position
    bool toolTipsAllowed_ = true;
};

} // namespace quarn
