#pragma once

// The Add Server dialog: adds an address and a port to the current list, one server after another until it is
// closed. While a host name is looked up, events run, and the dialog can be cancelled.

#include "core/modDefinitions.h"
#include "desktop/Desktop.h"
#include "query/modGetIP.h"

#include <functional>
#include <string>

namespace quarn {

class frmAddServer {
  public:
    // Supplied by the main window: how a server is added (false: it was not), how a look-up waits, and how
    // the dialog is closed.
    struct Services {
        std::function<bool(const std::string& IP, const std::string& strPort)> addServer;
        WaitFunction wait;
        std::function<void()> close;
    };

    // `list` is the name, known to the user, of the list that the server is added to.
    frmAddServer(ProgramState& program, Desktop& desktop, const std::string& list, Services services);

    // The texts of the two fields.
    std::string txtIP;
    std::string txtPort;

    // Which list the server is added to, and the result for the last one.
    std::string lblList;
    std::string lblMessage;

    // The field to focus after cmdOK_Click.
    AddressField focus = AddressField::Address;

    // Called when lblMessage has changed while a handler is still running.
    std::function<void()> MessageChanged;

    bool Closed() const noexcept { return closed_; }

    void cmdOK_Click();
    void cmdCancel_Click();

    // Enter acts as OK and is consumed: the key becomes 0. All other keys are ignored.
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
