#include "controls/TreeView.h"

#include "tests/fakes/Errors.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace quarn {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TreeNode Node(const std::string& key, const std::string& parent = "") {
    return {key, "text of " + key, parent, "", "", false};
}

// a ( a1 ( a11 ) a2 ) b ( b1 )
TreeView Family() {
    TreeView tree;
    for (const TreeNode& node :
         {Node("a"), Node("b"), Node("a1", "a"), Node("b1", "b"), Node("a2", "a"), Node("a11", "a1")})
        tree.Add(node);
    return tree;
}

std::vector<std::string> Keys(const TreeView& tree) {
    std::vector<std::string> keys;
    for (std::int32_t position = 1; position <= tree.Count(); ++position)
        keys.push_back(tree.At(position).key);
    return keys;
}

TEST(TreeView, CountsPositionsInTheOrderOfInsertion) {
    const TreeView tree = Family();
    EXPECT_THAT(Keys(tree), ElementsAre("a", "b", "a1", "b1", "a2", "a11"));
    EXPECT_EQ(tree.Find("a2"), 5);
    EXPECT_EQ(tree.Node("a2").text, "text of a2");
    EXPECT_THAT(tree.Children("a"), ElementsAre("a1", "a2"));
    EXPECT_THAT(tree.Children(""), ElementsAre("a", "b"));
}

TEST(TreeView, ClosesTheGapAndTakesChildrenAlong) {
    struct Case {
        const char* removed;
        std::vector<std::string> left;
    };
    for (const Case& c : {Case{"a11", {"a", "b", "a1", "b1", "a2"}}, Case{"a1", {"a", "b", "b1", "a2"}},
                          Case{"a", {"b", "b1"}}, Case{"b", {"a", "a1", "a2", "a11"}}}) {
        TreeView tree = Family();
        tree.Remove(c.removed);
        EXPECT_EQ(Keys(tree), c.left) << c.removed;
    }
}

TEST(TreeView, TellsWhatDoesNotExist) {
    TreeView tree = Family();
    for (const std::int32_t position :
         {0, -1, 7, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()})
        EXPECT_EQ(ErrorOf([&] { tree.At(position); }), ErrorNumber::IndexOutOfBounds) << position;
    for (const char* key : {"", "A", "a ", "a111"}) {
        EXPECT_EQ(ErrorOf([&] { tree.Node(key); }), ErrorNumber::ElementNotFound) << key;
        EXPECT_EQ(ErrorOf([&] { tree.Remove(key); }), ErrorNumber::ElementNotFound) << key;
        EXPECT_EQ(ErrorOf([&] { tree.Select(key); }), ErrorNumber::ElementNotFound) << key;
        EXPECT_FALSE(tree.Has(key)) << key;
        EXPECT_THAT(tree.Find(key), 0) << key;
    }
    EXPECT_THAT(tree.Children("none"), IsEmpty());
    EXPECT_EQ(tree.Count(), 6);
}

TEST(TreeView, RefusesNodesThatItCouldNotTellApartOrPlace) {
    struct Case {
        TreeNode node;
        ErrorNumber error;
    };
    TreeView tree = Family();
    const std::uint32_t revision = tree.Revision();
    for (const Case& c :
         {Case{Node("a"), ErrorNumber::KeyNotUnique}, Case{Node("a11", "b"), ErrorNumber::KeyNotUnique},
          Case{Node("c", "nowhere"), ErrorNumber::ElementNotFound},
          Case{Node("c", "c"), ErrorNumber::ElementNotFound},
          Case{Node(""), ErrorNumber::InvalidProcedureCall},
          Case{Node("", "a"), ErrorNumber::InvalidProcedureCall}})
        EXPECT_EQ(ErrorOf([&] { tree.Add(c.node); }), c.error) << c.node.key << " below " << c.node.parent;
    EXPECT_EQ(tree.Count(), 6);
    EXPECT_EQ(tree.Revision(), revision);
}

TEST(TreeView, LosesTheSelectionWithItsNode) {
    struct Case {
        const char* selected;
        const char* removed;
        const char* after;
    };
    for (const Case& c :
         {Case{"b", "a", "b"}, Case{"a", "a", ""}, Case{"a11", "a", ""}, Case{"a1", "a11", "a1"}}) {
        TreeView tree = Family();
        tree.Select(c.selected);
        tree.Remove(c.removed);
        EXPECT_EQ(tree.SelectedKey(), c.after) << c.selected << " without " << c.removed;
    }
}

TEST(TreeView, SelectsNothingWhenTold) {
    TreeView tree = Family();
    EXPECT_EQ(tree.SelectedKey(), "");
    tree.Select("b1");
    tree.SelectNone();
    EXPECT_EQ(tree.SelectedKey(), "");
}

TEST(TreeView, CountsChangesOfItsStructureOnly) {
    TreeView tree = Family();
    const std::uint32_t before = tree.Revision();
    tree.Select("a");
    tree.Node("a").expanded = true;
    EXPECT_EQ(tree.Revision(), before);
    tree.Add(Node("c"));
    EXPECT_NE(tree.Revision(), before);
    const std::uint32_t added = tree.Revision();
    tree.Remove("c");
    EXPECT_NE(tree.Revision(), added);
}

} // namespace
} // namespace quarn
