// What assistive technology reads from a window's controls.

#include "tests/e2e/driver/Messages.h"
#include "tests/e2e/driver/Session.h"
#include "tests/e2e/driver/Words.h"

#include <ole2.h>
#include <oleacc.h>

namespace quarn::uidrive {

namespace {

// One COM apartment for the lifetime of the driver, created on first use.
void EnterApartment() {
    static const HRESULT entered = OleInitialize(nullptr);
    if (FAILED(entered))
        throw Failure("COM cannot be started");
}

std::string TextOf(BSTR text) {
    std::string bytes;
    if (text != nullptr) {
        bytes.resize(
            static_cast<std::size_t>(WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr)));
        WideCharToMultiByte(CP_ACP, 0, text, -1, bytes.data(), static_cast<int>(bytes.size()), nullptr,
                            nullptr);
        bytes.pop_back(); // the NUL
    }
    SysFreeString(text);
    return bytes;
}

// The name of the control as a whole.
std::string NameOf(HWND control) {
    IAccessible* accessible = nullptr;
    // The import library of oleacc.dll also has an IID_IAccessible, which is not the identifier.
    if (FAILED(AccessibleObjectFromWindow(control, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                          reinterpret_cast<void**>(&accessible))))
        throw Failure("a control of the class " + ClassOf(control) + " cannot be described");
    VARIANT self{};
    self.vt = VT_I4;
    self.lVal = CHILDID_SELF;
    BSTR name = nullptr;
    accessible->get_accName(self, &name);
    accessible->Release();
    return TextOf(name);
}

Lines Accessible(Session& session, const Words&) {
    EnterApartment();
    Lines lines;
    for (const HWND control : ControlsOf(session.Window())) {
        std::string id = "#";
        id += std::to_string(GetDlgCtrlID(control));
        if (IsWindowVisible(control))
            lines.push_back(id + "\t" + ClassOf(control) + "\t" + Escaped(NameOf(control)));
    }
    return lines;
}

} // namespace

Commands AccessibleCommands() {
    return {
        {"accessible", "", "lists the visible controls: id, class, accessible name", 0, Accessible},
    };
}

} // namespace quarn::uidrive
