// The parts of the list that are painted here: images in cells, a selection without focus, and the text of an
// empty list.

#include "win32/SelectionColors.h"
#include "win32/controls/ListViewControl.h"

#include <algorithm>

namespace quarn {

namespace {

// In pixels of 96 to an inch.
constexpr int CellMargin = 6;
constexpr int EmptyTextMargin = 12;

constexpr const char* WidestCode = "WW";

} // namespace

// The style for images in cells would reserve space for one in every cell of the list, so they are painted on
// top of the finished cell, aligned in each column.
LRESULT ListViewControl::OnCustomDraw(NMLVCUSTOMDRAW& stage) const {
    const std::int32_t row = static_cast<std::int32_t>(stage.nmcd.dwItemSpec) + 1;
    switch (stage.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
        return shownEmptyText_.empty() ? CDRF_NOTIFYITEMDRAW : CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
    case CDDS_POSTPAINT:
        PaintEmptyText(stage.nmcd.hdc);
        return CDRF_DODEFAULT;
    case CDDS_ITEMPREPAINT:
        MarkSelection(stage, row);
        return CDRF_NOTIFYSUBITEMDRAW;
    case CDDS_ITEMPREPAINT | CDDS_SUBITEM:
        MarkSelection(stage, row);
        return stage.iSubItem == 0 || (paintsCellPictures_ && CellPicture(row, ColumnOf(stage.iSubItem)) >= 0)
                   ? CDRF_NOTIFYPOSTPAINT
                   : CDRF_DODEFAULT;
    case CDDS_ITEMPOSTPAINT | CDDS_SUBITEM:
        if (stage.iSubItem == 0)
            FillSpaceBeforeName(stage.nmcd.hdc, row);
        PaintCellPicture(stage.nmcd.hdc, row, ColumnOf(stage.iSubItem));
        return CDRF_DODEFAULT;
    default:
        return CDRF_DODEFAULT;
    }
}

void ListViewControl::MarkSelection(NMLVCUSTOMDRAW& stage, std::int32_t row) const {
    if (!HasFocus() && row >= 1 && row <= model_.RowCount() && model_.Row(row).selected)
        MarkUnfocusedSelection(stage);
}

// The control does not paint the space before the text of its first column as selected.
void ListViewControl::FillSpaceBeforeName(HDC canvas, std::int32_t row) const {
    if (row < 1 || row > model_.RowCount() || !model_.Row(row).selected)
        return;
    RECT label{LVIR_LABEL, 0, 0, 0};
    Send(LVM_GETITEMRECT, static_cast<WPARAM>(row - 1), &label);
    RECT space = CellBounds(row, 0);
    space.right = label.left;
    const COLORREF ground = HasFocus() ? GetSysColor(COLOR_HIGHLIGHT) : ColorsOfUnfocusedSelection().ground;
    const COLORREF before = SetDCBrushColor(canvas, ground);
    FillRect(canvas, &space, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    SetDCBrushColor(canvas, before);
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

void ListViewControl::PaintEmptyText(HDC canvas) const {
    RECT area{};
    GetClientRect(Handle(), &area);
    RECT header{};
    GetClientRect(Header(), &header);
    area.top += header.bottom;
    // The control does not erase all that it repaints when its scroll bars come and go.
    FillRect(canvas, &area, GetSysColorBrush(COLOR_WINDOW));
    InflateRect(&area, -dpi_.Scaled(EmptyTextMargin), -dpi_.Scaled(EmptyTextMargin));
    const HGDIOBJ font = SelectObject(canvas, reinterpret_cast<HFONT>(Send(WM_GETFONT)));
    const COLORREF color = SetTextColor(canvas, GetSysColor(COLOR_GRAYTEXT));
    const int mode = SetBkMode(canvas, TRANSPARENT);
    DrawTextA(canvas, shownEmptyText_.c_str(), -1, &area, DT_CENTER | DT_WORDBREAK | DT_NOPREFIX);
    SetBkMode(canvas, mode);
    SetTextColor(canvas, color);
    SelectObject(canvas, font);
}

} // namespace quarn
