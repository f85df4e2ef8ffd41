#pragma once

// The bodies of a master server's reply, in the layouts of the three engine families. Each routine appends
// one record for each entry of the body to Servers, with only address and port, and sets PreviousServerCount
// to the start of the new entries. Errors (a truncated last record) are logged; records appended before are
// kept, and ServerCount may then be one past the last slot.

#include "core/modDefinitions.h"

#include <string>
#include <string_view>

namespace quarn {

// Four address bytes, two port bytes (high byte first), one separator. Changes the text: all end marks "EOT"
// and "EOF" are deleted.
void ParseQ3EngineServers(ProgramState& program, std::string& data);

// Four address bytes, two port bytes (low byte first).
void ParseD3EngineServers(ProgramState& program, std::string_view data);

// Four address bytes, two port bytes (high byte first); the list is sized for records of six bytes, but
// reading takes seven bytes for each record.
void ParseHLCSServers(ProgramState& program, std::string_view data);

} // namespace quarn
