#pragma once

#include "core/modDefinitions.h"
#include "desktop/Desktop.h"

#include <string>

namespace quarn {

// Passes a server, "address:port", to Velmar, the monitoring program in the folder next to the program's:
// starts it, and sends the address to its window. The window's title ends in the version of Velmar's
// executable; without such a window or program, nothing happens. Other errors are left to the caller. Events
// may run meanwhile.
void MonitorWithVelmar(const ProgramState& program, Desktop& desktop, const std::string& address);

} // namespace quarn
