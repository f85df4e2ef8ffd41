#pragma once

// The settings by name, for the command line, the configuration file and the help text.

#include "tools/gamenet/world/Settings.h"

#include <string>
#include <string_view>

namespace quarn::gamenet {

bool IsGameKey(std::string_view key);
bool IsNetworkKey(std::string_view key);

// Throw BadSetting, naming the key, for an unknown key or a value it cannot take.
void SetGameKey(GameSettings& game, std::string_view key, std::string_view value);
void SetNetworkKey(NetworkSettings& network, std::string_view key, std::string_view value);

// "  --name value" followed by a column with the lines of the meaning.
std::string HelpEntry(std::string_view name, std::string_view value, std::string_view meaning);

// One entry for each key: name, value, meaning.
std::string NetworkKeysHelp();
std::string GameKeysHelp();

} // namespace quarn::gamenet
