#include "views/LayoutRules.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace quarn {
namespace {

constexpr std::int32_t ToolbarHeight = 420;

TEST(LayoutRulesTest, DividesTheWindowAmongTreeAndLists) {
    const MainLayout layout = LayOut({12000, 9000}, ToolbarHeight);
    EXPECT_EQ(layout.trvGames.width, TreeWidth);
    EXPECT_EQ(layout.trvGames.height, 4500);
    EXPECT_EQ(layout.lvwServers.width, 12000 - TreeWidth - 175);
    EXPECT_EQ(layout.lvwServers.height, 4500);
    EXPECT_EQ(layout.lvwPlayers.top, ToolbarHeight + 4500 + 75);
    EXPECT_EQ(layout.lvwPlayers.width, 6000);
    EXPECT_EQ(layout.lvwPlayers.height, 4500 - 1650);
    EXPECT_EQ(layout.lvwServVars.top, ToolbarHeight + 4500 + 75);
    EXPECT_EQ(layout.lvwServVars.left, 6000 + 50);
    EXPECT_EQ(layout.lvwServVars.width, 12000 - 6000 - 175);
    EXPECT_EQ(layout.lvwServVars.height, 4500 - 1650);
}

TEST(LayoutRulesTest, KeepsWhatIsFixedByDesignAtEverySize) {
    const MainLayout small = LayOut({3000, 2000}, ToolbarHeight);
    const MainLayout large = LayOut({30000, 20000}, ToolbarHeight);
    EXPECT_EQ(small.trvGames.left, large.trvGames.left);
    EXPECT_EQ(small.trvGames.top, large.trvGames.top);
    EXPECT_EQ(small.trvGames.width, large.trvGames.width);
    EXPECT_EQ(small.lvwServers.left, large.lvwServers.left);
    EXPECT_EQ(small.lvwServers.top, large.lvwServers.top);
    EXPECT_EQ(small.lvwPlayers.left, large.lvwPlayers.left);
}

TEST(LayoutRulesTest, PutsTheSearchBoxAtTheRightEndOfTheToolbar) {
    constexpr TwipsSize Buttons = {8000, 990};
    constexpr std::int32_t BoxHeight = 330;
    const struct {
        std::int32_t innerWidth;
        SearchBoxPlace place;
    } cases[] = {
        {20000, {{16580, 330, 3300, BoxHeight}, 0}},
        {11540, {{8120, 330, 3300, BoxHeight}, 0}},
        {11000, {{8120, 330, 2760, BoxHeight}, 0}},
        {9890, {{8120, 330, 1650, BoxHeight}, 0}},
        {9889, {{6469, 990, 3300, BoxHeight}, 450}},
        {3000, {{120, 990, 2760, BoxHeight}, 450}},
        {240, {{120, 990, 0, BoxHeight}, 450}},
        {0, {{120, 990, 0, BoxHeight}, 450}},
        {-5, {{120, 990, 0, BoxHeight}, 450}},
        {std::numeric_limits<std::int32_t>::min(), {{120, 990, 0, BoxHeight}, 450}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(PlaceSearchBox(c.innerWidth, Buttons, BoxHeight), c.place) << c.innerWidth;
}

TEST(LayoutRulesTest, ShortensTheLowerListsAboveALine) {
    const MainLayout layout = LayOut({12000, 9000}, ToolbarHeight); // they end at 420 + 4500 + 75 + 2850
    const struct {
        std::int32_t bottom;
        std::int32_t height;
    } cases[] = {{20000, 2850}, {7845, 2850}, {7844, 2849}, {4995, 0}, {4000, 0}, {0, 0}, {-100, 0}};
    for (const auto& c : cases) {
        MainLayout shortened = layout;
        EndAbove(shortened, c.bottom);
        EXPECT_EQ(shortened.lvwPlayers.height, c.height) << c.bottom;
        EXPECT_EQ(shortened.lvwServVars.height, c.height) << c.bottom;
        shortened.lvwPlayers = layout.lvwPlayers;
        shortened.lvwServVars = layout.lvwServVars;
        EXPECT_EQ(shortened, layout);
    }
}

TEST(LayoutRulesTest, NeverMakesASizeNegative) {
    constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();
    for (const TwipsSize inner :
         {TwipsSize{0, 0}, TwipsSize{1, 1}, TwipsSize{174, 3299}, TwipsSize{3474, 3300}, TwipsSize{-1, -1},
          TwipsSize{-5000, 9000}, TwipsSize{12000, -5000}, TwipsSize{Lowest, Lowest}}) {
        const MainLayout layout = LayOut(inner, ToolbarHeight);
        for (const TwipsRect& rect :
             {layout.trvGames, layout.lvwServers, layout.lvwPlayers, layout.lvwServVars}) {
            EXPECT_GE(rect.width, 0) << inner.width << " x " << inner.height;
            EXPECT_GE(rect.height, 0) << inner.width << " x " << inner.height;
        }
    }
    EXPECT_EQ(LayOut({12000, 3300}, ToolbarHeight).lvwPlayers.height, 0);
    EXPECT_EQ(LayOut({12000, 3302}, ToolbarHeight).lvwPlayers.height, 1);
}

TEST(LayoutRulesTest, LetsNoTwoListsOverlap) {
    for (const TwipsSize inner : {TwipsSize{8000, 5000}, TwipsSize{13301, 9001}, TwipsSize{28800, 16200}}) {
        const MainLayout layout = LayOut(inner, ToolbarHeight);
        EXPECT_LE(layout.trvGames.left + layout.trvGames.width, layout.lvwServers.left);
        EXPECT_LE(layout.trvGames.top + layout.trvGames.height, layout.lvwPlayers.top);
        EXPECT_LE(layout.lvwServers.left + layout.lvwServers.width, inner.width);
        EXPECT_LE(layout.lvwPlayers.left + layout.lvwPlayers.width, layout.lvwServVars.left);
        EXPECT_LE(layout.lvwServVars.left + layout.lvwServVars.width, inner.width);
    }
}

} // namespace
} // namespace quarn
