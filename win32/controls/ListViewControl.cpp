#include "win32/controls/ListViewControl.h"

#include "base/Scope.h"

#include <algorithm>
#include <utility>

namespace quarn {

void ListViewControl::Create(HWND parent, int id, const char* name, Selection selection, Dpi dpi) {
    const DWORD several = selection == Selection::OneRow ? LVS_SINGLESEL : 0;
    Control::Create(
        parent, {WC_LISTVIEWA, name,
                 WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS | several,
                 WS_EX_CLIENTEDGE, id});
    constexpr DWORD extended = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER;
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, extended, static_cast<LPARAM>(extended));

    dpi_ = dpi;
    const std::int32_t columns = model_.columns.HighestIndex();
    shownHeaderIcons_.resize(static_cast<std::size_t>(columns));
    std::vector<int> displayed;
    for (std::int32_t number = 1; number <= columns; ++number) {
        displayed.push_back(SubItemOf(number));
        const int subItem = number - 1;
        const ListColumn& shown = model_.columns[ColumnOf(subItem)];
        std::string text = shown.text;
        LVCOLUMNA column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT | LVCF_SUBITEM;
        column.fmt = shown.alignment == Alignment::Right ? LVCFMT_RIGHT : LVCFMT_LEFT;
        column.cx = dpi_.ToPixels(shown.Width());
        column.pszText = text.data();
        column.iSubItem = subItem;
        Send(LVM_INSERTCOLUMNA, static_cast<WPARAM>(subItem), &column);
    }
    Send(LVM_SETCOLUMNORDERARRAY, displayed.size(), displayed.data());
}

int ListViewControl::SubItemOf(std::int32_t column) const noexcept {
    if (column == nameColumn_)
        return 0;
    return column < nameColumn_ ? column : column - 1;
}

std::int32_t ListViewControl::ColumnOf(int subItem) const noexcept {
    if (subItem == 0)
        return nameColumn_;
    return subItem < nameColumn_ ? subItem : subItem + 1;
}

void ListViewControl::SetImages(const Images& images, Pictures pictures) {
    images_ = &images;
    paintsCellPictures_ = pictures == Pictures::OfRowsAndHeaders;
    if (paintsCellPictures_) {
        Images rowHeight = Images::Spacer(images.Size());
        Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(rowHeight.Handle()));
        rowHeight_ = std::move(rowHeight);
    }
    SendMessageA(Header(), HDM_SETIMAGELIST, HDSIL_NORMAL, reinterpret_cast<LPARAM>(images.Handle()));
    for (std::int32_t column = 1; column <= model_.columns.HighestIndex(); ++column)
        ShowHeader(column);
}

void ListViewControl::ChangeDpi(Dpi dpi) {
    const Restore setting(settingWidths_, true);
    for (std::int32_t column = 1; column <= model_.columns.HighestIndex(); ++column)
        SetWidth(column, MulDiv(WidthOf(column), dpi.Value(), dpi_.Value()));
    dpi_ = dpi;
    FitColumns();
}

int ListViewControl::WidthOf(std::int32_t column) const noexcept {
    return static_cast<int>(Send(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(SubItemOf(column))));
}

// The control lays itself out even if the width stays.
void ListViewControl::SetWidth(std::int32_t column, int width) noexcept {
    if (width != WidthOf(column))
        Send(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(SubItemOf(column)), width);
}

// Space is always reserved for the vertical scroll bar, so that added or removed rows do not move the
// columns.
void ListViewControl::FitColumns() {
    const Restore setting(settingWidths_, true);
    RECT outer{};
    GetWindowRect(Handle(), &outer);
    int left = outer.right - outer.left - 2 * GetSystemMetrics(SM_CXEDGE) - dpi_.SystemMetric(SM_CXVSCROLL);
    int filling = 0;
    for (std::int32_t column = 1; column <= model_.columns.HighestIndex(); ++column) {
        if (model_.columns[column].fills)
            ++filling;
        else
            left -= WidthOf(column);
    }
    if (!FitsColumns() || filling == 0)
        return;
    for (std::int32_t column = 1; column <= model_.columns.HighestIndex(); ++column)
        if (const ListColumn& shown = model_.columns[column]; shown.fills)
            SetWidth(column, std::max(left / filling, dpi_.ToPixels(shown.width)));
}

