#include "tests/e2e/driver/Messages.h"

#include "tests/e2e/driver/Command.h"

namespace quarn::uidrive {

namespace {

constexpr UINT AnswerTimeoutMilliseconds = 5000;

} // namespace

LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    DWORD_PTR result = 0;
    if (!SendMessageTimeoutA(window, message, wParam, lParam, SMTO_NORMAL, AnswerTimeoutMilliseconds,
                             &result))
        throw Failure("the window does not answer message " + std::to_string(message));
    return static_cast<LRESULT>(result);
}

void Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!PostMessageA(window, message, wParam, lParam))
        throw Failure("message " + std::to_string(message) + " cannot be posted; the window is gone");
}

std::string TextOf(HWND window) {
    std::string text(static_cast<std::size_t>(Send(window, WM_GETTEXTLENGTH)) + 1, '\0');
    text.resize(static_cast<std::size_t>(
        Send(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

std::string TitleOf(HWND window) {
    char title[512];
    return {title, static_cast<std::size_t>(GetWindowTextA(window, title, sizeof title))};
}

std::string ClassOf(HWND window) {
    char name[256];
    return {name, static_cast<std::size_t>(GetClassNameA(window, name, sizeof name))};
}

void ClickAt(HWND window, POINT point, Click click) {
    const bool right = click == Click::Right;
    const UINT down = right ? WM_RBUTTONDOWN : WM_LBUTTONDOWN;
    const UINT up = right ? WM_RBUTTONUP : WM_LBUTTONUP;
    const WPARAM button = right ? MK_RBUTTON : MK_LBUTTON;
    const LPARAM position = MAKELPARAM(point.x, point.y);
    Post(window, down, button, position);
    Post(window, up, 0, position);
    if (click == Click::LeftDouble) {
        Post(window, WM_LBUTTONDBLCLK, button, position);
        Post(window, up, 0, position);
    }
}

} // namespace quarn::uidrive
