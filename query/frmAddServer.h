#pragma once

// The Add Server dialog: takes an address and a port and adds them to the list shown, one server after
// another until it is closed. While a host name is looked up, events run, and the dialog can be cancelled.

#include "core/modDefinitions.h"
#include "desktop/Desktop.h"
#include "query/modGetIP.h"

#include <functional>
#include <string>

namespace quarn {

class frmAddServer {
  public:
    // What the main window supplies: how a server is added (false: it was not), how a look-up waits, and how
    // the dialog is closed.
    struct Services {
        std::function<bool(const std::string& IP, const std::string& strPort)> addServer;
        WaitFunction wait;
        std::function<void()> close;
    };

    // `list` is what the user knows the list by that gets the servers.
    frmAddServer(ProgramState& program, Desktop& desktop, const std::string& list, Services services);

    // The texts of the two fields.
    std::string txtIP;
    std::string txtPort;

    // Which list gets the server, and what has become of the last one.
    std::string lblList;
    std::string lblMessage;

    // Where the user goes on after cmdOK_Click.
    AddressField focus = AddressField::Address;

    // Told when lblMessage has changed while a handler is still at work.
    std::function<void()> MessageChanged;

    bool Closed() const noexcept { return closed_; }

    void cmdOK_Click();
    void cmdCancel_Click();

    // Enter acts as OK and is swallowed: the key becomes 0. Every other key is left alone.
    void txtIP_KeyPress(int& KeyAscii);
    void txtPort_KeyPress(int& KeyAscii);

  private:
    void OkOnEnter(int& KeyAscii);
    void Add();
    bool Wait(const std::string& host, const std::function<bool()>& condition);
    void ShowMessage(const std::string& text);

    ProgramState& program_;
    Desktop& desktop_;
    Services services_;
    bool isAdding_ = false;
    bool closed_ = false;
};

} // namespace quarn
