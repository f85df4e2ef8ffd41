#pragma once

// Messages to windows of another process: with a time-out, and with an error if they fail.

#include <windows.h>

#include <string>

namespace quarn::uidrive {

// Sends and waits for the answer. Failure if the window does not answer in five seconds.
LRESULT Send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

// Posts, so that a command that opens a dialog does not block the driver.
void Post(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

std::string TextOf(HWND window);
// A top-level window's title, read without the window's help: it may hang or be about to close.
std::string TitleOf(HWND window);
std::string ClassOf(HWND window);

enum class Click { Left, LeftDouble, Right };

// Presses and releases a mouse button at a point of the window's client area.
void ClickAt(HWND window, POINT point, Click click);

inline POINT Centre(const RECT& rect) {
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

} // namespace quarn::uidrive
