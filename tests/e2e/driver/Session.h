#pragma once

// The program under test and its window in use, on which commands act. A session either starts the program,
// and ends it if it still runs at the end of the session, or attaches to a running one.

#include "tests/e2e/driver/Command.h"

#include <windows.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace quarn::uidrive {

class Session {
  public:
    Session() = default;
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Starts the program in its own folder. The arguments are put on its command line unchanged.
    void Start(const std::string& path, const std::string& arguments = {});
    // Attaches to the running process whose executable has this file name.
    void Attach(const std::string& executable);

    bool IsRunning() const;
    // The exit code as soon as the process has ended; nothing if it has not within the time-out.
    std::optional<DWORD> WaitForExit(std::chrono::milliseconds timeout) const;
    void Kill();
    HANDLE Process() const;
    DWORD ProcessId() const;

    // The program's top-level windows including hidden ones, front to back.
    std::vector<HWND> TopLevelWindows() const;

    // From now on commands act on the first visible top-level window whose title matches the pattern; an
    // empty pattern means the main window.
    void Use(const std::string& titlePattern) { titlePattern_ = titlePattern; }

    // The window in use: the selected one, or the main window. Failure if it does not exist.
    HWND Window() const;
    // Like Window, but a Failure if a dialog in front disables it.
    HWND EnabledWindow() const;
    HWND MainWindow() const;

    // A control of the window in use, by "#id", by "Class" or "Class:n" (the n-th of its class from 1), or
    // by its caption.
    HWND Control(const std::string& selector) const;
    // Like Control, but a Failure unless it is visible and enabled, and its window too.
    HWND EnabledControl(const std::string& selector) const;

    // Opens a file exclusively until it is released or the session ends.
    void HoldFile(const std::string& path);
    void LetFileGo();

    std::chrono::milliseconds timeout = std::chrono::seconds(15);

  private:
    HANDLE process_ = nullptr;
    DWORD processId_ = 0;
    bool started_ = false;
    HANDLE heldFile_ = INVALID_HANDLE_VALUE;
    std::string titlePattern_;
};

// The children of a window at every depth, in the order of creation.
std::vector<HWND> ControlsOf(HWND window);

} // namespace quarn::uidrive
