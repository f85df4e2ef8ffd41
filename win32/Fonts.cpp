#include "win32/Fonts.h"

#include "win32/Canvas.h"

#include <cwchar>

namespace quarn {

namespace {

// The screen, to measure text.
class Measure {
  public:
    explicit Measure(HFONT font) noexcept
        : before_(SelectObject(canvas_.Handle(),
                               font != nullptr ? static_cast<HGDIOBJ>(font) : GetStockObject(SYSTEM_FONT))) {}
    Measure(const Measure&) = delete;
    Measure& operator=(const Measure&) = delete;
    ~Measure() { SelectObject(canvas_.Handle(), before_); }

    HDC Handle() const noexcept { return canvas_.Handle(); }

  private:
    Canvas canvas_ = Canvas::OfScreen();
    HGDIOBJ before_;
};

} // namespace

LOGFONTW MessageFontDescription() noexcept {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    return metrics.lfMessageFont;
}

FontHandle MessageFont(Dpi dpi) noexcept {
    LOGFONTW description = MessageFontDescription();
    description.lfHeight = MulDiv(description.lfHeight, dpi.Value(), Dpi::OfSystem().Value());
    return FontHandle(CreateFontIndirectW(&description));
}

bool IsSameFont(HFONT one, HFONT other) noexcept {
    LOGFONTW first{};
    LOGFONTW second{};
    GetObjectW(one, sizeof first, &first);
    GetObjectW(other, sizeof second, &second);
    return first.lfHeight == second.lfHeight && first.lfWeight == second.lfWeight &&
           first.lfItalic == second.lfItalic && first.lfCharSet == second.lfCharSet &&
           std::wcscmp(first.lfFaceName, second.lfFaceName) == 0;
}

int LineHeight(HFONT font) noexcept {
    TEXTMETRICA metrics{};
    GetTextMetricsA(Measure(font).Handle(), &metrics);
    return metrics.tmHeight;
}

int TextWidth(HFONT font, std::string_view text) noexcept {
    SIZE size{};
    GetTextExtentPoint32A(Measure(font).Handle(), text.data(), static_cast<int>(text.size()), &size);
    return size.cx;
}

} // namespace quarn
