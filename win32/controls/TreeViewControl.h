#pragma once

// Shows a TreeView. The control is rebuilt when the model's structure has changed; otherwise images,
// expansion and selection are updated node by node. Nodes that the user selects, expands or collapses are
// stored in the model at once.

#include "controls/TreeView.h"
#include "win32/Images.h"
#include "win32/controls/Control.h"

#include <commctrl.h>
#include <functional>
#include <string>
#include <vector>

namespace quarn {

class TreeViewControl final : public Control {
  public:
    explicit TreeViewControl(TreeView& model) noexcept : model_(model) {}

    void Create(HWND parent, int id, const char* name);

    // Tells the model which images exist.
    void SetImages(const Images& images);

    void Flush();

    // Position of a menu that the keyboard opened: below the selected node, or in the tree's corner.
    POINT MenuPosition() const noexcept;

    Answer OnNotify(NMHDR& notification) override;

    // The user's actions. They are raised while the control is still handling them, so handlers that do more
    // than note them must wait until it has finished.
    std::function<void(const std::string& key)> NodeClicked;        // left button, Space or Enter
    std::function<void(const std::string& key)> SelectedByKeyboard; // the selection moved to the node
    std::function<void()> RightReleased;                            // the node under the mouse is selected

  private:
    struct ShownNode {
        HTREEITEM item = nullptr;
        std::string text;
        std::string image;
        std::string selectedImage;
        bool expanded = false;
        bool bold = false;
    };

    Answer OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnSelectionChanged(const NMTREEVIEWA& change);
    void OnExpanded(const NMTREEVIEWA& change);
    LRESULT OnCustomDraw(NMTVCUSTOMDRAW& stage) const;
    bool OnKeyDown(WORD key);
    void OnRightClick();

    void Rebuild();
    void Insert(std::int32_t position);
    void UpdateNode(std::int32_t position);
    void ShowExpansion(std::int32_t position);
    void ShowSelection();
    std::int32_t PositionUnderMouse() const noexcept;
    std::int32_t PositionOf(LPARAM itemData) const noexcept;
    ShownNode& Shown(std::int32_t position) { return shown_[static_cast<std::size_t>(position) - 1]; }
    int ImageOf(const std::string& key) const noexcept;

    TreeView& model_;
    const Images* images_ = nullptr;
    std::vector<ShownNode> shown_; // in the order of the model's positions
    std::uint32_t shownRevision_ = 0;
    std::string shownSelection_;
    POINT pressedAt_{}; // position of the last mouse button press
    bool flushing_ = false;
};

} // namespace quarn
