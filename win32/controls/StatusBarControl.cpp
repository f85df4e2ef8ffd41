#include "win32/controls/StatusBarControl.h"

#include "win32/Fonts.h"

#include <algorithm>
#include <commctrl.h>

namespace quarn {

namespace {

// In pixels of 96 to an inch.
constexpr int BarHeight = 28;
constexpr int TextMargin = 10; // above and below the text
constexpr int GripWidth = 18;

struct LockKey {
    int key;
    const char* text;
};

LockKey LockKeyOf(StatusPanel::Kind kind) noexcept {
    switch (kind) {
    case StatusPanel::Kind::CapsLock:
        return {VK_CAPITAL, "CAPS"};
    case StatusPanel::Kind::NumLock:
        return {VK_NUMLOCK, "NUM"};
    default:
        return {VK_SCROLL, "SCRL"};
    }
}

} // namespace

void StatusBarControl::Create(HWND parent, int id) {
    Control::Create(parent, {STATUSCLASSNAMEA, "Status", SBARS_SIZEGRIP | WS_CLIPCHILDREN, 0, id});
    shownTexts_.resize(static_cast<std::size_t>(model_.panels.HighestIndex()));
    lockKeysOn_.resize(shownTexts_.size());
    ReadLockKeys();
    AddToolTips();
}

bool StatusBarControl::IsLockKey(WPARAM key) noexcept {
    return key == VK_CAPITAL || key == VK_NUMLOCK || key == VK_SCROLL;
}

void StatusBarControl::ReadLockKeys() noexcept {
    for (std::size_t index = 0; index < lockKeysOn_.size(); ++index) {
        const StatusPanel& panel = model_.panels[static_cast<std::int32_t>(index) + 1];
        lockKeysOn_[index] = (GetKeyState(LockKeyOf(panel.kind).key) & 1) != 0;
    }
}

// The bar's own tooltips appear only if a text is cut.
void StatusBarControl::AddToolTips() {
    for (std::int32_t panel = 1; panel <= model_.panels.HighestIndex(); ++panel)
        if (const std::string& text = model_.panels[panel].toolTip; !text.empty())
            toolTips_.AddArea(Handle(), static_cast<UINT_PTR>(panel), text);
}

void StatusBarControl::SetLook(Dpi dpi, HFONT font) {
    dpi_ = dpi;
    SetFont(font);
    Send(SB_SETMINHEIGHT,
         static_cast<WPARAM>(std::max(dpi_.Scaled(BarHeight), LineHeight(font) + dpi_.Scaled(TextMargin))));
}

void StatusBarControl::Dock() {
    Send(WM_SIZE);
    Divide();
    Report();
}

void StatusBarControl::Divide() {
    RECT inner{};
    GetClientRect(Handle(), &inner);
    const int width = static_cast<int>(inner.right) - dpi_.Scaled(GripWidth);
    std::vector<int> rightEdges;
    std::int32_t edge = 0;
    for (const std::int32_t panel : PanelWidths(model_, dpi_.ToTwips(width)))
        rightEdges.push_back(dpi_.ToPixels(edge += panel));
    Send(SB_SETPARTS, rightEdges.size(), rightEdges.data());
}

void StatusBarControl::Report() {
    RECT bar{};
    GetWindowRect(Handle(), &bar);
    MapWindowPoints(nullptr, GetParent(Handle()), reinterpret_cast<POINT*>(&bar), 2);
    model_.top = dpi_.ToTwips(bar.top);
    model_.height = dpi_.ToTwips(bar.bottom - bar.top);
    for (std::int32_t panel = 1; panel <= model_.panels.HighestIndex(); ++panel) {
        RECT bounds{};
        Send(SB_GETRECT, static_cast<WPARAM>(panel - 1), &bounds);
        model_.panels[panel].left = dpi_.ToTwips(bounds.left);
        model_.panels[panel].width = dpi_.ToTwips(bounds.right - bounds.left);
        toolTips_.MoveArea(Handle(), static_cast<UINT_PTR>(panel), bounds);
    }
}

std::string StatusBarControl::TextOf(std::int32_t panel) const {
    const StatusPanel& shown = model_.panels[panel];
    if (shown.kind == StatusPanel::Kind::Text)
        return shown.text;
    if (!lockKeysOn_[static_cast<std::size_t>(panel) - 1])
        return {};
    return std::string("\t") + LockKeyOf(shown.kind).text; // centred
}

void StatusBarControl::Flush() {
    for (std::int32_t panel = 1; panel <= model_.panels.HighestIndex(); ++panel) {
        std::string& shown = shownTexts_[static_cast<std::size_t>(panel) - 1];
        const std::string text = TextOf(panel);
        if (text == shown)
            continue;
        shown = text;
        Send(SB_SETTEXTA, static_cast<WPARAM>(panel - 1), reinterpret_cast<LPARAM>(shown.c_str()));
    }
    if (model_.redraw) {
        model_.redraw = false;
        Dock();
        InvalidateRect(Handle(), nullptr, TRUE);
    }
}

} // namespace quarn
