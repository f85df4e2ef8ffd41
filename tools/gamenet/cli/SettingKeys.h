#pragma once

// The settings by name, as the command line and the configuration file write them. One table serves both
// and the help text.

#include "tools/gamenet/world/Settings.h"

#include <string>
#include <string_view>

namespace quarn::gamenet {

bool IsGameKey(std::string_view key);
bool IsNetworkKey(std::string_view key);

// Throw BadSetting, naming the key, for an unknown key or a value it cannot take.
void SetGameKey(GameSettings& game, std::string_view key, std::string_view value);
void SetNetworkKey(NetworkSettings& network, std::string_view key, std::string_view value);

// "  --name value" and, in a column of their own, the lines of the meaning.
std::string HelpEntry(std::string_view name, std::string_view value, std::string_view meaning);

// One entry a key: name, value, meaning.
std::string NetworkKeysHelp();
std::string GameKeysHelp();

} // namespace quarn::gamenet
