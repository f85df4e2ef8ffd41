// The password, Add Server and About dialogs.

#include "tests/fakes/FakeShell.h"
#include "tests/fakes/MemoryRegistry.h"
#include "tests/win32/dialogs/FormsTest.h"
#include "tests/win32/harness/ReplacedImport.h"
#include "win32/desktop/FilesWin.h"

#include "core/Version.h"

#include <string>
#include <vector>

namespace quarn {
namespace {

class SetPasswordDialogTest : public FormsTest {
  protected:
    static bool IsLine(HWND control) {
        RECT bounds{};
        GetClientRect(control, &bounds);
        return IsWindowVisible(control) &&
               (GetWindowLongPtrA(control, GWL_STYLE) & SS_TYPEMASK) == SS_ETCHEDHORZ && bounds.right > 100 &&
               bounds.bottom <= 2;
    }
};

class AddServerDialogTest : public FormsTest {};
class AboutDialogTest : public FormsTest {};

TEST_F(SetPasswordDialogTest, ShowsAndTakesThePasswordByteForByte) {
    for (const std::string& password : {std::string("p\xe4ss w\xf6rd; \"x\" & \\"), std::string(" "),
                                        std::string(10'000, 'p'), std::string()}) {
        program.Servers[1].Password = "before";
        Show(Password(), {[&](HWND dialog) {
                 EXPECT_EQ(DialogDriver::TextOf(dialog), "Server Password");
                 EXPECT_EQ(Text(dialog, ID_lblMsg), "Enter the password for this server:");
                 EXPECT_EQ(Text(dialog, IDOK), "OK");
                 EXPECT_EQ(Text(dialog, IDCANCEL), "Cancel");
                 EXPECT_TRUE(IsLine(Item(dialog, ID_lblSeperator)));
                 EXPECT_EQ(Text(dialog, ID_txtPass), "before");
                 Type(dialog, ID_txtPass, password);
                 DialogDriver::Press(dialog, IDOK);
             }});
        EXPECT_EQ(program.Servers[1].Password, password);
    }
}

TEST_F(SetPasswordDialogTest, EnterIsOkAndEscapeIsCancel) {
    program.Servers[1].Password = "before";
    Show(Password(), {[&](HWND dialog) {
             EXPECT_EQ(GetFocus(), Item(dialog, ID_txtPass));
             Type(dialog, ID_txtPass, "not this");
             DialogDriver::PressKey(GetFocus(), VK_ESCAPE);
         }});
    EXPECT_EQ(program.Servers[1].Password, "before");
    Show(Password(), {[&](HWND dialog) {
             Type(dialog, ID_txtPass, "this");
             DialogDriver::PressKey(GetFocus(), VK_RETURN);
         }});
    EXPECT_EQ(program.Servers[1].Password, "this");
}

TEST_F(SetPasswordDialogTest, TypingReplacesThePassword) {
    program.Servers[1].Password = "before";
    Show(Password(), {[&](HWND dialog) {
             SendMessageA(GetFocus(), WM_CHAR, 'n', 1);
             DialogDriver::Press(dialog, IDOK);
         }});
    EXPECT_EQ(program.Servers[1].Password, "n");
}

TEST_F(AddServerDialogTest, StaysOpenForTheNextServer) {
    Show(AddServer(), {[&](HWND dialog) {
             EXPECT_EQ(DialogDriver::TextOf(dialog), "Add Server");
             EXPECT_EQ(TabOrder(dialog), (std::vector<int>{ID_txtIP, ID_txtPort, IDOK, IDCANCEL}));
             Type(dialog, ID_txtIP, "127.0.0.1");
             Type(dialog, ID_txtPort, "1");
             SendMessageA(dialog, WM_COMMAND, IDOK, 0);
             EXPECT_EQ(GetFocus(), Item(dialog, ID_txtIP));
             Type(dialog, ID_txtPort, "2");
             SendMessageA(dialog, WM_COMMAND, IDOK, 0);
             EXPECT_TRUE(IsWindow(dialog));
             DialogDriver::PressKey(GetFocus(), VK_ESCAPE);
         }});
    EXPECT_EQ(added, (std::vector<std::string>{"127.0.0.1:1", "127.0.0.1:2"}));
}

TEST_F(AddServerDialogTest, NamesItsListAndTellsWhatItAdded) {
    Show(AddServer(), {[&](HWND dialog) {
             EXPECT_EQ(Text(dialog, ID_lblList), "The server is added to the list \"Arena & more\".");
             EXPECT_EQ(Text(dialog, ID_lblMessage), "");
             Type(dialog, ID_txtIP, "127.0.0.1");
             Type(dialog, ID_txtPort, "1");
             SendMessageA(dialog, WM_COMMAND, IDOK, 0);
             EXPECT_EQ(Text(dialog, ID_lblMessage), "Added 127.0.0.1:1.");
             DialogDriver::PressKey(GetFocus(), VK_ESCAPE);
         }});
}

TEST_F(AddServerDialogTest, LeadsToTheFieldThatWasWrong) {
    HWND wrong = nullptr;
    Show(AddServer(), {[&](HWND dialog) {
                           Type(dialog, ID_txtIP, "127.0.0.1");
                           Type(dialog, ID_txtPort, "x");
                           DialogDriver::Press(dialog, IDOK);
                       },
                       [&](HWND box) { DialogDriver::Press(box, IDOK); },
                       [&](HWND dialog) {
                           EXPECT_EQ(GetFocus(), Item(dialog, ID_txtPort));
                           wrong = GetFocus();
                           DialogDriver::Press(dialog, IDCANCEL);
                       }});
    EXPECT_NE(wrong, nullptr);
}

// Escape reaches the dialog though its own loop waits for the look-up.
TEST_F(AddServerDialogTest, CanBeLeftDuringALookUp) {
    static HANDLE asked;
    asked = nullptr;
    const ReplacedImport ask(
        &WSAAsyncGetHostByName, +[](HWND, u_int, const char*, char*, int) -> HANDLE {
            return asked = reinterpret_cast<HANDLE>(1); // and never answers
        });
    desktop.Events().preTranslate = [](MSG& message) {
        return IsDialogMessageA(GetAncestor(message.hwnd, GA_ROOT), &message) != FALSE;
    };
    Show(AddServer(), {[&](HWND dialog) {
             Type(dialog, ID_txtIP, "games.example");
             Type(dialog, ID_txtPort, "1");
             DialogDriver::Press(dialog, IDOK);
             SetTimer(dialog, 1, 10, [](HWND window, UINT, UINT_PTR, DWORD) {
                 if (asked == nullptr)
                     return;
                 KillTimer(window, 1);
                 EXPECT_EQ(Text(window, ID_lblMessage), "Looking up games.example...");
                 DialogDriver::PressKey(GetDlgItem(window, ID_txtIP), VK_ESCAPE);
             });
         }});
    EXPECT_TRUE(added.empty());
}

TEST_F(AddServerDialogTest, TellsWhatIsMissing) {
    Show(AddServer(), {[&](HWND dialog) { DialogDriver::Press(dialog, IDOK); },
                       [&](HWND box) {
                           EXPECT_EQ(DialogDriver::TextOf(box), "Quarn - Error");
                           DialogDriver::Press(box, IDOK);
                       },
                       [&](HWND dialog) { DialogDriver::Press(dialog, IDCANCEL); }});
    EXPECT_TRUE(added.empty());
}

TEST_F(AboutDialogTest, ShowsTheVersionAndClosesOnEnterAndEscape) {
    for (const WPARAM key : {VK_RETURN, VK_ESCAPE})
        Show(About(), {[&](HWND dialog) {
                 EXPECT_EQ(DialogDriver::TextOf(dialog), "About Quarn");
                 EXPECT_EQ(Text(dialog, ID_lblVersion), std::string("Version ") + VersionText);
                 EXPECT_EQ(TabOrder(dialog), (std::vector<int>{IDOK, ID_cmdSystemInfo}));
                 DialogDriver::PressKey(GetFocus(), key);
             }});
}

TEST_F(AboutDialogTest, StartsTheSystemsInformationTool) {
    const std::string tool = folder / "msinfo.exe";
    FilesWin().Write(tool, "");
    MemoryRegistry registry;
    registry.Put(RegistryRoot::LocalMachine, "SOFTWARE\\Microsoft\\Shared Tools\\MSInfo", "Path", tool);
    FakeShell shell;
    const Desktop& real = desktop.Interfaces();
    Desktop interfaces{.clock = real.clock,
                       .events = real.events,
                       .files = real.files,
                       .help = real.help,
                       .hosts = real.hosts,
                       .locale = real.locale,
                       .notifications = real.notifications,
                       .peers = real.peers,
                       .profiles = real.profiles,
                       .prompts = real.prompts,
                       .registry = registry,
                       .shell = shell,
                       .system = real.system};
    Show(frmAbout(program, interfaces, Closing()), {[&](HWND dialog) {
             Click(dialog, ID_cmdSystemInfo);
             EXPECT_EQ(shell.opened.size(), 1U);
             DialogDriver::Press(dialog, IDOK);
         }});
    ASSERT_EQ(shell.opened.size(), 1U);
    EXPECT_EQ(shell.opened[0].file, tool);
}

} // namespace
} // namespace quarn
