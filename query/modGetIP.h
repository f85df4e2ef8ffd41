#pragma once

// Addresses as a user types them.

#include "core/modDefinitions.h"
#include "desktop/Desktop.h"

#include <functional>
#include <string>

namespace quarn {

// Lets events run until the condition holds; false: the caller has to give up.
using WaitFunction = std::function<bool(const std::function<bool()>& condition)>;

// Dotted form of the host's first address; empty if the name does not resolve, the look-up failed (logged,
// not shown), or the wait was given up.
std::string AddrByName(clsAppLog& log, HostNames& hosts, const std::string& host, const WaitFunction& wait);

enum class AddressField { Address, Port };

// The address to store for a new server, or empty text if the input is refused; the user has then been told
// why, except if a host name did not resolve, and `wrong` names the field to correct. An address that the
// user's locale reads as a number (where the dot groups digits) is checked part by part; any other text is
// taken as a host name.
std::string ValidateAddress(ProgramState& program, Desktop& desktop, const std::string& address,
                            const std::string& port, const WaitFunction& wait, AddressField& wrong);

} // namespace quarn
