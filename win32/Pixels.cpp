#include "win32/Pixels.h"

#include "win32/Canvas.h"
#include "win32/Resources.h"
#include "win32/SystemError.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace quarn {

static_assert(sizeof(Pixel) == 4, "laid out as a pixel of a 32-bit bitmap");

namespace {

// Pixels in rows, top row first.
BITMAPINFO Description(int width, int height) {
    BITMAPINFO description{};
    description.bmiHeader.biSize = sizeof description.bmiHeader;
    description.bmiHeader.biWidth = width;
    description.bmiHeader.biHeight = -height;
    description.bmiHeader.biPlanes = 1;
    description.bmiHeader.biBitCount = 32;
    description.bmiHeader.biCompression = BI_RGB;
    return description;
}

std::vector<Pixel> BitsOf(HBITMAP bitmap, int width, int height) {
    BITMAPINFO description = Description(width, height);
    std::vector<Pixel> bits(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    GetDIBits(Canvas::OfScreen().Handle(), bitmap, 0, static_cast<UINT>(height), bits.data(), &description,
              DIB_RGB_COLORS);
    return bits;
}

std::uint8_t ToByte(double value) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 255.0)));
}

} // namespace

// The larger images of an icon are PNG files.
std::optional<Pixels> Pixels::OfIcon(const char* name, int size) {
    const std::string_view images = ResourceBytes(GroupIconType, name);
    if (images.empty())
        return std::nullopt;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): it is only read.
    BYTE* const directory = reinterpret_cast<BYTE*>(const_cast<char*>(images.data()));
    const int image = LookupIconIdFromDirectoryEx(directory, TRUE, size, size, 0);
    const std::string_view bytes = ResourceBytes(IconType, MAKEINTRESOURCEA(image));
    std::optional<Pixels> picture = OfIconImage(bytes);
    if (!picture)
        picture = OfPng(bytes);
    return picture ? picture->Resized(size) : Pixels(size); // transparent if the system has no decoder
}

// An image of an icon, without its file's header: the header of a bitmap of twice the height, its colors in
// rows from the bottom up, and then the mask, which the alpha makes superfluous.
std::optional<Pixels> Pixels::OfIconImage(std::string_view bytes) {
    BITMAPINFOHEADER header{};
    if (bytes.size() < sizeof header)
        return std::nullopt;
    std::memcpy(&header, bytes.data(), sizeof header);
    if (header.biSize != sizeof header || header.biBitCount != 32 || header.biHeight != header.biWidth * 2)
        return std::nullopt;
    const std::size_t rowSize = static_cast<std::size_t>(header.biWidth) * sizeof(Pixel);
    bytes.remove_prefix(sizeof header);
    if (bytes.size() / rowSize < static_cast<std::size_t>(header.biWidth))
        return std::nullopt;

    Pixels picture(header.biWidth);
    for (int y = picture.size_ - 1; y >= 0; --y, bytes.remove_prefix(rowSize))
        std::memcpy(&picture.At(0, y), bytes.data(), rowSize);
    return picture;
}

std::vector<Pixels> Pixels::OfStrip(HBITMAP strip) {
    BITMAP description{};
    if (GetObjectA(strip, sizeof description, &description) == 0 || description.bmHeight <= 0)
        return {};
    const int size = description.bmHeight;
    const int width = description.bmWidth;
    const std::vector<Pixel> bits = BitsOf(strip, width, size);

    std::vector<Pixels> cells(static_cast<std::size_t>(width / size), Pixels(size));
    for (std::size_t cell = 0; cell < cells.size(); ++cell)
        for (int y = 0; y < size; ++y) {
            const auto row = bits.begin() + static_cast<std::ptrdiff_t>(y) * width +
                             static_cast<std::ptrdiff_t>(cell) * size;
            std::copy(row, row + size, &cells[cell].At(0, y));
        }
    return cells;
}

HBITMAP Pixels::MakeStrip(const std::vector<Pixels>& pictures) {
    const int size = pictures.empty() ? 0 : pictures.front().Size();
    const int width = size * static_cast<int>(pictures.size());
    const BITMAPINFO description = Description(width, size);
    void* bits = nullptr;
    const HBITMAP strip = CreateDIBSection(nullptr, &description, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (strip == nullptr)
        ThrowLastError();
    for (std::size_t cell = 0; cell < pictures.size(); ++cell)
        for (int y = 0; y < size; ++y) {
            const Pixel* const row = &pictures[cell].At(0, y);
            std::copy(row, row + size,
                      static_cast<Pixel*>(bits) + static_cast<std::ptrdiff_t>(y) * width +
                          static_cast<std::ptrdiff_t>(cell) * size);
        }
    return strip;
}

Pixel Pixels::MeanOf(double left, double top, double extent) const {
    double blue = 0;
    double green = 0;
    double red = 0;
    double alpha = 0;
    for (int y = static_cast<int>(top); y < size_ && y < top + extent; ++y)
        for (int x = static_cast<int>(left); x < size_ && x < left + extent; ++x) {
            const double covered = (std::min(left + extent, x + 1.0) - std::max(left, double(x))) *
                                   (std::min(top + extent, y + 1.0) - std::max(top, double(y)));
            const Pixel& pixel = At(x, y);
            const double weight = covered * pixel.alpha;
            alpha += weight;
            blue += weight * pixel.blue;
            green += weight * pixel.green;
            red += weight * pixel.red;
        }
    if (alpha <= 0)
        return {};
    return {ToByte(blue / alpha), ToByte(green / alpha), ToByte(red / alpha),
            ToByte(alpha / (extent * extent))};
}

Pixels Pixels::Resized(int size) const {
    if (size == size_)
        return *this;
    Pixels resized(size);
    const double extent = static_cast<double>(size_) / size;
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x)
            resized.At(x, y) = MeanOf(x * extent, y * extent, extent);
    return resized;
}

Pixels Pixels::Disabled() const {
    Pixels pale(*this);
    for (Pixel& pixel : pale.pixels_) {
        // Luminance with the weights of ITU-R BT.601.
        const std::uint8_t grey = ToByte(0.299 * pixel.red + 0.587 * pixel.green + 0.114 * pixel.blue);
        pixel = {grey, grey, grey, ToByte(pixel.alpha * 0.45)};
    }
    return pale;
}

} // namespace quarn
