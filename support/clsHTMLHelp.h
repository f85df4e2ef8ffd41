#pragma once

// The program's help: one compiled help file, shown in one help window.

#include "desktop/HelpViewer.h"
#include "support/clsAppLog.h"

#include <string>

namespace quarn {

class clsHTMLHelp {
  public:
    clsHTMLHelp(clsAppLog& log, HelpViewer& viewer) : log_(log), viewer_(viewer) {}

    std::string CHMFile;
    std::string HelpWindow;

    void ShowTopic(WindowReference lnghWnd, const std::string& TopicURL);

    // Closes the help windows, but only after a topic could not be shown: a help window that opened belongs
    // to the user and stays open.
    void CloseFile();

  private:
    std::string FileAndWindow() const { return CHMFile + ">" + HelpWindow; }

    clsAppLog& log_;
    HelpViewer& viewer_;
    WindowReference window_ = 0;
    bool displayFailed_ = false;
};

} // namespace quarn
