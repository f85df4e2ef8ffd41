#pragma once

// What the benchmarks work on: datagrams and server lists as real ones are, the same at every run.

#include "core/modDefinitions.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace quarn::bench {

// A status reply of about `size` bytes: a server's variables, then as many players as fit.
std::string Q3Status(std::size_t size);
std::string D3Status(std::size_t size);
std::string HLRules(std::size_t size);

// The body of a master reply of about `size` bytes.
std::string MasterBody(std::size_t size);

// A list of servers with realistic names and some 30 variables each.
OneBased<ServerRecord> Servers(std::int32_t count);

} // namespace quarn::bench
