#pragma once

#include <windows.h>

#include <string>

namespace quarn::uidrive {

// The key with a name such as "tab", or of a character. Failure if there is no such key.
WORD VirtualKey(const std::string& name);

} // namespace quarn::uidrive
