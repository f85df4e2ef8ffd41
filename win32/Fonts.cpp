#include "win32/Fonts.h"

namespace quarn {

FontHandle MessageFont(Dpi dpi) noexcept {
    NONCLIENTMETRICSA metrics{};
    metrics.cbSize = sizeof metrics;
    if (!SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0))
        return {};
    // The metrics are those of the system's DPI.
    LOGFONTA& description = metrics.lfMessageFont;
    description.lfHeight = MulDiv(description.lfHeight, dpi.Value(), Dpi::OfSystem().Value());
    return FontHandle(CreateFontIndirectA(&description));
}

} // namespace quarn
