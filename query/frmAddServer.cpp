#include "query/frmAddServer.h"

#include "base/Scope.h"
#include "controls/Keys.h"
#include "support/Trap.h"

#include <utility>

namespace quarn {

frmAddServer::frmAddServer(ProgramState& program, Desktop& desktop, const std::string& list,
                           Services services)
    : lblList("The server is added to the list \"" + list + "\"."),
      program_(program),
      desktop_(desktop),
      services_(std::move(services)) {}

void frmAddServer::cmdOK_Click() {
    if (isAdding_)
        return; // pressed again during a look-up
    const Restore adding(isAdding_, true);
    Trapped(*program_.AppLog, "frmAddServer", "cmdOK_Click", OnError::LogAndShow, [&] { Add(); });
}

void frmAddServer::Add() {
    const std::string port = txtPort;
    ShowMessage({});
    const auto wait = [this, host = txtIP](const std::function<bool()>& condition) {
        return Wait(host, condition);
    };
    const std::string address = ValidateAddress(program_, desktop_, txtIP, port, wait, focus);
    ShowMessage({});
    if (address.empty() || closed_)
        return;
    focus = AddressField::Port;
    if (!services_.addServer(address, port))
        return;
    focus = AddressField::Address;
    ShowMessage("Added " + address + ":" + port + ".");
}

// Cancelling the dialog cancels a look-up.
bool frmAddServer::Wait(const std::string& host, const std::function<bool()>& condition) {
    if (!condition())
        ShowMessage("Looking up " + host + "...");
    return services_.wait([&] { return closed_ || condition(); }) && !closed_;
}

void frmAddServer::ShowMessage(const std::string& text) {
    lblMessage = text;
    if (MessageChanged)
        MessageChanged();
}

void frmAddServer::cmdCancel_Click() {
    closed_ = true;
    Trapped(*program_.AppLog, "frmAddServer", "cmdCancel_Click", OnError::LogAndShow,
            [&] { services_.close(); });
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
