#pragma once

// The colours of a selected row or node while the keyboard focus is elsewhere. The controls' own choice, the
// face of buttons, can hardly be told from a list's ground, and in black themes not at all.

#include "win32/WindowsHeaders.h"

#include <commctrl.h>
#include <functional>

namespace quarn {

struct SelectionColors {
    COLORREF text;
    COLORREF ground;
    bool operator==(const SelectionColors&) const = default;
};

// Both are colours of the system's theme. They are those of an inactive window's caption; where these do not
// differ enough from a list's ground or from each other, the shadow of buttons under the text of windows; and
// where that fails too, as in most black themes, the colours of a selection with the focus. Takes the
// function that knows the theme; the default is the system's.
SelectionColors ColorsOfUnfocusedSelection(const std::function<COLORREF(int)>& systemColor = GetSysColor);

// Gives them to a row or node that a control is about to paint as selected without the focus.
void MarkUnfocusedSelection(NMLVCUSTOMDRAW& row);
void MarkUnfocusedSelection(NMTVCUSTOMDRAW& node);

} // namespace quarn
