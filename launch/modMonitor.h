#pragma once

#include "core/modDefinitions.h"
#include "desktop/Desktop.h"

#include <string>

namespace quarn {

// Hands a server, "address:port", to Velmar, the monitoring program in the folder next to the program's:
// starts it, and tells its window which server to watch. The window's title ends in the version of Velmar's
// executable; where there is no such window or no such program, nothing happens. Other errors are left to the
// caller. Events may run meanwhile.
void MonitorWithVelmar(const ProgramState& program, Desktop& desktop, const std::string& address);

} // namespace quarn
