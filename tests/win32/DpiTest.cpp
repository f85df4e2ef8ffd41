#include "win32/Dpi.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

struct Conversion {
    unsigned dpi;
    std::int32_t twips;
    int pixels;
};

TEST(DpiTest, CountsFifteenTwipsToAPixelOfNinetySixToAnInch) {
    for (const Conversion& c :
         {Conversion{96, 15, 1}, Conversion{96, -15, -1}, Conversion{96, 9600, 640}, Conversion{144, 15, 2},
          Conversion{144, 9600, 960}, Conversion{120, 1440, 120}, Conversion{96, 7, 0}, Conversion{96, 8, 1},
          Conversion{168, 0, 0}})
        EXPECT_EQ(Dpi(c.dpi).ToPixels(c.twips), c.pixels) << c.dpi << ' ' << c.twips;
}

TEST(DpiTest, FindsEveryPixelAgainAfterItWasStoredInTwips) {
    for (const unsigned dpi : {96U, 120U, 144U, 168U, 192U, 240U, 288U})
        for (int pixels = -50; pixels <= 4000; ++pixels)
            ASSERT_EQ(Dpi(dpi).ToPixels(Dpi(dpi).ToTwips(pixels)), pixels) << dpi;
}

TEST(DpiTest, KeepsNeighboursTouchingWhateverIsRounded) {
    for (const unsigned dpi : {96U, 120U, 168U}) {
        const RECT left = Dpi(dpi).ToPixels({7, 0, 1001, 10});
        const RECT right = Dpi(dpi).ToPixels({1008, 0, 1001, 10});
        EXPECT_EQ(left.right, right.left) << dpi;
    }
}

TEST(DpiTest, ScalesWhatWasDesignedInPixels) {
    EXPECT_EQ(Dpi(96).Scaled(16), 16);
    EXPECT_EQ(Dpi(120).Scaled(16), 20);
    EXPECT_EQ(Dpi(192).Scaled(33), 66);
}

TEST(DpiTest, MeasuresWhatTheSystemDrawsForAWindow) {
    EXPECT_EQ(Dpi::OfSystem().SystemMetric(SM_CXVSCROLL), GetSystemMetrics(SM_CXVSCROLL));
    EXPECT_EQ(Dpi(192).SystemMetric(SM_CXVSCROLL), 2 * Dpi(96).SystemMetric(SM_CXVSCROLL));
}

} // namespace
} // namespace quarn
