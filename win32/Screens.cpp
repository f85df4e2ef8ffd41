#include "win32/Screens.h"

#include "win32/Libraries.h"

#include <algorithm>

namespace quarn {

namespace {

// What of a title bar has to be on a screen for a mouse to get hold of it, in pixels of 96 to an inch.
constexpr int GraspWidth = 48;
constexpr int GraspHeight = 16;

// Windows 8.1 and up tell the DPI of each monitor apart.
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

} // namespace

std::vector<Screen> ConnectedScreens() {
    std::vector<Screen> screens;
    EnumDisplayMonitors(nullptr, nullptr, &AddScreen, reinterpret_cast<LPARAM>(&screens));
    if (screens.empty())
        screens.push_back(
            {{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)}, Dpi::OfSystem()});
    return screens;
}

RECT PlaceOnScreens(const TwipsRect& window, const std::vector<Screen>& screens) noexcept {
    for (const Screen& screen : screens) {
        const RECT pixels = screen.dpi.ToPixels(window);
        if (TitleBarIsWithinReach(pixels, screen))
            return pixels;
    }
    RECT pixels = screens.front().dpi.ToPixels(window);
    const RECT& area = screens.front().workArea;
    const LONG left = std::max(area.left, std::min(pixels.left, area.right - (pixels.right - pixels.left)));
    const LONG top = std::max(area.top, std::min(pixels.top, area.bottom - (pixels.bottom - pixels.top)));
    OffsetRect(&pixels, left - pixels.left, top - pixels.top);
    return pixels;
}

} // namespace quarn
