#pragma once

#include <windows.h>

#include <string>

namespace quarn::uidrive {

// The key with a name such as "tab", or with that character. Failure when there is none.
WORD VirtualKey(const std::string& name);

} // namespace quarn::uidrive
