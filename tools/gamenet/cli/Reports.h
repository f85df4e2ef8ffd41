#pragma once

// The files that describe a network.
//   Truth        one line for each server, fields separated by tabs; the first line has their names.
//   Games.ini    the definitions file of the browser, with masters on the loopback.
//   Country file the number of ranges, then "from;to;country" with addresses as unsigned numbers.

#include "tools/gamenet/world/World.h"

#include <string>
#include <vector>

namespace quarn::gamenet {

std::string TruthReport(const NetworkSettings& network, const World& world);

// masters: one endpoint for each game. Throws BadSetting for a value that the format cannot hold.
std::string GamesIni(const NetworkSettings& network, const std::vector<Endpoint>& masters);

std::string CountryReport(const World& world);

// Replaces the file atomically: a reader never sees an incomplete one. Throws std::runtime_error with the
// path.
void WriteWhole(const std::string& path, const std::string& content);

} // namespace quarn::gamenet