// The user has changed no width.
bool ListViewControl::FitsColumns() const noexcept {
    for (std::int32_t column = 1; column <= model_.columns.HighestIndex(); ++column)
        if (model_.columns[column].chosenWidth > 0)
            return false;
    return true;
}

HWND ListViewControl::Header() const noexcept {
    return reinterpret_cast<HWND>(Send(LVM_GETHEADER));
}

int ListViewControl::ImageOf(const std::string& key) const noexcept {
    return images_ == nullptr || key.empty() ? I_IMAGENONE : images_->IndexOf(key);
}

void ListViewControl::SelectAll() noexcept {
    SetRowState(0, LVIS_SELECTED, LVIS_SELECTED);
}

// Row 0 means all rows, like index -1 of the control.
void ListViewControl::SetRowState(std::int32_t row, UINT state, UINT mask) const noexcept {
    LVITEMA item{};
    item.state = state;
    item.stateMask = mask;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row - 1), &item);
}

POINT ListViewControl::MenuPosition() const noexcept {
    RECT bounds{};
    POINT position{};
    const std::int32_t row = model_.FocusedRow();
    if (row >= 1 && row <= shownRows_) {
        bounds.left = LVIR_BOUNDS;
        Send(LVM_GETITEMRECT, static_cast<WPARAM>(row - 1), &bounds);
        position.y = bounds.bottom;
    }
    RECT inner{};
    GetClientRect(Handle(), &inner);
    position.x = dpi_.Scaled(32);
    position.y = std::clamp(position.y, inner.top, inner.bottom);
    ClientToScreen(Handle(), &position);
    return position;
}

void ListViewControl::Flush() {
    if (model_.updatesLocked)
        return;
    FlushHeaders();
    FlushEmptyText();
    const ListView::Changes changes = model_.TakeChanges();
    if (!changes.rows && !changes.selection && changes.firstDirty == 0 && changes.ensureVisible == 0)
        return;

    const bool outer = std::exchange(flushing_, true);
    if (changes.rows)
        ShowRowCount();
    if (changes.rows || changes.selection)
        ShowSelection();
    if (changes.firstDirty != 0)
        InvalidateRows(changes.firstDirty, changes.lastDirty);
    if (changes.ensureVisible != 0)
        Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(changes.ensureVisible - 1), FALSE);
    flushing_ = outer;
}

void ListViewControl::FlushHeaders() {
    for (std::size_t index = 0; index < shownHeaderIcons_.size(); ++index) {
        const auto column = static_cast<std::int32_t>(index) + 1;
        if (model_.columns[column].headerIcon != shownHeaderIcons_[index])
            ShowHeader(column);
    }
}

void ListViewControl::FlushEmptyText() {
    std::string text = model_.RowCount() == 0 && model_.emptyText ? model_.emptyText() : std::string();
    if (text == shownEmptyText_)
        return;
    shownEmptyText_ = std::move(text);
    InvalidateRect(Handle(), nullptr, TRUE);
}

void ListViewControl::ShowHeader(std::int32_t column) {
    const std::string& icon = model_.columns[column].headerIcon;
    const bool isRight = model_.columns[column].alignment == Alignment::Right;
    HDITEMA header{};
    header.mask = HDI_FORMAT | HDI_IMAGE;
    header.fmt = HDF_STRING | (isRight ? HDF_RIGHT : HDF_LEFT);
    header.iImage = ImageOf(icon);
    if (header.iImage >= 0)
        header.fmt |= HDF_IMAGE | (isRight ? 0 : HDF_BITMAP_ON_RIGHT);
    SendMessageA(Header(), HDM_SETITEMA, static_cast<WPARAM>(SubItemOf(column)),
                 reinterpret_cast<LPARAM>(&header));
    shownHeaderIcons_[static_cast<std::size_t>(column) - 1] = icon;
}

