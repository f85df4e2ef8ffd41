#pragma once

// Shared by the tests of all dialogs: a program's state, the real desktop, and a user who works in a dialog.

#include "launch/frmGamSetup.h"
#include "launch/frmOptions.h"
#include "launch/frmSetPassword.h"
#include "query/clsIPLocation.h"
#include "query/frmAddServer.h"
#include "support/clsAppLog.h"
#include "support/frmAbout.h"
#include "tests/fakes/Samples.h"
#include "tests/win32/harness/DialogDriver.h"
#include "tests/win32/harness/OwnerTestWindow.h"
#include "tests/win32/harness/TemporaryFolder.h"
#include "win32/desktop/WindowsDesktop.h"
#include "win32/dialogs/ModalFormsWin.h"
#include "win32/resources/ids.h"

#include <deque>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace quarn {

class FormsTest : public ::testing::Test {
  protected:
    FormsTest() {
        desktop.SetMainWindow(owner.Handle());
        program.AppPath = folder.Path() + "\\";
        program.AppLog = std::make_unique<clsAppLog>(desktop.Interfaces(), program.AppPath);
        program.IniVer = 1050012;
        program.IniDesc = "Test & more";
        DefineGames({{"ar", "Arena"}, {"cb", "Crow && bar"}});
        program.Servers.Reset(1);
        program.CurrentServer = 1;
    }

    void DefineGames(const std::vector<std::pair<std::string, std::string>>& games) {
        ResetGames(program, static_cast<std::int32_t>(games.size()));
        std::int32_t i = 0;
        for (const auto& [gameShort, description] : games) {
            program.Games[++i].GameShort = gameShort;
            program.Games[i].Description = description;
            program.Games[i].ExeName = gameShort + ".exe";
        }
    }

    // Forms as the main window creates them.
    std::function<void()> Closing() {
        return [this] { forms.Unload(); };
    }
    frmSetPassword Password() {
        return frmSetPassword(
            program, [server = program.CurrentServer] { return server; }, Closing());
    }
    frmAbout About() { return frmAbout(program, desktop.Interfaces(), Closing()); }
    frmGamSetup GameSetup() {
        return frmGamSetup(
            program, desktop.Interfaces(), [this] { ++treeRefreshed; }, Closing());
    }
    frmOptions Options() {
        return frmOptions(program, desktop.Interfaces(),
                          {[this] { ++interfaceRefreshed; }, [this] { ++treeRefreshed; }, [] {}}, Closing());
    }
    frmAddServer AddServer() {
        const auto add = [this](const std::string& IP, const std::string& strPort) {
            added.push_back(IP + ":" + strPort);
            return true;
        };
        const auto wait = [this](const std::function<bool()>& condition) {
            while (!condition())
                desktop.Interfaces().events.WaitForEvent();
            return true;
        };
        return frmAddServer(program, desktop.Interfaces(), "Arena & more", {add, wait, Closing()});
    }

    // Shows the form while the steps work in its dialog and in the message boxes that it opens.
    template<class Form>
    void Show(Form&& form, std::deque<DialogDriver::Step> steps, bool topMost = false) {
        DialogDriver driver(owner.Handle(), std::move(steps));
        forms.ShowModal(form, topMost);
        EXPECT_EQ(driver.StepsLeft(), 0U);
        EXPECT_TRUE(IsWindowEnabled(owner.Handle()));
        EXPECT_EQ(GetLastActivePopup(owner.Handle()), owner.Handle());
    }

    // The control with this number, on a page of the dialog too.
    static HWND Item(HWND dialog, int id) {
        if (const HWND own = GetDlgItem(dialog, id); own != nullptr)
            return own;
        for (HWND page = GetWindow(dialog, GW_CHILD); page != nullptr; page = GetWindow(page, GW_HWNDNEXT))
            if (const HWND held = GetDlgItem(page, id); held != nullptr)
                return held;
        ADD_FAILURE() << "there is no control " << id;
        return nullptr;
    }
    static std::string Text(HWND dialog, int id) {
        const HWND item = Item(dialog, id);
        std::string text(static_cast<std::size_t>(GetWindowTextLengthA(item)) + 1, '\0');
        text.resize(
            static_cast<std::size_t>(GetWindowTextA(item, text.data(), static_cast<int>(text.size()))));
        return text;
    }
    // Like typing, including the control's notification to its dialog.
    static void Type(HWND dialog, int id, const std::string& text) {
        SendMessageA(Item(dialog, id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    }
    static void Click(HWND dialog, int id) { SendMessageA(Item(dialog, id), BM_CLICK, 0, 0); }
    static bool IsChecked(HWND dialog, int id) {
        return SendMessageA(Item(dialog, id), BM_GETCHECK, 0, 0) == BST_CHECKED;
    }

    // Numbers of the controls in the order of the Tab key, from the one that has the focus now.
    static std::vector<int> TabOrder(HWND dialog) {
        std::vector<int> order;
        const HWND first = GetFocus();
        HWND control = first;
        do {
            order.push_back(GetDlgCtrlID(control));
            control = GetNextDlgTabItem(dialog, control, FALSE);
        } while (control != first && order.size() < 30);
        return order;
    }

    OwnerTestWindow owner;
    TemporaryFolder folder;
    WindowsDesktop desktop;
    ProgramState program;
    ModalFormsWin forms{desktop.Owner()};
    int treeRefreshed = 0;
    int interfaceRefreshed = 0;
    std::vector<std::string> added;
};

} // namespace quarn
