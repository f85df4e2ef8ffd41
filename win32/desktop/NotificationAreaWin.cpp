#include "win32/desktop/NotificationAreaWin.h"

#include "win32/Canvas.h"
#include "win32/SystemError.h"
#include "win32/UncaughtErrors.h"

#include <algorithm>
#include <commctrl.h>
#include <shellapi.h>
#include <utility>

namespace quarn {

namespace {

constexpr double TwipsPerInch = 1440;

} // namespace

bool NotificationAreaWin::Notify(NotifyCommand command, const NotifyIconRecord& record) {
    NOTIFYICONDATAA data{};
    // The size of the record's first version, which depends on the width of handles.
    data.cbSize = NOTIFYICONDATAA_V1_SIZE;
    data.hWnd = reinterpret_cast<HWND>(record.owner);
    data.uID = record.identifier;
    data.uFlags = record.flags;
    data.uCallbackMessage = record.callbackMessage;
    data.hIcon = reinterpret_cast<HICON>(record.icon);
    std::copy(record.tip.begin(), record.tip.end(), data.szTip);
    return Shell_NotifyIconA(static_cast<DWORD>(command), &data) != FALSE;
}

WindowReference NotificationAreaWin::AddPictureBox(WindowReference parent, MouseMove handler) {
    const HWND box = CreateWindowExA(0, WC_STATICA, "", WS_CHILD, 0, 0, 0, 0, reinterpret_cast<HWND>(parent),
                                     nullptr, GetModuleHandleA(nullptr), nullptr);
    if (box == nullptr)
        ThrowLastError();
    // A taskbar with fewer rights than a program that runs as administrator must also be able to report the
    // mouse.
    ChangeWindowMessageFilterEx(box, WM_MOUSEMOVE, MSGFLT_ALLOW, nullptr);
    mouseMove_ = std::move(handler);
    SetWindowSubclass(box, &PictureBoxProc, 0, reinterpret_cast<DWORD_PTR>(this));
    return reinterpret_cast<WindowReference>(box);
}

double NotificationAreaWin::TwipsPerPixelX() const {
    return TwipsPerInch / GetDeviceCaps(Canvas::OfScreen().Handle(), LOGPIXELSX);
}

LRESULT CALLBACK NotificationAreaWin::PictureBoxProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                                     UINT_PTR id, DWORD_PTR reference) noexcept {
    if (message == WM_MOUSEMOVE) {
        reinterpret_cast<NotificationAreaWin*>(reference)->OnMouseMove(lParam);
        return 0;
    }
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(window, &PictureBoxProc, id);
    return DefSubclassProc(window, message, wParam, lParam);
}

void NotificationAreaWin::OnMouseMove(LPARAM position) noexcept {
    Contain("clsSysTray", "pichook_MouseMove", [&] { mouseMove_(LOWORD(position) * TwipsPerPixelX()); });
}

} // namespace quarn
