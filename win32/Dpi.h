#pragma once

// From twips to pixels and back. Forms and settings measure in twips, 1440 to an inch; the system draws in
// pixels, of which a monitor has so many to an inch. This is the one place where they meet.

#include "base/Geometry.h"
#include "win32/WindowsHeaders.h"

#include <cstdint>

namespace quarn {

class Dpi {
  public:
    explicit Dpi(unsigned dotsPerInch) noexcept : dotsPerInch_(static_cast<int>(dotsPerInch)) {}

    // Of the monitor the window is on, where the system tells them apart, else of the system.
    static Dpi OfWindow(HWND window) noexcept;
    static Dpi OfSystem() noexcept;

    int Value() const noexcept { return dotsPerInch_; }
    bool operator==(const Dpi&) const = default;

    // Both round to the nearest whole number.
    int ToPixels(std::int32_t twips) const noexcept;
    std::int32_t ToTwips(int pixels) const noexcept;

    // The edges are converted, not the sizes, so that what touches in twips touches in pixels.
    RECT ToPixels(const TwipsRect& rectangle) const noexcept;
    TwipsRect ToTwips(const RECT& rectangle) const noexcept;

    // A length that was designed in pixels of 96 to an inch.
    int Scaled(int designPixels) const noexcept;

  private:
    int dotsPerInch_;
};

} // namespace quarn
