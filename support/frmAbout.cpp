#include "support/frmAbout.h"

#include "controls/Keys.h"
#include "core/Version.h"
#include "core/modFileHelper.h"
#include "support/Trap.h"
#include "support/clsRegAccess.h"

#include <utility>

namespace quarn {

namespace {

constexpr const char* FormName = "frmAbout";

} // namespace

frmAbout::frmAbout(ProgramState& program, Desktop& desktop, CloseFunction close)
    : program_(program), desktop_(desktop), close_(std::move(close)) {}

void frmAbout::Form_Load() {
    lblVersion = std::string("Version ") + VersionText;
}

void frmAbout::cmdSystemInfo_Click() {
    Trapped(*program_.AppLog, FormName, "cmdSystemInfo_Click", OnError::LogAndShow, [&] {
        Shell::Request request;
        request.file = desktop_.registry.Expanded(SystemInformationTool());
        if (FileExists(desktop_.files, request.file))
            desktop_.shell.Open(request);
    });
}

std::string frmAbout::SystemInformationTool() {
    clsRegAccess registry(*program_.AppLog, desktop_.registry, desktop_.locale);
    const auto textOf = [&](const char* key, const char* value) {
        return std::get<std::string>(registry.QueryValue(RegistryRoot::LocalMachine, key, value));
    };
    const std::string location = textOf("SOFTWARE\\Microsoft\\Shared Tools Location", "MSInfo");
    return location.empty() ? textOf("SOFTWARE\\Microsoft\\Shared Tools\\MSInfo", "Path") : location;
}

void frmAbout::cmdOK_Click() {
    Trapped(*program_.AppLog, FormName, "cmdOK_Click", OnError::LogAndShow, [&] { close_(); });
}

void frmAbout::Form_KeyDown(int KeyCode) {
    if (KeyCode == EscapeKey)
        cmdOK_Click();
}

} // namespace quarn
