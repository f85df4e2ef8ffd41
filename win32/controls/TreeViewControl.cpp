#include "win32/controls/TreeViewControl.h"

#include "win32/SelectionColors.h"

#include <cstring>
#include <utility>

namespace quarn {

void TreeViewControl::Create(HWND parent, int id, const char* name) {
    Control::Create(parent, {WC_TREEVIEWA, name,
                             WS_TABSTOP | TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT |
                                 TVS_SHOWSELALWAYS | TVS_DISABLEDRAGDROP,
                             WS_EX_CLIENTEDGE, id});
}

void TreeViewControl::SetImages(const Images& images) {
    images_ = &images;
    model_.images = images.Keys();
    Send(TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(images.Handle()));
}

int TreeViewControl::ImageOf(const std::string& key) const noexcept {
    return images_ == nullptr ? I_IMAGENONE : images_->IndexOf(key);
}

void TreeViewControl::Flush() {
    const bool outer = std::exchange(flushing_, true);
    if (model_.Revision() != shownRevision_) {
        Rebuild();
    } else {
        for (std::int32_t position = 1; position <= model_.Count(); ++position)
            UpdateNode(position);
    }
    if (model_.SelectedKey() != shownSelection_)
        ShowSelection();
    flushing_ = outer;
}

void TreeViewControl::Rebuild() {
    const bool selectionStays = model_.SelectedKey() == shownSelection_;
    SCROLLINFO scroll{};
    scroll.cbSize = sizeof scroll;
    scroll.fMask = SIF_POS;
    GetScrollInfo(Handle(), SB_VERT, &scroll);

    Send(WM_SETREDRAW, FALSE);
    Send(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    shown_.clear();
    for (std::int32_t position = 1; position <= model_.Count(); ++position)
        Insert(position);
    // A node can be expanded only after its children were added.
    for (std::int32_t position = 1; position <= model_.Count(); ++position)
        ShowExpansion(position);
    ShowSelection();
    shownRevision_ = model_.Revision();
    Send(WM_SETREDRAW, TRUE);
    InvalidateRect(Handle(), nullptr, TRUE);

    if (selectionStays)
        Send(WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, scroll.nPos));
}

void TreeViewControl::Insert(std::int32_t position) {
    const TreeNode& node = std::as_const(model_).At(position);
    const std::int32_t parent = node.parent.empty() ? 0 : model_.Find(node.parent);
    ShownNode shown{nullptr, node.text, node.image, node.selectedImage, false, node.bold};

    TVINSERTSTRUCTA insertion{};
    insertion.hParent = parent == 0 ? TVI_ROOT : Shown(parent).item;
    insertion.hInsertAfter = TVI_LAST;
    insertion.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM | TVIF_STATE;
    insertion.item.stateMask = TVIS_BOLD;
    insertion.item.state = node.bold ? TVIS_BOLD : 0;
    insertion.item.pszText = shown.text.data();
    insertion.item.iImage = ImageOf(node.image);
    insertion.item.iSelectedImage = ImageOf(node.selectedImage);
    insertion.item.lParam = position;
    shown.item = reinterpret_cast<HTREEITEM>(Send(TVM_INSERTITEMA, 0, &insertion));
    shown_.push_back(std::move(shown));
}

void TreeViewControl::UpdateNode(std::int32_t position) {
    const TreeNode& node = std::as_const(model_).At(position);
    ShownNode& shown = Shown(position);
    if (node.expanded != shown.expanded)
        ShowExpansion(position);
    if (node.image == shown.image && node.selectedImage == shown.selectedImage && node.text == shown.text &&
        node.bold == shown.bold)
        return;
    shown.bold = node.bold;
    shown.text = node.text;
    shown.image = node.image;
    shown.selectedImage = node.selectedImage;
    TVITEMA item{};
    item.mask = TVIF_HANDLE | TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_STATE;
    item.stateMask = TVIS_BOLD;
    item.state = shown.bold ? TVIS_BOLD : 0;
    item.hItem = shown.item;
    item.pszText = shown.text.data();
    item.iImage = ImageOf(shown.image);
    item.iSelectedImage = ImageOf(shown.selectedImage);
    Send(TVM_SETITEMA, 0, &item);
}

void TreeViewControl::ShowExpansion(std::int32_t position) {
    ShownNode& shown = Shown(position);
    shown.expanded = std::as_const(model_).At(position).expanded;
    Send(TVM_EXPAND, shown.expanded ? TVE_EXPAND : TVE_COLLAPSE, reinterpret_cast<LPARAM>(shown.item));
}

void TreeViewControl::ShowSelection() {
    shownSelection_ = model_.SelectedKey();
    const std::int32_t position = model_.Find(shownSelection_);
    const HTREEITEM item = position == 0 ? nullptr : Shown(position).item;
    Send(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item));
}

