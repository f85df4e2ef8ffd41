#pragma once

// The bodies of a master server's reply, in the layouts of the three engine families. Each routine appends
// one record for each entry of the body to Servers, with nothing but address and port, and sets
// PreviousServerCount to where the new entries begin. Errors (a short last record) are logged; what was
// appended before stays, and ServerCount may then stand one past the last slot.

#include "core/modDefinitions.h"

#include <string>
#include <string_view>

namespace quarn {

// Four address bytes, two port bytes (high byte first), one separator. Changes the text: the end marks
// "EOT" and "EOF" are deleted wherever they stand.
void ParseQ3EngineServers(ProgramState& program, std::string& data);

// Four address bytes, two port bytes (low byte first).
void ParseD3EngineServers(ProgramState& program, std::string_view data);

// Four address bytes, two port bytes (high byte first); the list is sized for records of six bytes, but the
// walk takes seven bytes a record.
void ParseHLCSServers(ProgramState& program, std::string_view data);

} // namespace quarn
