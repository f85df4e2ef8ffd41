#include "launch/modMonitor.h"

#include "base/Succeeds.h"
#include "core/modCommonSubs.h"

namespace quarn {

namespace {

constexpr const char* VelmarFromProgramFolder = "..\\Velmar\\Velmar.exe";

// Empty if Velmar does not exist or has no version.
std::string WindowTitleOfVelmar(const Desktop& desktop, const std::string& executable) {
    std::string title;
    Succeeds([&] { title = "Velmar " + std::to_string(GetFileVersionNumber(desktop, executable)); });
    return title;
}

} // namespace

void MonitorWithVelmar(const ProgramState& program, Desktop& desktop, const std::string& address) {
    const std::string executable = program.AppPath + VelmarFromProgramFolder;
    Shell::Request request;
    request.file = executable;
    request.folder = program.AppPath;
    request.show = ShowState::Normal;
    desktop.shell.Open(request);

    SendCopyData(desktop, WindowTitleOfVelmar(desktop, executable), "ConGam:" + address);
}

} // namespace quarn
