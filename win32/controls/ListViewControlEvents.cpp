// Requests and notifications of the list's control.

#include "win32/controls/ListViewControl.h"

#include <algorithm>
#include <utility>

namespace quarn {

namespace {

constexpr UINT SelectedAndFocused = LVIS_SELECTED | LVIS_FOCUSED;
constexpr int NoItem = -1;
constexpr UINT FindSubstring = 4; // the system's LVFI_SUBSTRING, which MinGW's headers do not have
constexpr int CellMargin = 6;     // at each side of a text, in pixels of 96 to an inch

} // namespace

Answer ListViewControl::OnNotify(NMHDR& notification) {
    switch (notification.code) {
    case LVN_GETDISPINFOA:
        FillIn(reinterpret_cast<NMLVDISPINFOA&>(notification).item);
        return Handled;
    case NM_CUSTOMDRAW:
        return OnCustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(notification));
    case LVN_ODFINDITEMA:
        return OnFind(reinterpret_cast<const NMLVFINDITEMA&>(notification));
    case LVN_ODFINDITEMW:
        return OnFind(reinterpret_cast<const NMLVFINDITEMW&>(notification));
    case LVN_ITEMCHANGED:
        OnItemChanged(reinterpret_cast<const NMLISTVIEW&>(notification));
        return Handled;
    case LVN_ODSTATECHANGED: {
        const auto& range = reinterpret_cast<const NMLVODSTATECHANGE&>(notification);
        if (!flushing_) {
            model_.NoteSelected(range.iFrom + 1, range.iTo + 1, (range.uNewState & LVIS_SELECTED) != 0);
            soleSelectedRow_ = 0;
        }
        return Handled;
    }
    case LVN_COLUMNCLICK:
        if (ColumnClicked)
            ColumnClicked(ColumnOf(reinterpret_cast<const NMLISTVIEW&>(notification).iSubItem));
        return Handled;
    case LVN_ITEMACTIVATE:
        if (Activated)
            Activated();
        return Handled;
    case NM_CLICK:
    case NM_RCLICK:
    case LVN_BEGINDRAG: // replaces a click if the mouse moves a little before the button is released
        if (MouseReleased)
            MouseReleased();
        if (Clicked && notification.code != NM_RCLICK)
            Clicked();
        return Handled;
    default:
        return NotHandled;
    }
}

void ListViewControl::OnItemChanged(const NMLISTVIEW& change) {
    if (flushing_ || (change.uChanged & LVIF_STATE) == 0)
        return;
    const UINT changed = change.uOldState ^ change.uNewState;
    if ((changed & LVIS_SELECTED) != 0) {
        const bool all = change.iItem < 0;
        model_.NoteSelected(all ? 1 : change.iItem + 1, all ? model_.RowCount() : change.iItem + 1,
                            (change.uNewState & LVIS_SELECTED) != 0);
        soleSelectedRow_ = 0;
    }
    if ((change.uNewState & LVIS_FOCUSED) != 0 && change.iItem >= 0 && change.iItem < model_.RowCount())
        model_.NoteFocused(change.iItem + 1);
}

// The control may ask for rows that were removed since its last update.
bool ListViewControl::IsShown(std::int32_t row, std::int32_t column) const noexcept {
    return row >= 1 && row <= model_.RowCount() && !model_.updatesLocked && model_.columns.Holds(column);
}

void ListViewControl::FillIn(LVITEMA& item) const {
    const std::int32_t row = item.iItem + 1;
    const std::int32_t column = ColumnOf(item.iSubItem);
    if ((item.mask & LVIF_TEXT) != 0)
        lstrcpynA(item.pszText,
                  IsShown(row, column) ? std::as_const(model_).Cell(row, column).text.c_str() : "",
                  item.cchTextMax);
    if ((item.mask & LVIF_IMAGE) != 0)
        item.iImage = CellPicture(row, column);
}

// Any of the three flags means a search by the beginning of the text.
int ListViewControl::OnFind(const NMLVFINDITEMA& search) const {
    constexpr UINT ByText = LVFI_STRING | FindSubstring | LVFI_PARTIAL;
    return (search.lvfi.flags & ByText) != 0 ? FindRow(search.lvfi.psz, search.iStart) : NoItem;
}

// Some versions of the control send the Unicode message even to an ANSI parent.
int ListViewControl::OnFind(const NMLVFINDITEMW& search) const {
    char sought[256] = "";
    WideCharToMultiByte(CP_ACP, 0, search.lvfi.psz, -1, sought, sizeof sought - 1, nullptr, nullptr);
    NMLVFINDITEMA inBytes{search.hdr, search.iStart, {}};
    inBytes.lvfi.flags = search.lvfi.flags;
    inBytes.lvfi.psz = sought;
    return OnFind(inBytes);
}

// From item `start` to the last, and then from the first.
int ListViewControl::FindRow(const std::string& sought, int start) const {
    const std::int32_t rows = model_.RowCount();
    for (std::int32_t step = 0; step < rows; ++step) {
        const int item = (std::clamp(start, 0, rows) + step) % rows;
        const std::string& text = std::as_const(model_).Cell(item + 1, nameColumn_).text;
        const std::string beginning = text.substr(0, sought.size());
        if (lstrcmpiA(beginning.c_str(), sought.c_str()) == 0)
            return item;
    }
    return NoItem;
}

