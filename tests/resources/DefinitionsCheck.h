#pragma once

// What makes a definitions file a good one. The program takes any file as it is; a file that comes with it is
// held to more.

#include <string>
#include <string_view>
#include <vector>

namespace quarn {

// A sentence for each fault; none for a good file.
std::vector<std::string> DefinitionFaults(std::string_view gamesIni);

} // namespace quarn
