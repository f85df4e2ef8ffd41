#pragma once

// The Add Server dialog: takes an address and a port and adds them to the list shown, one server after
// another until it is closed.

#include "core/modDefinitions.h"
#include "desktop/Desktop.h"

#include <functional>
#include <string>

namespace quarn {

class frmAddServer {
  public:
    // The main window supplies how a server is added, the dialog's window how it is closed.
    using AddServerFunction = std::function<void(const std::string& IP, const std::string& strPort)>;
    using CloseFunction = std::function<void()>;

    frmAddServer(ProgramState& program, Desktop& desktop, AddServerFunction addServer, CloseFunction close);

    // The texts of the two boxes.
    std::string txtIP;
    std::string txtPort;

    void cmdOK_Click();
    void cmdCancel_Click();

    // Enter acts as OK and is swallowed: the key becomes 0. Every other key is left alone.
    void txtIP_KeyPress(int& KeyAscii);
    void txtPort_KeyPress(int& KeyAscii);

  private:
    void OkOnEnter(int& KeyAscii);

    ProgramState& program_;
    Desktop& desktop_;
    AddServerFunction addServer_;
    CloseFunction close_;
};

} // namespace quarn
