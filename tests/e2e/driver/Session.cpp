#include "tests/e2e/driver/Session.h"

#include "tests/e2e/driver/Messages.h"
#include "tests/e2e/driver/Words.h"

#include <tlhelp32.h>

#include <cstdlib>

namespace quarn::uidrive {

namespace {

constexpr DWORD AccessNeeded = PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE |
                               PROCESS_QUERY_INFORMATION | SYNCHRONIZE | PROCESS_TERMINATE;

BOOL CALLBACK AppendWindow(HWND window, LPARAM list) {
    reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
    return TRUE;
}

DWORD FindProcess(const std::string& executable) {
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry;
    DWORD found = 0;
    for (BOOL more = Process32First(snapshot, &entry); more && !found;
         more = Process32Next(snapshot, &entry)) {
        if (lstrcmpiA(entry.szExeFile, executable.c_str()) == 0)
            found = entry.th32ProcessID;
    }
    CloseHandle(snapshot);
    return found;
}

// The n of "Class:n"; 1 without a number, as in a caption that ends in a colon.
long Ordinal(const std::string& selector, std::size_t colon) {
    const bool given = colon != std::string::npos && colon + 1 < selector.size();
    return given ? std::atol(selector.c_str() + colon + 1) : 1;
}

HWND ControlById(HWND window, int id) {
    for (const HWND control : ControlsOf(window)) {
        if (GetDlgCtrlID(control) == id)
            return control;
    }
    return nullptr;
}

HWND ControlByClass(HWND window, const std::string& name, long ordinal) {
    for (const HWND control : ControlsOf(window)) {
        if (Caption(ClassOf(control)) == Caption(name) && --ordinal == 0)
            return control;
    }
    return nullptr;
}

HWND ControlByCaption(HWND window, const std::string& caption) {
    for (const HWND control : ControlsOf(window)) {
        if (Caption(TextOf(control)) == Caption(caption))
            return control;
    }
    return nullptr;
}

} // namespace

std::vector<HWND> ControlsOf(HWND window) {
    std::vector<HWND> controls;
    EnumChildWindows(window, AppendWindow, reinterpret_cast<LPARAM>(&controls));
    return controls;
}

Session::~Session() {
    LetFileGo();
    if (started_ && IsRunning())
        Kill();
    if (process_)
        CloseHandle(process_);
}

void Session::Start(const std::string& path, const std::string& arguments) {
    if (process_)
        throw Failure("this session has its program already");
    std::string commandLine = "\"" + path + "\"";
    if (!arguments.empty())
        commandLine += " " + arguments;
    const std::string folder = path.substr(0, path.find_last_of('\\'));
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION information{};
    if (!CreateProcessA(path.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(),
                        &startup, &information))
        throw Failure(path + " cannot be started: error " + std::to_string(GetLastError()));
    CloseHandle(information.hThread);
    process_ = information.hProcess;
    processId_ = information.dwProcessId;
    started_ = true;
}

void Session::Attach(const std::string& executable) {
    if (process_)
        throw Failure("this session has its program already");
    const DWORD processId = FindProcess(executable);
    if (!processId)
        throw Failure(executable + " does not run");
    process_ = OpenProcess(AccessNeeded, FALSE, processId);
    if (!process_)
        throw Failure(executable + " cannot be opened: error " + std::to_string(GetLastError()));
    processId_ = processId;
}

HANDLE Session::Process() const {
    if (!process_)
        throw Failure("no program was started or attached to");
    return process_;
}

DWORD Session::ProcessId() const {
    Process();
    return processId_;
}

bool Session::IsRunning() const {
    return !WaitForExit(std::chrono::milliseconds(0));
}

std::optional<DWORD> Session::WaitForExit(std::chrono::milliseconds limit) const {
    if (WaitForSingleObject(Process(), static_cast<DWORD>(limit.count())) != WAIT_OBJECT_0)
        return std::nullopt;
    DWORD exitCode = 0;
    GetExitCodeProcess(process_, &exitCode);
    return exitCode;
}

void Session::Kill() {
    TerminateProcess(Process(), 1);
    WaitForExit(timeout);
}

std::vector<HWND> Session::TopLevelWindows() const {
    std::vector<HWND> all;
    EnumWindows(AppendWindow, reinterpret_cast<LPARAM>(&all));
    std::erase_if(all, [id = ProcessId()](HWND window) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        return owner != id;
    });
    return all;
}

HWND Session::MainWindow() const {
    // The main window has no owner, has a title bar and is not a dialog. It may be hidden, as in the tray. A
    // dialog that is destroyed meanwhile loses class and owner at once, so the class is read first.
    for (const HWND window : TopLevelWindows()) {
        const std::string name = ClassOf(window);
        if (name.empty() || name == "#32770")
            continue;
        const bool titled = (GetWindowLongA(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
        if (titled && !GetWindow(window, GW_OWNER))
            return window;
    }
    throw Failure("the program has no main window");
}

HWND Session::Window() const {
    if (titlePattern_.empty())
        return MainWindow();
    for (const HWND window : TopLevelWindows()) {
        if (IsWindowVisible(window) && Matches(TitleOf(window), titlePattern_))
            return window;
    }
    throw Failure("no window has the title \"" + titlePattern_ + "\"");
}

HWND Session::EnabledWindow() const {
    const HWND window = Window();
    if (!IsWindowEnabled(window))
        throw Failure("the window is disabled: a dialog is open in front of it");
    return window;
}

HWND Session::Control(const std::string& selector) const {
    const HWND window = Window();
    HWND control = nullptr;
    if (selector.starts_with('#')) {
        control = ControlById(window, static_cast<int>(ToNumber(selector.substr(1))));
    } else {
        const std::size_t colon = selector.find(':');
        control = ControlByClass(window, selector.substr(0, colon), Ordinal(selector, colon));
        if (!control)
            control = ControlByCaption(window, selector);
    }
    if (!control)
        throw Failure("the window \"" + Escaped(TitleOf(window)) + "\" has no control " + selector);
    return control;
}

HWND Session::EnabledControl(const std::string& selector) const {
    EnabledWindow();
    const HWND control = Control(selector);
    if (!IsWindowVisible(control) || !IsWindowEnabled(control))
        throw Failure("the control " + selector + " is hidden or disabled");
    return control;
}

void Session::HoldFile(const std::string& path) {
    LetFileGo();
    heldFile_ = CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (heldFile_ == INVALID_HANDLE_VALUE)
        throw Failure("cannot open " + path);
}

void Session::LetFileGo() {
    if (heldFile_ != INVALID_HANDLE_VALUE)
        CloseHandle(heldFile_);
    heldFile_ = INVALID_HANDLE_VALUE;
}

} // namespace quarn::uidrive
