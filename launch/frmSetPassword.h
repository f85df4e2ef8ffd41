#pragma once

// The Server Password dialog: the password that the next launch passes to the game of the selected server. It
// is kept in the server's record.

#include "core/modDefinitions.h"

#include <cstdint>
#include <functional>
#include <string>

namespace quarn {

class frmSetPassword {
  public:
    using CloseFunction = std::function<void()>;

    frmSetPassword(ProgramState& program, CloseFunction close);

    std::string txtPass;

    void Form_Load();

    // An empty text clears the password.
    void cmdOK_Click();
    void cmdCancel_Click();

    // Enter acts as OK and is swallowed: the key becomes 0. Every other key is left alone.
    void txtPass_KeyPress(int& KeyAscii);

    void Form_KeyDown(int KeyCode);

  private:
    ProgramState& program_;
    std::int32_t server_; // while the dialog is open, a scan may make another server the current one
    CloseFunction close_;
};

} // namespace quarn
