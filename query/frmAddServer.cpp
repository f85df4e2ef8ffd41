#include "query/frmAddServer.h"

#include "controls/Keys.h"
#include "query/modGetIP.h"
#include "support/Trap.h"

#include <utility>

namespace quarn {

frmAddServer::frmAddServer(ProgramState& program, Desktop& desktop, AddServerFunction addServer,
                           CloseFunction close)
    : program_(program), desktop_(desktop), addServer_(std::move(addServer)), close_(std::move(close)) {}

void frmAddServer::cmdOK_Click() {
    Trapped(*program_.AppLog, "frmAddServer", "cmdOK_Click", OnError::LogAndShow, [&] {
        const std::string address = ValidateAddress(program_, desktop_, txtIP, txtPort);
        if (!address.empty())
            addServer_(address, txtPort);
    });
}

void frmAddServer::cmdCancel_Click() {
    Trapped(*program_.AppLog, "frmAddServer", "cmdCancel_Click", OnError::LogAndShow, [&] { close_(); });
}

void frmAddServer::txtIP_KeyPress(int& KeyAscii) {
    OkOnEnter(KeyAscii);
}

void frmAddServer::txtPort_KeyPress(int& KeyAscii) {
    OkOnEnter(KeyAscii);
}

void frmAddServer::OkOnEnter(int& KeyAscii) {
    if (KeyAscii != EnterKey)
        return;
    KeyAscii = 0;
    cmdOK_Click();
}

} // namespace quarn
