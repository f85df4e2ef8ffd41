// Real key strokes: like those of a keyboard, they reach the control with the focus.

#include "tests/e2e/driver/Keys.h"
#include "tests/e2e/driver/Session.h"
#include "tests/e2e/driver/Words.h"

#include <chrono>
#include <vector>

namespace quarn::uidrive {

namespace {

constexpr DWORD PollMilliseconds = 5;

using Strokes = std::vector<INPUT>;

void AppendStroke(Strokes& strokes, WORD key, bool down) {
    INPUT stroke{};
    stroke.type = INPUT_KEYBOARD;
    stroke.ki.wVk = key;
    stroke.ki.wScan = static_cast<WORD>(MapVirtualKeyA(key, MAPVK_VK_TO_VSC));
    stroke.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
    strokes.push_back(stroke);
}

// Keys that are pressed in this order and released in the opposite one.
void AppendChord(Strokes& strokes, const std::vector<WORD>& keys) {
    for (const WORD key : keys)
        AppendStroke(strokes, key, true);
    for (auto key = keys.rbegin(); key != keys.rend(); ++key)
        AppendStroke(strokes, *key, false);
}

// The keys of a word such as "tab", "alt+x" or "shift+tab".
std::vector<WORD> KeysOf(const std::string& chord) {
    std::vector<WORD> keys;
    std::size_t start = 0;
    for (std::size_t plus; (plus = chord.find('+', start)) != std::string::npos; start = plus + 1)
        keys.push_back(VirtualKey(chord.substr(start, plus - start)));
    keys.push_back(VirtualKey(chord.substr(start)));
    return keys;
}

// The control of the window that has the focus, if any.
HWND FocusIn(HWND window) {
    GUITHREADINFO information{};
    information.cbSize = sizeof information;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &information);
    return information.hwndActive == window ? information.hwndFocus : nullptr;
}

// A window that was just opened, or was behind a dialog, gets the keyboard focus a little later.
void WaitForTheKeyboard(const Session& session) {
    const auto end = std::chrono::steady_clock::now() + session.timeout;
    const auto hasIt = [](HWND window) { return GetForegroundWindow() == window && FocusIn(window); };
    while (!hasIt(session.EnabledWindow())) {
        if (std::chrono::steady_clock::now() > end)
            throw Failure("another window has the keyboard");
        Sleep(PollMilliseconds);
    }
}

void Send(const Session& session, Strokes strokes) {
    WaitForTheKeyboard(session);
    const auto count = static_cast<UINT>(strokes.size());
    if (SendInput(count, strokes.data(), sizeof(INPUT)) != count)
        throw Failure("the keys cannot be pressed");
}

Lines Keyboard(Session& session, const Words& arguments) {
    Strokes strokes;
    for (const std::string& chord : arguments)
        AppendChord(strokes, KeysOf(chord));
    Send(session, std::move(strokes));
    return {};
}

// As a keyboard does: what is held down comes again and again, and up once.
Lines Hold(Session& session, const Words& arguments) {
    const WORD key = VirtualKey(arguments[0]);
    Strokes strokes;
    for (long times = ToNumber(arguments[1]); times > 0; --times)
        AppendStroke(strokes, key, true);
    AppendStroke(strokes, key, false);
    Send(session, std::move(strokes));
    return {};
}

Lines Type(Session& session, const Words& arguments) {
    Strokes strokes;
    for (const char character : arguments[0]) {
        const auto code = static_cast<WORD>(VkKeyScanA(character));
        if (code == 0xFFFF)
            throw Failure("no key gives that character");
        const WORD key = LOBYTE(code);
        const bool shifted = (HIBYTE(code) & 1) != 0;
        AppendChord(strokes, shifted ? std::vector<WORD>{VK_SHIFT, key} : std::vector<WORD>{key});
    }
    Send(session, std::move(strokes));
    return {};
}

Lines Focus(Session& session, const Words&) {
    return {"#" + std::to_string(GetDlgCtrlID(FocusIn(session.Window())))};
}

} // namespace

Commands KeyboardCommands() {
    return {
        {"keyboard", "KEY...", "presses keys and chords such as alt+x where the focus is", 1, Keyboard},
        {"hold-key", "KEY TIMES", "holds a key down where the focus is, until it has come so often", 2, Hold},
        {"type", "TEXT", "types a text where the focus is", 1, Type},
        {"focus", "", "prints the control that has the focus, as #id", 0, Focus},
    };
}

} // namespace quarn::uidrive
