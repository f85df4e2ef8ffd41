// The controls of dialogs and message boxes: labels, buttons, edit, check, combo and list boxes, tabs.

#include "tests/e2e/driver/Messages.h"
#include "tests/e2e/driver/RemoteMemory.h"
#include "tests/e2e/driver/Session.h"
#include "tests/e2e/driver/Words.h"

#include <commctrl.h>

namespace quarn::uidrive {

namespace {

bool IsComboBox(HWND control) {
    return Caption(ClassOf(control)).find("combo") != std::string::npos;
}

// The messages that read the items of a combo or list box, which have different numbers.
struct ItemMessages {
    UINT count, textLength, text, selection, select;
    WORD selectionChanged;
};
constexpr ItemMessages ComboBoxMessages{CB_GETCOUNT,  CB_GETLBTEXTLEN, CB_GETLBTEXT,
                                        CB_GETCURSEL, CB_SETCURSEL,    CBN_SELCHANGE};
constexpr ItemMessages ListBoxMessages{LB_GETCOUNT,  LB_GETTEXTLEN, LB_GETTEXT,
                                       LB_GETCURSEL, LB_SETCURSEL,  LBN_SELCHANGE};

// Under Wine only the Unicode form of the message transfers an item's complete text between processes.
std::string ItemText(HWND control, const ItemMessages& messages, LRESULT item) {
    const LRESULT length = Send(control, messages.textLength, static_cast<WPARAM>(item));
    std::wstring wide(static_cast<std::size_t>(length) + 1, L'\0');
    DWORD_PTR copied = 0;
    SendMessageTimeoutW(control, messages.text, static_cast<WPARAM>(item),
                        reinterpret_cast<LPARAM>(wide.data()), SMTO_NORMAL, 5000, &copied);
    char narrow[1024] = "";
    WideCharToMultiByte(CP_ACP, 0, wide.c_str(), -1, narrow, sizeof narrow, nullptr, nullptr);
    return narrow;
}

void Notify(HWND control, WORD notification) {
    const auto id = static_cast<WORD>(GetDlgCtrlID(control));
    Post(GetParent(control), WM_COMMAND, MAKEWPARAM(id, notification), reinterpret_cast<LPARAM>(control));
}

Lines Text(Session& session, const Words& arguments) {
    return {Escaped(TextOf(session.Control(arguments[0])))};
}

Lines SetText(Session& session, const Words& arguments) {
    Send(session.EnabledControl(arguments[0]), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(arguments[1].c_str()));
    return {};
}

Lines Press(Session& session, const Words& arguments) {
    Post(session.EnabledControl(arguments[0]), BM_CLICK);
    return {};
}

Lines Checked(Session& session, const Words& arguments) {
    return {std::to_string(Send(session.Control(arguments[0]), BM_GETCHECK))};
}

Lines Items(Session& session, const Words& arguments) {
    const HWND control = session.Control(arguments[0]);
    const ItemMessages& messages = IsComboBox(control) ? ComboBoxMessages : ListBoxMessages;
    const LRESULT selected = Send(control, messages.selection);
    Lines lines;
    for (LRESULT item = 0; item < Send(control, messages.count); ++item) {
        lines.emplace_back(1, item == selected ? '*' : ' ');
        lines.back() += Escaped(ItemText(control, messages, item));
    }
    return lines;
}

Lines Choose(Session& session, const Words& arguments) {
    const HWND control = session.EnabledControl(arguments[0]);
    const ItemMessages& messages = IsComboBox(control) ? ComboBoxMessages : ListBoxMessages;
    for (LRESULT item = 0; item < Send(control, messages.count); ++item) {
        if (ItemText(control, messages, item) != arguments[1])
            continue;
        Send(control, messages.select, static_cast<WPARAM>(item));
        Notify(control, messages.selectionChanged);
        return {};
    }
    throw Failure("the box " + arguments[0] + " has no item \"" + arguments[1] + "\"");
}

Lines Tab(Session& session, const Words& arguments) {
    const HWND control = session.EnabledControl(arguments[0]);
    RemoteStruct<RECT> rect(session.Process(), RECT{});
    if (!Send(control, TCM_GETITEMRECT, static_cast<WPARAM>(ToNumber(arguments[1])), rect.Parameter()))
        throw Failure("there is no tab " + arguments[1]);
    ClickAt(control, Centre(rect.Get()), Click::Left);
    return {};
}

} // namespace

Commands ControlCommands() {
    return {
        {"text", "CONTROL", "prints a control's text", 1, Text},
        {"set-text", "CONTROL TEXT", "replaces the text of an edit box", 2, SetText},
        {"press", "BUTTON", "presses a button, or checks a check box or option", 1, Press},
        {"checked", "BUTTON", "prints 1 when it is checked, else 0", 1, Checked},
        {"items", "BOX", "lists the items of a combo or list box, the selected one after a star", 1, Items},
        {"choose", "BOX ITEM", "selects an item of a combo or list box", 2, Choose},
        {"tab", "CONTROL NUMBER", "clicks a tab, counted from 0", 2, Tab},
    };
}

} // namespace quarn::uidrive
