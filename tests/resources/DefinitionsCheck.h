#pragma once

// The rules for a good definitions file. The program accepts any file; the file that comes with it must
// follow these rules.

#include <string>
#include <string_view>
#include <vector>

namespace quarn {

// A sentence for each fault; none for a good file.
std::vector<std::string> DefinitionFaults(std::string_view gamesIni);

} // namespace quarn
