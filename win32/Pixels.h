#pragma once

// A square image as pixels with alpha, and the operations between a resource and an image list.

#include "win32/WindowsHeaders.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quarn {

struct Pixel {
    std::uint8_t blue = 0;
    std::uint8_t green = 0;
    std::uint8_t red = 0;
    std::uint8_t alpha = 0; // colors are not multiplied by it
};

class Pixels {
  public:
    explicit Pixels(int size) : size_(size), pixels_(static_cast<std::size_t>(size) * size) {}

    // From the icon resource of this name, in a size; nothing if there is none. The resource is read
    // directly, because creating icons and reading their pixels takes a large part of the start.
    static std::optional<Pixels> OfIcon(const char* name, int size);

    // From a PNG file with a square image; nothing otherwise.
    static std::optional<Pixels> OfPng(std::string_view file);

    // Cuts a strip of square cells, a bitmap of 32 bits, into its images.
    static std::vector<Pixels> OfStrip(HBITMAP strip);

    // The reverse; the images have one size. The caller deletes the bitmap. Throws the system's error.
    static HBITMAP MakeStrip(const std::vector<Pixels>& pictures);

    int Size() const noexcept { return size_; }
    Pixel& At(int x, int y) { return pixels_[static_cast<std::size_t>(y) * size_ + x]; }
    const Pixel& At(int x, int y) const { return pixels_[static_cast<std::size_t>(y) * size_ + x]; }

    // In another size; each pixel is the mean of the pixels that it covers.
    Pixels Resized(int size) const;

    // Pale and without color.
    Pixels Disabled() const;

  private:
    static constexpr UINT LargestImage = 256; // of an icon

    static std::optional<Pixels> OfIconImage(std::string_view bytes);
    Pixel MeanOf(double left, double top, double extent) const;

    int size_;
    std::vector<Pixel> pixels_;
};

} // namespace quarn