void ListViewControl::ShowRowCount() {
    const std::int32_t rows = model_.RowCount();
    const std::int32_t before = std::exchange(shownRows_, rows);
    // A list that grows at its end keeps its content and scroll position.
    const LPARAM flags = rows >= before ? LVSICF_NOINVALIDATEALL | LVSICF_NOSCROLL : 0;
    if (rows != before)
        Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(rows), flags);
}

void ListViewControl::ShowSelection() {
    const std::int32_t selected = model_.SelectedCount();
    const std::int32_t sole = selected == 1 ? model_.SelectedRow() : 0;
    const std::int32_t soleBefore = std::exchange(soleSelectedRow_, sole);
    if (sole != 0 && soleBefore != 0) {
        // A scan does this at every server, so it must not look at all rows.
        if (soleBefore <= shownRows_ && soleBefore != sole)
            SetRowState(soleBefore, 0, LVIS_SELECTED);
        SetRowState(sole, LVIS_SELECTED, LVIS_SELECTED);
    } else if (selected == 0) {
        if (Send(LVM_GETSELECTEDCOUNT) != 0)
            SetRowState(0, 0, LVIS_SELECTED);
    } else if (selected == shownRows_) {
        SetRowState(0, LVIS_SELECTED, LVIS_SELECTED);
    } else {
        ShowSelectionRowByRow();
    }
    ShowFocus();
}

void ListViewControl::ShowSelectionRowByRow() {
    Send(WM_SETREDRAW, FALSE);
    std::int32_t shown =
        static_cast<std::int32_t>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED)) + 1;
    for (std::int32_t row = 1; row <= shownRows_; ++row) {
        const bool isShown = row == shown;
        if (isShown)
            shown = static_cast<std::int32_t>(
                        Send(LVM_GETNEXTITEM, static_cast<WPARAM>(row - 1), LVNI_SELECTED)) +
                    1;
        if (const bool selected = model_.Row(row).selected; selected != isShown)
            SetRowState(row, selected ? LVIS_SELECTED : 0, LVIS_SELECTED);
    }
    Send(WM_SETREDRAW, TRUE);
    InvalidateRect(Handle(), nullptr, FALSE);
}

void ListViewControl::ShowFocus() {
    const std::int32_t focused = model_.FocusedRow();
    const auto shown =
        static_cast<std::int32_t>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED)) + 1;
    if (focused == shown)
        return;
    if (focused == 0)
        SetRowState(shown, 0, LVIS_FOCUSED);
    else
        SetRowState(focused, LVIS_FOCUSED, LVIS_FOCUSED);
    // The row where a selection with the Shift key starts.
    Send(LVM_SETSELECTIONMARK, 0, focused - 1);
}

// One rectangle, because the control would slowly repaint row by row.
void ListViewControl::InvalidateRows(std::int32_t first, std::int32_t last) const noexcept {
    const auto top = static_cast<std::int32_t>(Send(LVM_GETTOPINDEX)) + 1;
    const std::int32_t bottom = top + static_cast<std::int32_t>(Send(LVM_GETCOUNTPERPAGE));
    const std::int32_t from = std::max(first, top);
    const std::int32_t to = std::min(last, bottom);
    if (from > to)
        return;
    RECT upper{};
    RECT lower{};
    upper.left = lower.left = LVIR_BOUNDS;
    Send(LVM_GETITEMRECT, static_cast<WPARAM>(from - 1), &upper);
    Send(LVM_GETITEMRECT, static_cast<WPARAM>(to - 1), &lower);
    RECT changed{};
    GetClientRect(Handle(), &changed);
    changed.top = upper.top;
    changed.bottom = lower.bottom;
    InvalidateRect(Handle(), &changed, FALSE);
}

} // namespace quarn
