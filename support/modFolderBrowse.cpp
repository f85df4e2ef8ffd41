#include "support/modFolderBrowse.h"

namespace quarn {

std::string BrowseForFolder(Prompts& prompts, const std::string& preselectedPath) {
    return prompts.AskFolder("Please select a folder:", preselectedPath);
}

} // namespace quarn
