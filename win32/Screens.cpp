#include "win32/Screens.h"

#include "win32/Libraries.h"

#include <algorithm>

namespace quarn {

namespace {

// How much of a title bar must be on a screen so that a mouse can grab it, in pixels at 96 to an inch.
constexpr int GraspWidth = 48;
constexpr int GraspHeight = 16;

// Windows 8.1 and up distinguish the DPI of each monitor.
Dpi DpiOf(HMONITOR monitor) noexcept {
    static const auto dpiForMonitor =
        SystemFunction<HRESULT WINAPI(HMONITOR, int, UINT*, UINT*)>("shcore.dll", "GetDpiForMonitor");
    constexpr int EffectiveDpi = 0;
    UINT horizontal = 0;
    UINT vertical = 0;
    if (dpiForMonitor == nullptr || FAILED(dpiForMonitor(monitor, EffectiveDpi, &horizontal, &vertical)))
        return Dpi::OfSystem();
    return Dpi(vertical);
}

BOOL CALLBACK AddScreen(HMONITOR monitor, HDC, RECT*, LPARAM collected) noexcept {
    auto& screens = *reinterpret_cast<std::vector<Screen>*>(collected);
    MONITORINFO description{};
    description.cbSize = sizeof description;
    if (!GetMonitorInfoA(monitor, &description))
        return TRUE;
    const bool primary = (description.dwFlags & MONITORINFOF_PRIMARY) != 0;
    screens.insert(primary ? screens.begin() : screens.end(), Screen{description.rcWork, DpiOf(monitor)});
    return TRUE;
}

bool TitleBarIsWithinReach(const RECT& window, const Screen& screen) noexcept {
    const LONG width =
        std::min(window.right, screen.workArea.right) - std::max(window.left, screen.workArea.left);
    return width >= screen.dpi.Scaled(GraspWidth) && window.top >= screen.workArea.top &&
           window.top + screen.dpi.Scaled(GraspHeight) <= screen.workArea.bottom;
}

double ShownPart(const RECT& window, const Screen& screen) noexcept {
    const auto areaOf = [](const RECT& rectangle) {
        return double(rectangle.right - rectangle.left) * double(rectangle.bottom - rectangle.top);
    };
    RECT common;
    return IntersectRect(&common, &window, &screen.workArea) ? areaOf(common) / areaOf(window) : 0;
}

} // namespace

std::vector<Screen> ConnectedScreens() {
    std::vector<Screen> screens;
    EnumDisplayMonitors(nullptr, nullptr, &AddScreen, reinterpret_cast<LPARAM>(&screens));
    if (screens.empty())
        screens.push_back(
            {{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}, Dpi::OfSystem()});
    return screens;
}

TwipsRect StoredPlace(const RECT& window, Dpi dpiOfWindow, const std::vector<Screen>& screens) noexcept {
    const Dpi& first = screens.front().dpi;
    return {first.ToTwips(window.left), first.ToTwips(window.top),
            dpiOfWindow.ToTwips(window.right - window.left), dpiOfWindow.ToTwips(window.bottom - window.top)};
}

RECT PlaceOnScreens(const TwipsRect& stored, const std::vector<Screen>& screens) noexcept {
    const Dpi& first = screens.front().dpi;
    const POINT corner = {first.ToPixels(stored.left), first.ToPixels(stored.top)};
    const auto pixelsAt = [&](Dpi dpi) {
        return RECT{corner.x, corner.y, corner.x + dpi.ToPixels(stored.width),
                    corner.y + dpi.ToPixels(stored.height)};
    };
    RECT best = pixelsAt(first);
    double most = 0;
    for (const Screen& screen : screens) {
        const RECT pixels = pixelsAt(screen.dpi);
        const double shown = ShownPart(pixels, screen);
        if (TitleBarIsWithinReach(pixels, screen) && shown > most) {
            best = pixels;
            most = shown;
        }
    }
    if (most > 0)
        return best;
    const RECT& area = screens.front().workArea;
    const LONG left = std::max(area.left, std::min(best.left, area.right - (best.right - best.left)));
    const LONG top = std::max(area.top, std::min(best.top, area.bottom - (best.bottom - best.top)));
    OffsetRect(&best, left - best.left, top - best.top);
    return best;
}

} // namespace quarn
