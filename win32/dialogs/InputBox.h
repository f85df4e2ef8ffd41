#pragma once

#include "win32/WindowsHeaders.h"

#include <string>

namespace quarn {

// A small modal dialog that asks for one line of text; empty if cancelled. Enter is OK, Escape is Cancel. It
// appears in the middle of its owner, or of the screen if the owner is not visible.
std::string AskInInputBox(HWND owner, bool topMost, const std::string& prompt, const std::string& title);

} // namespace quarn
