#pragma once

#include "desktop/Prompts.h"

#include <string>

namespace quarn {

// Lets the user pick a folder; the given one is preselected. "" if cancelled.
std::string BrowseForFolder(Prompts& prompts, const std::string& preselectedPath);

} // namespace quarn
