#include "win32/controls/ToolbarControl.h"

#include "win32/Canvas.h"
#include "win32/Fonts.h"

#include <algorithm>
#include <commctrl.h>
#include <utility>

namespace quarn {

namespace {

// In pixels of 96 to an inch.
constexpr int PictureSize = 32;
constexpr int ButtonWidth = 72;
constexpr int ButtonHeight = 60;
constexpr int LabelMargin = 6;   // at each side of a button's text
constexpr int PictureMargin = 8; // above and below a button's image and text
constexpr int ContentOffset = 2;
constexpr int BarMargin = 6; // above and below the buttons, and the edge
constexpr int SeparatorWidth = 9;

} // namespace

void ToolbarControl::Create(HWND parent, int id, int firstCommand) {
    firstCommand_ = firstCommand;
    Control::Create(parent, {TOOLBARCLASSNAMEA, "Commands",
                             TBSTYLE_FLAT | TBSTYLE_TRANSPARENT | TBSTYLE_TOOLTIPS | CCS_NODIVIDER |
                                 CCS_NORESIZE | CCS_NOPARENTALIGN,
                             0, id});
    Send(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
    AddButtons();
}

void ToolbarControl::AddButtons() {
    for (std::int32_t position = 1; position <= model_.buttons.HighestIndex(); ++position) {
        const ToolbarButton& button = model_.buttons[position];
        TBBUTTON added{};
        added.idCommand = firstCommand_ + position;
        added.iBitmap = button.key.empty() ? SeparatorWidth : I_IMAGENONE;
        added.fsStyle = button.key.empty() ? BTNS_SEP : BTNS_BUTTON | BTNS_NOPREFIX;
        added.fsState = TBSTATE_ENABLED;
        if (!button.key.empty())
            added.iString = reinterpret_cast<INT_PTR>(button.label.c_str());
        Send(TB_ADDBUTTONSA, 1, &added);
        shownEnabled_.push_back(true);
        shownStates_.push_back(0);
    }
}

void ToolbarControl::SetLook(Dpi dpi, HFONT font) {
    dpi_ = dpi;
    SetFont(font);
    // The control keeps the lists that are set; only then may the old ones go.
    std::vector<std::string> keys;
    for (std::int32_t position = 1; position <= model_.buttons.HighestIndex(); ++position)
        if (const std::string& key = model_.buttons[position].key; !key.empty())
            keys.push_back(key);
    Images pictures(dpi_.Scaled(PictureSize), keys);
    Images disabled(dpi_.Scaled(PictureSize), keys, Images::Look::Disabled);
    Send(TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(pictures.Handle()));
    Send(TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(disabled.Handle()));
    pictures_ = std::move(pictures);
    disabledPictures_ = std::move(disabled);
    for (std::int32_t position = 1; position <= model_.buttons.HighestIndex(); ++position)
        if (const std::string& key = model_.buttons[position].key; !key.empty())
            Send(TB_CHANGEBITMAP, static_cast<WPARAM>(firstCommand_ + position), pictures_.IndexOf(key));
    SizeButtons(font);
}

// As designed, or larger for a user who has chosen larger text.
void ToolbarControl::SizeButtons(HFONT font) {
    int width = dpi_.Scaled(ButtonWidth);
    for (std::int32_t position = 1; position <= model_.buttons.HighestIndex(); ++position)
        width =
            std::max(width, TextWidth(font, model_.buttons[position].label) + 2 * dpi_.Scaled(LabelMargin));
    // The control puts image and text at a button's top, so a button is as high as these, and the bar keeps
    // the same distance above and below it.
    const int height = dpi_.Scaled(PictureSize) + LineHeight(font) + dpi_.Scaled(PictureMargin);
    height_ = std::max(dpi_.Scaled(ButtonHeight), height) + dpi_.Scaled(BarMargin);
    button_ = {width, height};
    top_ = (height_ - height - GetSystemMetrics(SM_CYEDGE)) / 2 + dpi_.Scaled(ContentOffset);
    Send(TB_SETPADDING, 0, MAKELPARAM(dpi_.Scaled(LabelMargin), dpi_.Scaled(LabelMargin)));
    Send(TB_SETBUTTONWIDTH, 0, MAKELPARAM(width, width));
    Wrap(LeastWidth());
    LayOut();
}

// A size that is set lays the buttons out; states do not, and hiding a separator changes the buttons' height.
void ToolbarControl::LayOut() {
    Send(TB_SETBUTTONSIZE, 0, MAKELPARAM(button_.cx, button_.cy));
    TBBUTTONINFOA size{};
    size.cbSize = sizeof size;
    size.dwMask = TBIF_SIZE;
    for (std::int32_t position = 1; position <= model_.buttons.HighestIndex(); ++position) {
        size.cx = static_cast<WORD>(WidthOf(position));
        Send(TB_SETBUTTONINFOA, static_cast<WPARAM>(firstCommand_ + position), &size);
    }
}

int ToolbarControl::WidthOf(std::int32_t position) const noexcept {
    return model_.buttons[position].key.empty() ? dpi_.Scaled(SeparatorWidth) : button_.cx;
}

void ToolbarControl::Wrap(int width) {
    std::vector<int> states(shownStates_.size());
    rows_ = 1;
    longestRow_ = 0;
    int end = 0; // of the row
    std::int32_t lastButton = 0;
    for (std::int32_t position = 1; position <= model_.buttons.HighestIndex(); ++position) {
        end += WidthOf(position);
        if (model_.buttons[position].key.empty())
            continue;
        if (end > width && lastButton != 0) {
            ++rows_;
            end = button_.cx;
            states[static_cast<std::size_t>(lastButton) - 1] = TBSTATE_WRAP;
            for (std::int32_t separator = lastButton + 1; separator < position; ++separator)
                states[static_cast<std::size_t>(separator) - 1] = TBSTATE_HIDDEN;
        }
        lastButton = position;
        longestRow_ = std::max(longestRow_, end);
    }
    if (states == shownStates_)
        return;
    shownStates_ = std::move(states);
    for (std::int32_t position = 1; position <= model_.buttons.HighestIndex(); ++position) {
        const int command = firstCommand_ + position;
        const int other = static_cast<int>(Send(TB_GETSTATE, static_cast<WPARAM>(command))) &
                          ~(TBSTATE_WRAP | TBSTATE_HIDDEN);
        const int state = other | shownStates_[static_cast<std::size_t>(position) - 1];
        Send(TB_SETSTATE, static_cast<WPARAM>(command), MAKELPARAM(state, 0));
    }
    LayOut();
}

void ToolbarControl::Dock() {
    RECT inner{};
    GetClientRect(GetParent(Handle()), &inner);
    MoveTo({0, top_, inner.right, Height()});
}

SIZE ToolbarControl::ButtonsSize() const noexcept {
    return {longestRow_, height_ + (rows_ - 1) * button_.cy};
}

int ToolbarControl::LeastWidth() const noexcept {
    int width = 0;
    for (std::int32_t position = 1; position <= model_.buttons.HighestIndex(); ++position)
        width += WidthOf(position);
    return width;
}

RECT ToolbarControl::ButtonBounds(std::int32_t position) const noexcept {
    RECT bounds{};
    Send(TB_GETITEMRECT, static_cast<WPARAM>(position - 1), &bounds);
    MapWindowPoints(Handle(), nullptr, reinterpret_cast<POINT*>(&bounds), 2);
    return bounds;
}

void ToolbarControl::Flush() {
    for (std::int32_t position = 1; position <= model_.buttons.HighestIndex(); ++position) {
        const bool enabled = model_.buttons[position].enabled;
        if (enabled == shownEnabled_[static_cast<std::size_t>(position) - 1])
            continue;
        shownEnabled_[static_cast<std::size_t>(position) - 1] = enabled;
        Send(TB_ENABLEBUTTON, static_cast<WPARAM>(firstCommand_ + position), MAKELPARAM(enabled ? 1 : 0, 0));
    }
}

void ToolbarControl::AllowToolTips(bool allowed) noexcept {
    toolTipsAllowed_ = allowed;
    SendMessageA(reinterpret_cast<HWND>(Send(TB_GETTOOLTIPS)), TTM_POP, 0, 0);
}

bool ToolbarControl::OnCommand(int command) {
    const std::int32_t position = command - firstCommand_;
    if (!model_.buttons.Holds(position) || model_.buttons[position].key.empty())
        return false;
    if (ButtonClicked)
        ButtonClicked(model_.buttons[position].key);
    return true;
}

Answer ToolbarControl::OnNotify(NMHDR& notification) {
    if (notification.code != TBN_GETINFOTIPA)
        return NotHandled;
    auto& tip = reinterpret_cast<NMTBGETINFOTIPA&>(notification);
    if (const std::int32_t position = tip.iItem - firstCommand_;
        toolTipsAllowed_ && model_.buttons.Holds(position))
        lstrcpynA(tip.pszText, model_.buttons[position].toolTip.c_str(), tip.cchTextMax);
    return Handled;
}

Answer ToolbarControl::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_PAINT)
        return NotHandled;
    const LRESULT answer = PassOn(message, wParam, lParam);
    RECT inner{};
    GetClientRect(Handle(), &inner);
    const Canvas canvas(Handle());
    DrawEdge(canvas.Handle(), &inner, EDGE_ETCHED, BF_BOTTOM);
    return answer;
}

} // namespace quarn
