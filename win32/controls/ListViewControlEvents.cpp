// What the list's control asks for and tells of.

#include "win32/controls/ListViewControl.h"

#include <algorithm>
#include <utility>

namespace quarn {

namespace {

constexpr UINT SelectedAndFocused = LVIS_SELECTED | LVIS_FOCUSED;
constexpr int NoItem = -1;
constexpr int CellMargin = 6; // in pixels of 96 to an inch
constexpr const char* WidestCode = "WW";

} // namespace

Answer ListViewControl::OnNotify(NMHDR& notification) {
    switch (notification.code) {
    case LVN_GETDISPINFOA:
        FillIn(reinterpret_cast<NMLVDISPINFOA&>(notification).item);
        return Handled;
    case NM_CUSTOMDRAW:
        return OnCustomDraw(reinterpret_cast<const NMLVCUSTOMDRAW&>(notification));
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
    case LVN_BEGINDRAG: // takes the place of a click when the mouse moves a little before it is released
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

// The control may ask for rows that went since it was last brought up to date.
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

// The style for images in cells would keep room for one in every cell of the list, so they are painted on top
// of the finished cell, and all of a column in one line.
LRESULT ListViewControl::OnCustomDraw(const NMLVCUSTOMDRAW& stage) const {
    const std::int32_t row = static_cast<std::int32_t>(stage.nmcd.dwItemSpec) + 1;
    switch (stage.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
        return paintsCellPictures_ ? CDRF_NOTIFYITEMDRAW : CDRF_DODEFAULT;
    case CDDS_ITEMPREPAINT:
        return CDRF_NOTIFYSUBITEMDRAW;
    case CDDS_ITEMPREPAINT | CDDS_SUBITEM:
        return CellPicture(row, ColumnOf(stage.iSubItem)) >= 0 ? CDRF_NOTIFYPOSTPAINT : CDRF_DODEFAULT;
    case CDDS_ITEMPOSTPAINT | CDDS_SUBITEM:
        PaintCellPicture(stage.nmcd.hdc, row, ColumnOf(stage.iSubItem));
        return CDRF_DODEFAULT;
    default:
        return CDRF_DODEFAULT;
    }
}

int ListViewControl::CellPicture(std::int32_t row, std::int32_t column) const {
    if (!IsShown(row, column))
        return I_IMAGENONE;
    return ImageOf(column == 1 ? model_.Row(row).smallIcon
                               : std::as_const(model_).Cell(row, column).reportIcon);
}

void ListViewControl::PaintCellPicture(HDC canvas, std::int32_t row, std::int32_t column) const {
    RECT cell{};
    cell.left = LVIR_BOUNDS;
    cell.top = SubItemOf(column);
    const int picture = CellPicture(row, column);
    if (picture < 0 || Send(LVM_GETSUBITEMRECT, static_cast<WPARAM>(row - 1), &cell) == 0)
        return;
    const int size = images_->Size();
    if (column == 1)
        cell.left += std::max<int>(0, (cell.right - cell.left - size) / 2);
    else
        cell.left += 2 * dpi_.Scaled(CellMargin) + static_cast<int>(Send(LVM_GETSTRINGWIDTHA, 0, WidestCode));
    if (const int room = std::min<int>(size, cell.right - cell.left); room > 0)
        ImageList_DrawEx(images_->Handle(), picture, canvas, cell.left, (cell.top + cell.bottom - size) / 2,
                         room, size, CLR_NONE, CLR_NONE, ILD_TRANSPARENT);
}

int ListViewControl::OnFind(const NMLVFINDITEMA& search) const {
    constexpr UINT ByText = LVFI_STRING | LVFI_PARTIAL;
    return (search.lvfi.flags & ByText) != 0 ? FindRow(search.lvfi.psz, search.iStart) : NoItem;
}

// Some versions of the control ask this way whatever its parent speaks.
int ListViewControl::OnFind(const NMLVFINDITEMW& search) const {
    char sought[256] = "";
    WideCharToMultiByte(CP_ACP, 0, search.lvfi.psz, -1, sought, sizeof sought - 1, nullptr, nullptr);
    NMLVFINDITEMA inBytes{search.hdr, search.iStart, {}};
    inBytes.lvfi.flags = search.lvfi.flags;
    inBytes.lvfi.psz = sought;
    return OnFind(inBytes);
}

// From the item `start` to the last, and on from the first.
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
    switch (message) {
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
        const LRESULT answer = PassOn(message, wParam, lParam);
        const auto& notification = *reinterpret_cast<const NMHDR*>(lParam);
        if (notification.code == HDN_ITEMCHANGEDA || notification.code == HDN_ITEMCHANGEDW)
            OnHeaderChanged(reinterpret_cast<const NMHEADERA&>(notification));
        return answer;
    }
    default:
        return NotHandled;
    }
}

// The user has dragged the edge of a column's header, or double-clicked it.
void ListViewControl::OnHeaderChanged(const NMHEADERA& change) {
    const bool isWidth = change.pitem != nullptr && (change.pitem->mask & HDI_WIDTH) != 0;
    const std::int32_t column = ColumnOf(change.iItem);
    if (!isWidth || settingWidths_ || !model_.columns.Holds(column))
        return;
    const auto width = static_cast<int>(Send(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(change.iItem)));
    if (width != dpi_.ToPixels(model_.columns[column].Width()))
        model_.columns[column].chosenWidth = dpi_.ToTwips(width);
}

// Instead of the control's own handling, which tells of the button only when it is released.
void ListViewControl::OnRightPress(LPARAM position) {
    SetFocus(Handle());
    LVHITTESTINFO hit{};
    hit.pt = {static_cast<short>(LOWORD(position)), static_cast<short>(HIWORD(position))};
    const std::int32_t row = static_cast<std::int32_t>(Send(LVM_SUBITEMHITTEST, 0, &hit)) + 1;
    if (row >= 1 && row <= model_.RowCount()) {
        // Several selected rows stay selected when the button goes down on one of them.
        if (!model_.Row(row).selected)
            SetRowState(0, 0, LVIS_SELECTED);
        SetRowState(row, SelectedAndFocused, SelectedAndFocused);
        Send(LVM_SETSELECTIONMARK, 0, row - 1);
    }
    RightPressed();
}

} // namespace quarn
