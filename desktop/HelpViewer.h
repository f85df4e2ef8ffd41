#pragma once

#include "desktop/SystemReferences.h"

#include <cstdint>
#include <string>

namespace quarn {

enum class HelpCommand : std::uint32_t { DisplayTopic = 0, CloseAll = 18 };

// The viewer for compiled help files.
class HelpViewer {
  public:
    virtual ~HelpViewer() = default;

    // The file is named with its help window, as in "Folder\File.chm>Window"; the topic may be null. True if
    // a help window opened; false if the system has no viewer.
    virtual bool HtmlHelp(WindowReference caller, const std::string& file, HelpCommand command,
                          const char* topic) = 0;
};

} // namespace quarn