POINT TreeViewControl::MenuPosition() const noexcept {
    POINT position{};
    const auto item = reinterpret_cast<HTREEITEM>(Send(TVM_GETNEXTITEM, TVGN_CARET));
    RECT bounds{};
    // The item's handle is passed in the rectangle that receives the result.
    std::memcpy(&bounds, &item, sizeof item); // NOLINT(bugprone-sizeof-expression): the handle itself
    if (item != nullptr && Send(TVM_GETITEMRECT, TRUE, &bounds) != 0)
        position = {bounds.left, bounds.bottom};
    ClientToScreen(Handle(), &position);
    return position;
}

Answer TreeViewControl::OnNotify(NMHDR& notification) {
    switch (notification.code) {
    case TVN_SELCHANGEDA:
        OnSelectionChanged(reinterpret_cast<const NMTREEVIEWA&>(notification));
        return Handled;
    case TVN_ITEMEXPANDEDA:
        OnExpanded(reinterpret_cast<const NMTREEVIEWA&>(notification));
        return Handled;
    case NM_CUSTOMDRAW:
        return OnCustomDraw(reinterpret_cast<NMTVCUSTOMDRAW&>(notification));
    case TVN_KEYDOWN:
        return OnKeyDown(reinterpret_cast<const NMTVKEYDOWN&>(notification).wVKey) ? 1 : 0;
    case NM_CLICK:
        if (const std::int32_t position = PositionUnderMouse(); position != 0 && NodeClicked)
            NodeClicked(std::as_const(model_).At(position).key);
        return Handled;
    case NM_RCLICK:
        OnRightClick();
        return 1; // no context menu message in addition
    default:
        return NotHandled;
    }
}

// 0 for a node that is no longer in the model.
std::int32_t TreeViewControl::PositionOf(LPARAM itemData) const noexcept {
    const auto position = static_cast<std::int32_t>(itemData);
    return shownRevision_ == model_.Revision() && position <= model_.Count() ? position : 0;
}

void TreeViewControl::OnSelectionChanged(const NMTREEVIEWA& change) {
    const std::int32_t position = change.itemNew.hItem == nullptr ? 0 : PositionOf(change.itemNew.lParam);
    if (flushing_ || position == 0)
        return;
    const std::string key = std::as_const(model_).At(position).key;
    model_.Select(key);
    shownSelection_ = key;
    if (change.action == TVC_BYKEYBOARD && SelectedByKeyboard)
        SelectedByKeyboard(key);
}

void TreeViewControl::OnExpanded(const NMTREEVIEWA& change) {
    const std::int32_t position = PositionOf(change.itemNew.lParam);
    if (flushing_ || position == 0)
        return;
    model_.At(position).expanded = Shown(position).expanded = (change.action & TVE_EXPAND) != 0;
}

LRESULT TreeViewControl::OnCustomDraw(NMTVCUSTOMDRAW& stage) const {
    if (stage.nmcd.dwDrawStage == CDDS_PREPAINT)
        return CDRF_NOTIFYITEMDRAW;
    if (stage.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && !HasFocus() &&
        static_cast<LPARAM>(stage.nmcd.dwItemSpec) == Send(TVM_GETNEXTITEM, TVGN_CARET))
        MarkUnfocusedSelection(stage);
    return CDRF_DODEFAULT;
}

bool TreeViewControl::OnKeyDown(WORD key) {
    if (key != VK_SPACE && key != VK_RETURN)
        return false;
    if (NodeClicked && model_.Has(model_.SelectedKey()))
        NodeClicked(model_.SelectedKey());
    return true;
}

void TreeViewControl::OnRightClick() {
    if (const std::int32_t position = PositionUnderMouse(); position != 0) {
        model_.Select(std::as_const(model_).At(position).key);
        Flush();
    }
    if (RightReleased)
        RightReleased();
}

std::int32_t TreeViewControl::PositionUnderMouse() const noexcept {
    TVHITTESTINFO hit{};
    hit.pt = pressedAt_;
    Send(TVM_HITTEST, 0, &hit);
    if (hit.hItem == nullptr || (hit.flags & TVHT_ONITEM) == 0)
        return 0;
    TVITEMA item{};
    item.mask = TVIF_HANDLE | TVIF_PARAM;
    item.hItem = hit.hItem;
    return Send(TVM_GETITEMA, 0, &item) != 0 ? PositionOf(item.lParam) : 0;
}

Answer TreeViewControl::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK || message == WM_RBUTTONDOWN)
        pressedAt_ = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    // The keys that OnKeyDown handles; the control would search for a node of that name, and beep.
    if (message == WM_CHAR && (wParam == VK_SPACE || wParam == VK_RETURN))
        return Handled;
    return NotHandled;
}

} // namespace quarn
