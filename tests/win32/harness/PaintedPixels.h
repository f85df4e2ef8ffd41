#pragma once

#include "win32/WindowsHeaders.h"

#include <cstdint>
#include <vector>

namespace quarn {

// What a window shows of itself on the screen, row by row.
class PaintedPixels {
  public:
    explicit PaintedPixels(HWND window) {
        RECT inner{};
        GetClientRect(window, &inner);
        width_ = inner.right;
        height_ = inner.bottom;
        const HDC screen = GetDC(window);
        const HDC canvas = CreateCompatibleDC(screen);
        BITMAPINFO description{};
        description.bmiHeader.biSize = sizeof description.bmiHeader;
        description.bmiHeader.biWidth = width_;
        description.bmiHeader.biHeight = -height_;
        description.bmiHeader.biPlanes = 1;
        description.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        const HBITMAP picture = CreateDIBSection(screen, &description, DIB_RGB_COLORS, &bits, nullptr, 0);
        const HGDIOBJ before = SelectObject(canvas, picture);
        BitBlt(canvas, 0, 0, width_, height_, screen, 0, 0, SRCCOPY);
        GdiFlush();
        const auto* const first = static_cast<const std::uint32_t*>(bits);
        pixels_.assign(first, first + static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
        for (std::uint32_t& pixel : pixels_)
            pixel &= 0xFFFFFF;
        SelectObject(canvas, before);
        DeleteObject(picture);
        DeleteDC(canvas);
        ReleaseDC(window, screen);
    }

    bool operator==(const PaintedPixels&) const = default;

    COLORREF At(int x, int y) const {
        const std::uint32_t pixel = pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                                            static_cast<std::size_t>(x)];
        return RGB(pixel >> 16 & 255, pixel >> 8 & 255, pixel & 255);
    }

    // How many pixels of an area have this colour.
    int Count(const RECT& area, COLORREF color) const {
        int count = 0;
        for (int y = area.top; y < area.bottom && y < height_; ++y)
            for (int x = area.left; x < area.right && x < width_; ++x)
                count += At(x, y) == color ? 1 : 0;
        return count;
    }

    int Width() const { return width_; }
    int Height() const { return height_; }

  private:
    int width_ = 0;
    int height_ = 0;
    std::vector<std::uint32_t> pixels_;
};

} // namespace quarn
