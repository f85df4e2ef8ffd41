#include "launch/modMonitor.h"

#include "base/Succeeds.h"
#include "core/modCommonSubs.h"

#include <string>

namespace quarn {

namespace {

constexpr const char* VelmarFromProgramFolder = "..\\Velmar\\Velmar.exe";

// Empty when Velmar is not there or tells no version.
std::string WindowTitleOfVelmar(const Desktop& desktop, const std::string& executable) {
    std::string title;
    Succeeds([&] { title = "Velmar " + std::to_string(GetFileVersionNumber(desktop, executable)); });
    return title;
}

} // namespace

void MonitorWithVelmar(const ProgramState& program, Desktop& desktop) {
    // Taken now, as the shell may let events run in which another server is selected.
    const std::string message = "ConGam:" + AddressText(program.Servers[program.CurrentServer]);
    const std::string executable = program.AppPath + VelmarFromProgramFolder;
    Shell::Request request;
    request.file = executable;
    request.folder = program.AppPath;
    request.show = ShowState::Normal;
    desktop.shell.Open(request);

    const std::string title = WindowTitleOfVelmar(desktop, executable);
    SendCopyData(desktop, title, message);
}

} // namespace quarn
