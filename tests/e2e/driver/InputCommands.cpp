// Menu commands, keys, plain messages and the clipboard. The captions of another process's menu cannot be
// read under Wine, so a menu entry is chosen by its command id.

#include "tests/e2e/driver/Keys.h"
#include "tests/e2e/driver/Messages.h"
#include "tests/e2e/driver/Session.h"
#include "tests/e2e/driver/Words.h"

namespace quarn::uidrive {

namespace {

Lines ChooseCommand(Session& session, const Words& arguments) {
    Post(session.EnabledWindow(), WM_COMMAND, static_cast<WPARAM>(ToNumber(arguments[0])));
    return {};
}

Lines Key(Session& session, const Words& arguments) {
    const HWND control = arguments[0] == "." ? session.Window() : session.EnabledControl(arguments[0]);
    for (std::size_t at = 1; at < arguments.size(); ++at) {
        const WORD key = VirtualKey(arguments[at]);
        Post(control, WM_KEYDOWN, key, 1);
        Post(control, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
    }
    return {};
}

Lines PostMessageTo(Session& session, const Words& arguments) {
    const HWND window = arguments[0] == "." ? session.Window() : session.Control(arguments[0]);
    const auto number = [&](std::size_t at) { return at < arguments.size() ? ToNumber(arguments[at]) : 0; };
    Post(window, static_cast<UINT>(number(1)), static_cast<WPARAM>(number(2)), number(3));
    return {};
}

Lines ClickControl(Session& session, const Words& arguments) {
    const std::string kind = arguments.size() > 1 ? arguments[1] : "left";
    const Click click = kind == "double" ? Click::LeftDouble : kind == "right" ? Click::Right : Click::Left;
    const HWND control = session.EnabledControl(arguments[0]);
    RECT inner;
    GetClientRect(control, &inner);
    ClickAt(control, Centre(inner), click);
    return {};
}

Lines ClipboardText(Session&, const Words&) {
    if (!OpenClipboard(nullptr))
        throw Failure("the clipboard is in use");
    std::string text;
    if (const HANDLE data = GetClipboardData(CF_TEXT)) {
        text = static_cast<const char*>(GlobalLock(data));
        GlobalUnlock(data);
    }
    CloseClipboard();
    return {Escaped(text)};
}

} // namespace

Commands InputCommands() {
    return {
        {"command", "ID", "chooses the menu entry with that command id", 1, ChooseCommand},
        {"key", "CONTROL KEY...", "presses keys in a control, or in the window where CONTROL is a point", 2,
         Key},
        {"click", "CONTROL [left|double|right]", "clicks into the middle of a control", 1, ClickControl},
        {"clipboard", "", "prints the text on the clipboard", 0, ClipboardText},
        {"post", "CONTROL MESSAGE [WPARAM [LPARAM]]", "posts a message", 2, PostMessageTo},
    };
}

} // namespace quarn::uidrive
