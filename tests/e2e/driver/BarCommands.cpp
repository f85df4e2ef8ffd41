// Status bars, toolbars and progress bars. Panels and buttons are counted from 1.

#include "tests/e2e/driver/Messages.h"
#include "tests/e2e/driver/RemoteMemory.h"
#include "tests/e2e/driver/Session.h"
#include "tests/e2e/driver/Words.h"

#include <commctrl.h>

namespace quarn::uidrive {

namespace {

constexpr std::size_t LongestText = 512;

std::string PanelText(Session& session, HWND bar, LRESULT panel) {
    RemoteMemory text(session.Process(), LongestText);
    Send(bar, SB_GETTEXTA, static_cast<WPARAM>(panel), text.Parameter());
    return Escaped(text.ReadText());
}

Lines Status(Session& session, const Words& arguments) {
    const HWND bar = session.Control(arguments[0]);
    const LRESULT count = Send(bar, SB_GETPARTS);
    if (arguments.size() > 1) {
        const long panel = ToNumber(arguments[1]);
        if (panel < 1 || panel > count)
            throw Failure("the status bar has no panel " + arguments[1]);
        return {PanelText(session, bar, panel - 1)};
    }
    Lines lines;
    for (LRESULT panel = 0; panel < count; ++panel)
        lines.push_back(PanelText(session, bar, panel));
    return lines;
}

Lines Progress(Session& session, const Words& arguments) {
    const HWND bar = session.Control(arguments[0]);
    const LRESULT position = Send(bar, PBM_GETPOS);
    const LRESULT highest = Send(bar, PBM_GETRANGE, FALSE, 0);
    return {std::to_string(position) + "/" + std::to_string(highest)};
}

TBBUTTON Button(Session& session, HWND toolbar, LRESULT index) {
    RemoteStruct<TBBUTTON> button(session.Process(), TBBUTTON{});
    if (!Send(toolbar, TB_GETBUTTON, static_cast<WPARAM>(index), button.Parameter()))
        throw Failure("the toolbar has no button " + std::to_string(index + 1));
    return button.Get();
}

std::string StateOf(const TBBUTTON& button) {
    if (button.fsStyle & BTNS_SEP)
        return "separator";
    return (button.fsState & TBSTATE_ENABLED) ? "enabled" : "disabled";
}

Lines Buttons(Session& session, const Words& arguments) {
    const HWND toolbar = session.Control(arguments[0]);
    Lines lines;
    for (LRESULT index = 0; index < Send(toolbar, TB_BUTTONCOUNT); ++index) {
        const TBBUTTON button = Button(session, toolbar, index);
        lines.push_back(std::to_string(button.idCommand) + "\t" + StateOf(button));
    }
    return lines;
}

Lines PressButton(Session& session, const Words& arguments) {
    const HWND toolbar = session.EnabledControl(arguments[0]);
    const LRESULT index = ToNumber(arguments[1]) - 1;
    if (StateOf(Button(session, toolbar, index)) != "enabled")
        throw Failure("button " + arguments[1] + " of the toolbar is disabled");
    RemoteStruct<RECT> rect(session.Process(), RECT{});
    Send(toolbar, TB_GETITEMRECT, static_cast<WPARAM>(index), rect.Parameter());
    ClickAt(toolbar, Centre(rect.Get()), Click::Left);
    return {};
}

} // namespace

Commands BarCommands() {
    return {
        {"status", "BAR [PANEL]", "lists the texts of a status bar's panels, or prints one", 1, Status},
        {"progress", "BAR", "prints a progress bar's value and its maximum", 1, Progress},
        {"buttons", "BAR", "lists a toolbar's buttons: command id, enabled, disabled or separator", 1,
         Buttons},
        {"press-button", "BAR NUMBER", "clicks a button of a toolbar", 2, PressButton},
    };
}

} // namespace quarn::uidrive
