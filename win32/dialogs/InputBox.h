#pragma once

#include "win32/WindowsHeaders.h"

#include <string>

namespace quarn {

// A small modal dialog that asks for one line of text; empty when cancelled. Enter is OK, Escape is Cancel.
// Stands in the middle of its owner, or of the screen where the owner is not to be seen.
std::string AskInInputBox(HWND owner, bool topMost, const std::string& prompt, const std::string& title);

} // namespace quarn
