#include "win32/Images.h"
#include "win32/Handles.h"
#include "win32/Pixels.h"
#include "win32/Resources.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

bool operator==(const Pixel& a, const Pixel& b) {
    return a.blue == b.blue && a.green == b.green && a.red == b.red && a.alpha == b.alpha;
}

Pixels Filled(int size, Pixel pixel) {
    Pixels picture(size);
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x)
            picture.At(x, y) = pixel;
    return picture;
}

TEST(PixelsTest, KeepAPlainColourInEverySize) {
    const Pixel colour{10, 200, 30, 255};
    for (const int size : {8, 16, 20, 24, 32, 33})
        for (const int place : {0, size / 2, size - 1})
            EXPECT_TRUE(Filled(16, colour).Resized(size).At(place, place) == colour) << size << ' ' << place;
}

TEST(PixelsTest, MixNoColourOfClearPixelsIntoTheirNeighbours) {
    Pixels picture = Filled(2, {0, 0, 0, 0});
    picture.At(0, 0) = {10, 20, 30, 255};
    const Pixel mean = picture.Resized(1).At(0, 0);
    EXPECT_TRUE(mean == (Pixel{10, 20, 30, 64})) << int(mean.blue) << ' ' << int(mean.alpha);
}

TEST(PixelsTest, LoseTheirColourWhenDisabled) {
    const Pixel pale = Filled(1, {0, 0, 255, 200}).Disabled().At(0, 0);
    EXPECT_EQ(pale.red, pale.green);
    EXPECT_EQ(pale.red, pale.blue);
    EXPECT_LT(pale.alpha, 200);
    EXPECT_GT(pale.alpha, 0);
}

TEST(PixelsTest, SurviveTheRoundTripThroughAStrip) {
    const Pixel first{1, 2, 3, 255};
    const Pixel second{4, 5, 6, 77};
    const HBITMAP strip = Pixels::MakeStrip({Filled(16, first), Filled(16, second)});
    const std::vector<Pixels> pictures = Pixels::OfStrip(strip);
    DeleteObject(strip);
    ASSERT_EQ(pictures.size(), 2U);
    EXPECT_TRUE(pictures[0].At(15, 15) == first);
    EXPECT_TRUE(pictures[1].At(0, 0) == second);
}

TEST(PixelsTest, OfAMissingBitmapAreEmpty) {
    EXPECT_TRUE(Pixels::OfStrip(nullptr).empty());
}

// Of a bitmap and of a PNG file.
TEST(PixelsTest, EqualThoseThatTheSystemReadsFromAnIcon) {
    for (const int size : {16, 32, 40, 48}) {
        const IconHandle icon = LoadIconOfSize("fldrop", size);
        ICONINFO parts{};
        ASSERT_TRUE(GetIconInfo(icon.Get(), &parts));
        const BitmapHandle colour(parts.hbmColor);
        const BitmapHandle mask(parts.hbmMask);
        const std::vector<Pixels> expected = Pixels::OfStrip(colour.Get());
        ASSERT_EQ(expected.size(), 1U);

        const Pixels picture = Pixels::OfIcon("fldrop", size).value();
        ASSERT_EQ(picture.Size(), size);
        for (int y = 0; y < size; ++y)
            for (int x = 0; x < size; ++x)
                EXPECT_TRUE(picture.At(x, y) == expected[0].At(x, y)) << size << ": " << x << ' ' << y;
    }
    EXPECT_FALSE(Pixels::OfIcon("no such picture", 16));
}

TEST(ImagesTest, ContainEveryIconOfTheWindowInEverySize) {
    for (const int size : {16, 20, 24, 28, 32, 40, 48, 64}) {
        const Images images(size,
                            {"querymaster", "refreshall", "refresh", "stop", "join", "monitor", "favorites",
                             "fldrcls", "fldrop", "checked", "unchecked", "locked", "ascending", "descending",
                             "family-q3", "family-d3", "family-hl", "favorite", "ready"});
        EXPECT_EQ(images.Keys().size(), 19U) << size;
        EXPECT_EQ(ImageList_GetImageCount(images.Handle()), 19) << size;
    }
}

// The opaque part of an icon, in percent.
int Coverage(const char* key, int size) {
    const Pixels picture = Pixels::OfIcon(key, size).value();
    int covered = 0;
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x)
            covered += picture.At(x, y).alpha > 127;
    return covered * 100 / (size * size);
}

TEST(ImagesTest, ShowTheSameIconInEverySize) {
    for (const char* key : {"querymaster", "refreshall", "stop", "join", "fldrcls", "locked", "family-q3",
                            "family-d3", "family-hl", "favorite", "ready", "application"})
        for (const int size : {20, 24, 28, 32, 40, 48, 64})
            EXPECT_NEAR(Coverage(key, size), Coverage(key, 16), 12) << key << ' ' << size;
}

TEST(ImagesTest, HaveNoImageForAnUnknownKey) {
    const Images images(16, {"locked", "no such picture"});
    EXPECT_GE(images.IndexOf("locked"), 0);
    EXPECT_EQ(images.IndexOf("no such picture"), I_IMAGENONE);
    EXPECT_EQ(images.IndexOf(""), I_IMAGENONE);
    EXPECT_EQ(Images().IndexOf("locked"), I_IMAGENONE);
}

TEST(ImagesTest, ShowNothingOfATransparentOne) {
    constexpr COLORREF Ground = RGB(200, 100, 50);
    Images images(16, {"locked"});
    images.AddTransparent("none");
    const HDC screen = GetDC(nullptr);
    const HDC canvas = CreateCompatibleDC(screen);
    const BitmapHandle picture(CreateCompatibleBitmap(screen, 16, 16));
    const HGDIOBJ before = SelectObject(canvas, picture.Get());
    int painted = 0;
    for (int i = 0; i < 256; ++i)
        SetPixel(canvas, i % 16, i / 16, Ground);
    ImageList_Draw(images.Handle(), images.IndexOf("none"), canvas, 0, 0, ILD_TRANSPARENT);
    for (int i = 0; i < 256; ++i)
        painted += GetPixel(canvas, i % 16, i / 16) != Ground;
    SelectObject(canvas, before);
    DeleteDC(canvas);
    ReleaseDC(nullptr, screen);
    EXPECT_EQ(painted, 0);
}

TEST(ImagesTest, ContainAFlagForEachCode) {
    Images images(20, {"locked"});
    images.AddFlags();
    EXPECT_GT(images.IndexOf("DE"), 0);
    EXPECT_GT(images.IndexOf("US"), images.IndexOf("DE"));
    EXPECT_EQ(images.IndexOf("--"), I_IMAGENONE);
    EXPECT_EQ(images.Keys().size(), static_cast<std::size_t>(ImageList_GetImageCount(images.Handle())));
}

TEST(ImagesTest, HaveTheSameOrderWhenDisabled) {
    const Images available(32, {"stop", "join"});
    const Images disabled(32, {"stop", "join"}, Images::Look::Disabled);
    EXPECT_EQ(available.IndexOf("join"), disabled.IndexOf("join"));
}

} // namespace
} // namespace quarn
