#include "win32/Dpi.h"

#include "win32/Canvas.h"
#include "win32/Libraries.h"

namespace quarn {

namespace {

constexpr int TwipsPerInch = 1440;
constexpr int DesignDotsPerInch = 96;

} // namespace

Dpi Dpi::OfWindow(HWND window) noexcept {
    // Windows 10 and up.
    static const auto dpiForWindow =
        FunctionAddress<UINT WINAPI(HWND)>(GetModuleHandleA("user32.dll"), "GetDpiForWindow");
    const UINT dotsPerInch = dpiForWindow != nullptr ? dpiForWindow(window) : 0;
    return dotsPerInch != 0 ? Dpi(dotsPerInch) : OfSystem();
}

Dpi Dpi::OfSystem() noexcept {
    const int dotsPerInch = GetDeviceCaps(Canvas::OfScreen().Handle(), LOGPIXELSY);
    return Dpi(static_cast<unsigned>(dotsPerInch > 0 ? dotsPerInch : DesignDotsPerInch));
}

int Dpi::ToPixels(std::int32_t twips) const noexcept {
    return MulDiv(twips, dotsPerInch_, TwipsPerInch);
}

std::int32_t Dpi::ToTwips(int pixels) const noexcept {
    return MulDiv(pixels, TwipsPerInch, dotsPerInch_);
}

RECT Dpi::ToPixels(const TwipsRect& rectangle) const noexcept {
    return {ToPixels(rectangle.left), ToPixels(rectangle.top), ToPixels(rectangle.left + rectangle.width),
            ToPixels(rectangle.top + rectangle.height)};
}

TwipsRect Dpi::ToTwips(const RECT& rectangle) const noexcept {
    return {ToTwips(rectangle.left), ToTwips(rectangle.top), ToTwips(rectangle.right - rectangle.left),
            ToTwips(rectangle.bottom - rectangle.top)};
}

int Dpi::Scaled(int designPixels) const noexcept {
    return MulDiv(designPixels, dotsPerInch_, DesignDotsPerInch);
}

int Dpi::SystemMetric(int index) const noexcept {
    // Windows 10 and up. On older systems all windows of the program have the system's DPI.
    static const auto metricForDpi =
        FunctionAddress<int WINAPI(int, UINT)>(GetModuleHandleA("user32.dll"), "GetSystemMetricsForDpi");
    return metricForDpi != nullptr ? metricForDpi(index, static_cast<UINT>(dotsPerInch_))
                                   : GetSystemMetrics(index);
}

} // namespace quarn
