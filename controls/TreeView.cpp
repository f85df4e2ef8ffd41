#include "controls/TreeView.h"

#include <algorithm>

namespace quarn {

namespace {

std::size_t CheckedPosition(std::int32_t position, std::int32_t count) {
    if (position < 1 || position > count)
        throw RunTimeError(ErrorNumber::IndexOutOfBounds);
    return static_cast<std::size_t>(position) - 1;
}

} // namespace

void TreeView::Add(TreeNode node) {
    if (node.key.empty())
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    if (Has(node.key))
        throw RunTimeError(ErrorNumber::KeyNotUnique);
    if (!node.parent.empty() && !Has(node.parent))
        throw RunTimeError(ErrorNumber::ElementNotFound);
    nodes_.push_back(std::move(node));
    ++revision_;
}

void TreeView::Remove(std::string_view key) {
    const std::string removed(Node(key).key);
    for (const std::string& child : Children(removed))
        Remove(child);
    if (selected_ == removed)
        selected_.clear();
    nodes_.erase(nodes_.begin() + Find(removed) - 1);
    ++revision_;
}

const TreeNode& TreeView::At(std::int32_t position) const {
    return nodes_[CheckedPosition(position, Count())];
}

TreeNode& TreeView::At(std::int32_t position) {
    return nodes_[CheckedPosition(position, Count())];
}

std::int32_t TreeView::PositionOf(std::string_view key) const {
    const std::int32_t position = Find(key);
    if (position == 0)
        throw RunTimeError(ErrorNumber::ElementNotFound);
    return position;
}

std::int32_t TreeView::Find(std::string_view key) const noexcept {
    const auto found =
        std::find_if(nodes_.begin(), nodes_.end(), [key](const TreeNode& node) { return node.key == key; });
    return found == nodes_.end() ? 0 : static_cast<std::int32_t>(found - nodes_.begin()) + 1;
}

std::vector<std::string> TreeView::Children(std::string_view key) const {
    std::vector<std::string> children;
    for (const TreeNode& node : nodes_)
        if (node.parent == key)
            children.push_back(node.key);
    return children;
}

void TreeView::Select(std::string_view key) {
    selected_ = Node(key).key;
}

} // namespace quarn
