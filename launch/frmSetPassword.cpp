#include "launch/frmSetPassword.h"

#include "controls/Keys.h"
#include "support/Trap.h"

#include <utility>

namespace quarn {

namespace {

constexpr const char* FormName = "frmSetPassword";

} // namespace

frmSetPassword::frmSetPassword(ProgramState& program, ServerFunction server, CloseFunction close)
    : program_(program), server_(std::move(server)), close_(std::move(close)) {}

void frmSetPassword::Form_Load() {
    Trapped(*program_.AppLog, FormName, "Form_Load", OnError::LogAndShow,
            [&] { txtPass = program_.Servers[server_()].Password; });
}

void frmSetPassword::cmdOK_Click() {
    Trapped(*program_.AppLog, FormName, "cmdOK_Click", OnError::LogAndShow, [&] {
        if (const std::int32_t index = server_(); index != 0)
            program_.Servers[index].Password = txtPass;
        accepted_ = true;
        close_();
    });
}

void frmSetPassword::cmdCancel_Click() {
    Trapped(*program_.AppLog, FormName, "cmdCancel_Click", OnError::LogAndShow, [&] { close_(); });
}

void frmSetPassword::txtPass_KeyPress(int& KeyAscii) {
    if (KeyAscii != EnterKey)
        return;
    KeyAscii = 0;
    cmdOK_Click();
}

void frmSetPassword::Form_KeyDown(int KeyCode) {
    if (KeyCode == EscapeKey)
        cmdCancel_Click();
}

} // namespace quarn
