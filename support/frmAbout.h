#pragma once

// The About box: the program's version, and a button for the system's own information tool.

#include "core/modDefinitions.h"
#include "desktop/Desktop.h"

#include <functional>
#include <string>

namespace quarn {

class frmAbout {
  public:
    using CloseFunction = std::function<void()>;

    frmAbout(ProgramState& program, Desktop& desktop, CloseFunction close);

    std::string lblVersion;

    void Form_Load();

    // Runs the tool; nothing happens on a system without one.
    void cmdSystemInfo_Click();

    void cmdOK_Click();
    void Form_KeyDown(int KeyCode);

  private:
    std::string SystemInformationTool();

    ProgramState& program_;
    Desktop& desktop_;
    CloseFunction close_;
};

} // namespace quarn
