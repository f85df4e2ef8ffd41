#pragma once

// What a command of the main window acts on: the selection at the time when the user gave it.

#include "views/TargetRows.h"

#include <string>

namespace quarn {

struct CommandTarget {
    TargetRows rows;  // of the server list
    std::string node; // key of the tree's node; empty: none
};

} // namespace quarn
