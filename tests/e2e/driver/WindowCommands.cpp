// Top-level windows: the list of them, the one in use, its controls and its position.

#include "tests/e2e/driver/Messages.h"
#include "tests/e2e/driver/RemoteMemory.h"
#include "tests/e2e/driver/Session.h"
#include "tests/e2e/driver/Words.h"

namespace quarn::uidrive {

namespace {

std::string StateOf(HWND window) {
    if (!IsWindowVisible(window))
        return "hidden";
    return IsWindowEnabled(window) ? "enabled" : "disabled";
}

Lines Windows(Session& session, const Words&) {
    Lines lines;
    for (const HWND window : session.TopLevelWindows()) {
        if (IsWindowVisible(window))
            lines.push_back(Escaped(TitleOf(window)) + "\t" + ClassOf(window) + "\t" + StateOf(window));
    }
    return lines;
}

Lines IsOpen(Session& session, const Words& arguments) {
    for (const HWND window : session.TopLevelWindows()) {
        if (IsWindowVisible(window) && Matches(TitleOf(window), arguments[0]))
            return {"1"};
    }
    return {"0"};
}

Lines Use(Session& session, const Words& arguments) {
    session.Use(arguments.empty() ? "" : arguments[0]);
    if (!arguments.empty())
        session.Window();
    return {};
}

Lines Title(Session& session, const Words&) {
    return {Escaped(TitleOf(session.Window()))};
}

Lines Controls(Session& session, const Words&) {
    Lines lines;
    for (const HWND control : ControlsOf(session.Window())) {
        std::string id = "#";
        id += std::to_string(GetDlgCtrlID(control));
        lines.push_back(Joined({id, ClassOf(control), StateOf(control), Escaped(TextOf(control))}, "\t"));
    }
    return lines;
}

Lines State(Session& session, const Words&) {
    const HWND window = session.Window();
    if (!IsWindowVisible(window))
        return {"hidden"};
    if (IsIconic(window))
        return {"minimized"};
    return {IsZoomed(window) ? "maximized" : "normal"};
}

Lines TopMost(Session& session, const Words&) {
    return {(GetWindowLongA(session.Window(), GWL_EXSTYLE) & WS_EX_TOPMOST) ? "1" : "0"};
}

Lines Rectangle(Session& session, const Words& arguments) {
    const HWND window = arguments.empty() ? session.Window() : session.Control(arguments[0]);
    RECT rect;
    GetWindowRect(window, &rect);
    return {std::to_string(rect.left) + " " + std::to_string(rect.top) + " " +
            std::to_string(rect.right - rect.left) + " " + std::to_string(rect.bottom - rect.top)};
}

Lines Repaint(Session& session, const Words& arguments) {
    RedrawWindow(session.Control(arguments[0]), nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    return {};
}

// The property in which Wine stores the window's number on the display.
Lines XWindow(Session& session, const Words&) {
    const HANDLE window = GetPropA(session.Window(), "__wine_x11_whole_window");
    return {std::to_string(reinterpret_cast<std::uintptr_t>(window))};
}

Lines Move(Session& session, const Words& arguments) {
    const auto pixels = [&](std::size_t n) { return static_cast<int>(ToNumber(arguments[n])); };
    if (!SetWindowPos(session.Window(), nullptr, pixels(0), pixels(1), pixels(2), pixels(3),
                      SWP_NOZORDER | SWP_NOACTIVATE))
        throw Failure("the window cannot be moved");
    return {};
}

// Like dragging the window to a screen of another scale, with the size that the system suggests.
Lines ChangeDpi(Session& session, const Words& arguments) {
    const HWND window = session.Window();
    const int before = static_cast<int>(ToNumber(arguments[0]));
    const int now = static_cast<int>(ToNumber(arguments[1]));
    RECT bounds;
    GetWindowRect(window, &bounds);
    bounds.right = bounds.left + MulDiv(bounds.right - bounds.left, now, before);
    bounds.bottom = bounds.top + MulDiv(bounds.bottom - bounds.top, now, before);
    const RemoteStruct<RECT> suggested(session.Process(), bounds);
    Send(window, WM_DPICHANGED, MAKEWPARAM(now, now), suggested.Parameter());
    return {};
}

Lines SystemCommand(Session& session, WPARAM command) {
    Post(session.Window(), WM_SYSCOMMAND, command);
    return {};
}

Lines Close(Session& session, const Words&) {
    session.EnabledWindow();
    return SystemCommand(session, SC_CLOSE);
}
Lines Minimize(Session& session, const Words&) {
    return SystemCommand(session, SC_MINIMIZE);
}
Lines Maximize(Session& session, const Words&) {
    return SystemCommand(session, SC_MAXIMIZE);
}
Lines Restore(Session& session, const Words&) {
    return SystemCommand(session, SC_RESTORE);
}

} // namespace

Commands WindowCommands() {
    return {
        {"windows", "", "lists the visible windows: title, class, enabled or disabled", 0, Windows},
        {"is-open", "TITLE", "prints 1 when a visible window has that title, else 0", 1, IsOpen},
        {"use", "[TITLE]", "sends what follows to the window of that title; without one, the main window", 0,
         Use},
        {"title", "", "prints the window's title", 0, Title},
        {"controls", "", "lists the window's controls: id, class, state, text", 0, Controls},
        {"state", "", "prints hidden, minimized, maximized or normal", 0, State},
        {"top-most", "", "prints 1 when the window stays in front of all others, else 0", 0, TopMost},
        {"rectangle", "[CONTROL]", "prints left, top, width and height in pixels of the screen", 0,
         Rectangle},
        {"repaint", "CONTROL", "has a control painted again as a whole", 1, Repaint},
        {"x-window", "", "prints the window's number on the X display", 0, XWindow},
        {"move", "LEFT TOP WIDTH HEIGHT", "moves and sizes the window", 4, Move},
        {"change-dpi", "BEFORE NOW", "moves the window to a screen of another scale, in dots per inch", 2,
         ChangeDpi},
        {"close", "", "closes the window, as its close button does", 0, Close},
        {"minimize", "", "minimizes the window", 0, Minimize},
        {"maximize", "", "maximizes the window", 0, Maximize},
        {"restore", "", "brings the window back to its normal size", 0, Restore},
    };
}

} // namespace quarn::uidrive
