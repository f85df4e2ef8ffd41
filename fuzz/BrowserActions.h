#pragma once

// What the user, the network and the system can do to a running browser, as letters of a script. Letters and
// arguments of the user's actions are in tests/fakes/UserActions.cpp.

#include "fuzz/ByteScript.h"
#include "fuzz/FuzzedBrowser.h"

#include <functional>

namespace quarn::fuzz {

// Its arguments have already been read from the script; it may run later.
using Action = std::function<void()>;

// The next action of the script; empty if no action has its letter.
Action ReadAction(FuzzedBrowser& browser, ByteScript& script);

} // namespace quarn::fuzz
