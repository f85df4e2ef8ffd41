// Menu commands, keys, plain messages and the clipboard. The captions of another process's menu cannot be
// read under Wine, so a menu entry is chosen by its command id.

#include "tests/e2e/driver/Messages.h"
#include "tests/e2e/driver/Session.h"
#include "tests/e2e/driver/Words.h"

#include <map>

namespace quarn::uidrive {

namespace {

WORD VirtualKey(const std::string& name) {
    static const std::map<std::string, WORD> Named = {
        {"up", VK_UP},         {"down", VK_DOWN},     {"left", VK_LEFT},    {"right", VK_RIGHT},
        {"home", VK_HOME},     {"end", VK_END},       {"pageup", VK_PRIOR}, {"pagedown", VK_NEXT},
        {"enter", VK_RETURN},  {"escape", VK_ESCAPE}, {"tab", VK_TAB},      {"space", VK_SPACE},
        {"delete", VK_DELETE}, {"f1", VK_F1},         {"f5", VK_F5},        {"apps", VK_APPS},
    };
    const auto found = Named.find(Caption(name));
    if (found != Named.end())
        return found->second;
    if (name.size() == 1)
        return static_cast<WORD>(LOBYTE(VkKeyScanA(name[0])));
    throw Failure("there is no key \"" + name + "\"");
}

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
        {"clipboard", "", "prints the text on the clipboard", 0, ClipboardText},
        {"post", "CONTROL MESSAGE [WPARAM [LPARAM]]", "posts a message", 2, PostMessageTo},
    };
}

} // namespace quarn::uidrive
