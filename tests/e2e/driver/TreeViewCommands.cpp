// Tree views. A node is named by its path: the texts from the root to the node, one word each.

#include "tests/e2e/driver/Messages.h"
#include "tests/e2e/driver/RemoteMemory.h"
#include "tests/e2e/driver/Session.h"
#include "tests/e2e/driver/Words.h"

#include <commctrl.h>

namespace quarn::uidrive {

namespace {

constexpr std::size_t LongestText = 512;

class TreeView {
  public:
    TreeView(Session& session, HWND control) : process_(session.Process()), control_(control) {}

    HTREEITEM Relative(HTREEITEM node, UINT relation) const {
        return reinterpret_cast<HTREEITEM>(
            Send(control_, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(node)));
    }
    HTREEITEM Root() const { return Relative(nullptr, TVGN_ROOT); }
    HTREEITEM Selected() const { return Relative(nullptr, TVGN_CARET); }

    std::string Text(HTREEITEM node) const {
        RemoteMemory text(process_, LongestText);
        TVITEMA item{};
        item.mask = TVIF_TEXT;
        item.hItem = node;
        item.pszText = static_cast<char*>(text.Address());
        item.cchTextMax = LongestText;
        Get(item);
        return text.ReadText();
    }

    int Image(HTREEITEM node) const {
        TVITEMA item{};
        item.mask = TVIF_IMAGE;
        item.hItem = node;
        return Get(item).iImage;
    }

    HTREEITEM Find(const Words& path, std::size_t first) const {
        HTREEITEM node = nullptr;
        for (std::size_t at = first; at < path.size(); ++at) {
            HTREEITEM next = node ? Relative(node, TVGN_CHILD) : Root();
            while (next && Text(next) != path[at])
                next = Relative(next, TVGN_NEXT);
            if (!next)
                throw Failure("the tree has no node \"" + path[at] + "\" there");
            node = next;
        }
        return node;
    }

    void Click(HTREEITEM node, uidrive::Click click) const {
        Send(control_, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(node));
        RemoteMemory rect(process_, sizeof(RECT));
        // The control reads the node from the memory that it then fills with the rectangle.
        rect.Write(&node, sizeof node);
        if (!Send(control_, TVM_GETITEMRECT, TRUE, rect.Parameter()))
            throw Failure("the node is not visible");
        RECT area;
        rect.Read(&area, sizeof area);
        ClickAt(control_, Centre(area), click);
    }

    void Select(HTREEITEM node) const {
        Send(control_, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(node));
    }
    void Expand(HTREEITEM node, WPARAM action) const {
        Send(control_, TVM_EXPAND, action, reinterpret_cast<LPARAM>(node));
    }

  private:
    TVITEMA Get(const TVITEMA& asked) const {
        RemoteStruct<TVITEMA> item(process_, asked);
        if (!Send(control_, TVM_GETITEMA, 0, item.Parameter()))
            throw Failure("the tree does not know the node any more");
        return item.Get();
    }

    HANDLE process_;
    HWND control_;
};

void ListNodes(const TreeView& tree, HTREEITEM first, std::size_t depth, Lines& lines) {
    for (HTREEITEM node = first; node; node = tree.Relative(node, TVGN_NEXT)) {
        lines.push_back(std::string(2 * depth, ' ') + Escaped(tree.Text(node)) + "\t" +
                        (node == tree.Selected() ? "selected" : "") + "\t" +
                        std::to_string(tree.Image(node)));
        ListNodes(tree, tree.Relative(node, TVGN_CHILD), depth + 1, lines);
    }
}

Lines Tree(Session& session, const Words& arguments) {
    const TreeView tree(session, session.Control(arguments[0]));
    Lines lines;
    ListNodes(tree, tree.Root(), 0, lines);
    return lines;
}

Lines SelectedNode(Session& session, const Words& arguments) {
    const TreeView tree(session, session.Control(arguments[0]));
    const HTREEITEM selected = tree.Selected();
    return selected ? Lines{Escaped(tree.Text(selected))} : Lines{};
}

Lines ClickNode(Session& session, const Words& arguments) {
    const TreeView tree(session, session.EnabledControl(arguments[0]));
    tree.Click(tree.Find(arguments, 1), Click::Left);
    return {};
}

Lines RightClickNode(Session& session, const Words& arguments) {
    const TreeView tree(session, session.EnabledControl(arguments[0]));
    tree.Click(tree.Find(arguments, 1), Click::Right);
    return {};
}

Lines SelectNode(Session& session, const Words& arguments) {
    const TreeView tree(session, session.EnabledControl(arguments[0]));
    tree.Select(tree.Find(arguments, 1));
    return {};
}

Lines ExpandNode(Session& session, const Words& arguments) {
    const TreeView tree(session, session.EnabledControl(arguments[0]));
    tree.Expand(tree.Find(arguments, 1), TVE_EXPAND);
    return {};
}

Lines CollapseNode(Session& session, const Words& arguments) {
    const TreeView tree(session, session.EnabledControl(arguments[0]));
    tree.Expand(tree.Find(arguments, 1), TVE_COLLAPSE);
    return {};
}

} // namespace

Commands TreeViewCommands() {
    return {
        {"tree", "CONTROL", "lists the nodes, indented: text, selected or nothing, image number", 1, Tree},
        {"selected-node", "CONTROL", "prints the selected node's text", 1, SelectedNode},
        {"click-node", "CONTROL TEXT...", "clicks a node", 2, ClickNode},
        {"right-click-node", "CONTROL TEXT...", "clicks a node with the right button", 2, RightClickNode},
        {"select-node", "CONTROL TEXT...", "selects a node without a click", 2, SelectNode},
        {"expand-node", "CONTROL TEXT...", "shows a node's children", 2, ExpandNode},
        {"collapse-node", "CONTROL TEXT...", "hides a node's children", 2, CollapseNode},
    };
}

} // namespace quarn::uidrive
