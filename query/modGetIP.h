#pragma once

// Addresses as a user types them.

#include "core/modDefinitions.h"
#include "desktop/Desktop.h"

#include <string>

namespace quarn {

// Dotted form of the host's first address; empty when the name does not resolve or the look-up failed, which
// is logged and not shown.
std::string AddrByName(clsAppLog& log, HostNames& hosts, const std::string& host);

// The address to store for a new server, or empty text when the input is refused; then the user has been
// told why, except when a host name did not resolve. An address that the user's locale reads as a number
// (where the dot groups digits) is checked part by part, any other text is taken for a host name.
std::string ValidateAddress(ProgramState& program, Desktop& desktop, const std::string& address,
                            const std::string& port);

} // namespace quarn
