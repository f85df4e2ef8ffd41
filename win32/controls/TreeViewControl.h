#pragma once

// Shows a TreeView. The control is built anew when the model's structure changed; images, expansion and
// selection are otherwise brought up to date node by node. What the user selects, expands or collapses goes
// to the model at once.

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

    // Tells the model which pictures there are.
    void SetImages(const Images& images);

    void Flush();

    // Where a menu that the keyboard asked for belongs: below the selected node, or in the tree's corner.
    POINT MenuPosition() const noexcept;

    Answer OnNotify(NMHDR& notification) override;

    // The user's actions. They come while the control is still at work on its own, so whoever does more than
    // take note of them waits until it is done.
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
    POINT pressedAt_{}; // where a mouse button went down last
    bool flushing_ = false;
};

} // namespace quarn
