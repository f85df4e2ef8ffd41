#pragma once

// What the user, the network and the system can do to a running browser.

#include "fuzz/ByteScript.h"
#include "fuzz/FuzzedBrowser.h"

#include <functional>

namespace quarn::fuzz {

// Whatever the action's letter is followed by has been read when it is made; it may run later.
using Action = std::function<void()>;

// The next action of the script; empty where its letter stands for none.
Action ReadAction(FuzzedBrowser& browser, ByteScript& script);

} // namespace quarn::fuzz