Answer ListViewControl::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_MOUSEMOVE)
        ShowCutCell(lParam);
    if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST)
        toolTips_.Relay(Handle(), message, wParam, lParam);
    switch (message) {
    case WM_SIZE: {
        const LRESULT answer = PassOn(message, wParam, lParam);
        FitColumns();
        // A list that grows at its end scrolls, and some versions of the control leave the old rows there.
        InvalidateRect(Handle(), nullptr, FALSE);
        return answer;
    }
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
        if (!RightPressed)
            return NotHandled;
        OnRightPress(lParam);
        return Handled;
    case WM_KEYUP: {
        const LRESULT answer = PassOn(message, wParam, lParam);
        if (KeyReleased)
            KeyReleased(static_cast<std::int32_t>(wParam));
        return answer;
    }
    case WM_NOTIFY: {
        // Before the list sees it: a scroll bar that appears then would have the columns fitted again.
        const auto& notification = *reinterpret_cast<const NMHDR*>(lParam);
        if (notification.code == HDN_ITEMCHANGEDA || notification.code == HDN_ITEMCHANGEDW)
            OnHeaderChanged(reinterpret_cast<const NMHEADERA&>(notification));
        return NotHandled;
    }
    default:
        return NotHandled;
    }
}

// The user has dragged the edge of a column's header, or double-clicked it. From now on no column is fitted,
// so the fitted ones keep the widths that they have.
void ListViewControl::OnHeaderChanged(const NMHEADERA& change) {
    const bool isWidth = change.pitem != nullptr && (change.pitem->mask & HDI_WIDTH) != 0;
    const std::int32_t changed = ColumnOf(change.iItem);
    if (!isWidth || settingWidths_ || !model_.columns.Holds(changed))
        return;
    const bool wasFitted = FitsColumns();
    for (std::int32_t column = 1; column <= model_.columns.HighestIndex(); ++column) {
        ListColumn& shown = model_.columns[column];
        const int width = column == changed ? change.pitem->cxy : WidthOf(column);
        const bool isKept = column == changed || (wasFitted && shown.fills);
        if (isKept && width != dpi_.ToPixels(shown.Width()))
            shown.chosenWidth = dpi_.ToTwips(width);
    }
}

// The cell under the mouse has its text as a tooltip if it does not show all of it.
void ListViewControl::ShowCutCell(LPARAM position) {
    LVHITTESTINFO hit{};
    hit.pt = {static_cast<short>(LOWORD(position)), static_cast<short>(HIWORD(position))};
    Send(LVM_SUBITEMHITTEST, 0, &hit);
    const std::int32_t row = hit.iItem + 1;
    const std::int32_t column = ColumnOf(hit.iSubItem);
    RECT cell{};
    std::string text;
    if (row >= 1 && IsShown(row, column)) {
        cell = CellBounds(row, hit.iSubItem);
        // NOLINTNEXTLINE(readability-redundant-string-cstr): up to a NUL, as the cell shows it.
        text = std::as_const(model_).Cell(row, column).text.c_str();
        RECT inner{};
        GetClientRect(Handle(), &inner);
        const auto width = static_cast<int>(Send(LVM_GETSTRINGWIDTHA, 0, text.c_str()));
        if (cell.left >= inner.left && cell.right <= inner.right &&
            cell.right - cell.left >= width + 2 * dpi_.Scaled(CellMargin))
            text.clear();
    }
    if (text.empty())
        cell = {};
    if (text == toolTip_ && EqualRect(&cell, &toolTipCell_))
        return;
    if (!toolTips_.HasTools())
        toolTips_.AddRelayedArea(Handle(), CellToolTip);
    toolTip_ = text;
    toolTipCell_ = cell;
    toolTips_.ChangeAreaText(Handle(), CellToolTip, toolTip_);
    toolTips_.MoveArea(Handle(), CellToolTip, toolTipCell_);
}

RECT ListViewControl::CellBounds(std::int32_t row, int subItem) const noexcept {
    RECT rowBounds{LVIR_BOUNDS, 0, 0, 0};
    Send(LVM_GETITEMRECT, static_cast<WPARAM>(row - 1), &rowBounds);
    RECT cell{};
    SendMessageA(Header(), HDM_GETITEMRECT, static_cast<WPARAM>(subItem), reinterpret_cast<LPARAM>(&cell));
    MapWindowPoints(Header(), Handle(), reinterpret_cast<POINT*>(&cell), 2);
    return {cell.left, rowBounds.top, cell.right, rowBounds.bottom};
}

// Replaces the control's own handling, which reports the button only when it is released.
void ListViewControl::OnRightPress(LPARAM position) {
    SetFocus(Handle());
    LVHITTESTINFO hit{};
    hit.pt = {static_cast<short>(LOWORD(position)), static_cast<short>(HIWORD(position))};
    const std::int32_t row = static_cast<std::int32_t>(Send(LVM_SUBITEMHITTEST, 0, &hit)) + 1;
    if (row >= 1 && row <= model_.RowCount()) {
        // Several selected rows stay selected if the button is pressed on one of them.
        if (!model_.Row(row).selected)
            SetRowState(0, 0, LVIS_SELECTED);
        SetRowState(row, SelectedAndFocused, SelectedAndFocused);
        Send(LVM_SETSELECTIONMARK, 0, row - 1);
    }
    RightPressed();
}

} // namespace quarn
