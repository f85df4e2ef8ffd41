#pragma once

// Converts between twips and pixels. Forms and settings use twips, 1440 to an inch; the system draws in
// pixels. An object of this class converts for one DPI value.

#include "base/Geometry.h"
#include "win32/WindowsHeaders.h"

#include <cstdint>

namespace quarn {

class Dpi {
  public:
    explicit Dpi(unsigned dotsPerInch) noexcept : dotsPerInch_(static_cast<int>(dotsPerInch)) {}

    // Of the window's monitor if the system distinguishes monitors, otherwise of the system.
    static Dpi OfWindow(HWND window) noexcept;
    static Dpi OfSystem() noexcept;

    int Value() const noexcept { return dotsPerInch_; }
    bool operator==(const Dpi&) const = default;

    // Both round to the nearest whole number.
    int ToPixels(std::int32_t twips) const noexcept;
    std::int32_t ToTwips(int pixels) const noexcept;

    // The edges are converted, not the sizes, so that rectangles that touch in twips also touch in pixels.
    RECT ToPixels(const TwipsRect& rectangle) const noexcept;
    TwipsRect ToTwips(const RECT& rectangle) const noexcept;

    // A length that was designed in pixels at 96 to an inch.
    int Scaled(int designPixels) const noexcept;

    // One of the system's SM_... lengths, as windows of this DPI have it.
    int SystemMetric(int index) const noexcept;

  private:
    int dotsPerInch_;
};

} // namespace quarn
