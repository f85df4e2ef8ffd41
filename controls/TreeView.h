#pragma once

// A tree of nodes with keys. A node's position is its place in the order of insertion, from 1; removing a
// node closes the gap. Errors: 35600 no such position, 35601 no such key, 35602 the key exists already, 5 an
// empty key (which, as the parent's key, means the root).

#include "base/OneBased.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

struct TreeNode {
    std::string key;
    std::string text;
    std::string parent; // key of the parent; empty: a root
    std::string image;
    std::string selectedImage;
    bool expanded = false;
    bool bold = false;
};

class TreeView {
  public:
    // Adds a node after its siblings.
    void Add(TreeNode node);

    // Removes a node and everything below it. If the selected node is among them, nothing is selected
    // afterwards.
    void Remove(std::string_view key);

    std::int32_t Count() const noexcept { return static_cast<std::int32_t>(nodes_.size()); }
    TreeNode& At(std::int32_t position);
    const TreeNode& At(std::int32_t position) const;
    TreeNode& Node(std::string_view key) { return At(PositionOf(key)); }
    const TreeNode& Node(std::string_view key) const { return At(PositionOf(key)); }
    bool Has(std::string_view key) const noexcept { return Find(key) != 0; }

    // Position of the node, 0 if there is none.
    std::int32_t Find(std::string_view key) const noexcept;

    std::vector<std::string> Children(std::string_view key) const;

    // Key of the selected node; empty: none.
    const std::string& SelectedKey() const noexcept { return selected_; }
    void Select(std::string_view key);
    void SelectNone() { selected_.clear(); }

    // Incremented on every structural change; the window rebuilds the control when it differs.
    std::uint32_t Revision() const noexcept { return revision_; }

    // Keys of the images in the tree's image list.
    std::vector<std::string> images;

  private:
    std::int32_t PositionOf(std::string_view key) const;

    std::vector<TreeNode> nodes_;
    std::string selected_;
    std::uint32_t revision_ = 0;
};

} // namespace quarn
