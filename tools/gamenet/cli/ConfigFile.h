#pragma once

// The configuration file and the list of servers outside the network.
//
// Configuration: lines "key = value" in sections, ";" or "#" starts a comment line.
//   [network]     seed, countries, masters, master-port; base = demo (default) or none: the games that
//                 exist before the file is read
//   [all]         settings for every game, those of the file included
//   [game SHORT]  settings for one game; a new game needs "family = q3", "d3" or "hl"
//
// Server list: lines "GAME ADDRESS:PORT"; comment lines as above.

#include "tools/gamenet/world/Settings.h"

#include <string>
#include <vector>

namespace quarn::gamenet {

// Throw BadSetting, naming file and line.
NetworkSettings ParseConfig(const std::string& text, const std::string& fileName);
NetworkSettings ReadConfigFile(const std::string& path);
std::vector<ListedServer> ParseServerList(const std::string& text, const std::string& fileName);
std::vector<ListedServer> ReadServerList(const std::string& path);

} // namespace quarn::gamenet
