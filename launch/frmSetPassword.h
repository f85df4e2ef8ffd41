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
    // Index of the server's record, 0 if it no longer exists: the list may change while the dialog is open.
    using ServerFunction = std::function<std::int32_t()>;
    using CloseFunction = std::function<void()>;

    frmSetPassword(ProgramState& program, ServerFunction server, CloseFunction close);

    std::string txtPass;

    // The user has left the dialog by OK.
    bool Accepted() const noexcept { return accepted_; }

    void Form_Load();

    // An empty text clears the password. A server that no longer exists gets none.
    void cmdOK_Click();
    void cmdCancel_Click();

    // Enter acts as OK and is consumed: the key becomes 0. All other keys are ignored.
    void txtPass_KeyPress(int& KeyAscii);

    void Form_KeyDown(int KeyCode);

  private:
    ProgramState& program_;
    ServerFunction server_;
    CloseFunction close_;
    bool accepted_ = false;
};

} // namespace quarn
