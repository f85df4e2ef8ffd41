#pragma once

// The command line.

#include "tools/gamenet/world/Settings.h"

#include <optional>
#include <span>
#include <string>

namespace quarn::gamenet {

struct Options {
    NetworkSettings network;
    bool help = false;
    bool dieWithParent = false;
    std::optional<double> duration; // seconds
    // Paths; empty: the file is not written.
    std::string truth;
    std::string gamesIni;
    std::string countryFile;
    std::string readyFile;
    std::string stats;
    std::string record;
    std::string askedFile;
};

// arguments: without the program's name. Reads the files that --config and --list name. The
// configuration file comes first, then the other arguments in their order. Throws BadSetting.
Options ParseOptions(std::span<const std::string> arguments);

std::string HelpText();

} // namespace quarn::gamenet
