#include "win32/desktop/PromptsWin.h"

#include "tests/win32/harness/DialogDriver.h"
#include "tests/win32/harness/OwnerTestWindow.h"
#include "tests/win32/harness/TemporaryFolder.h"
#include "win32/desktop/FilesWin.h"
#include "win32/resources/ids.h"

#include <commctrl.h>
#include <gtest/gtest.h>
#include <vector>

namespace quarn {
namespace {

// Control ids of the system's dialogs.
constexpr int MessageText = 0xFFFF;
constexpr int FileNameCombo = 0x47C;
constexpr int FileNameEdit = 0x480;

class PromptsWinTest : public ::testing::Test {
  protected:
    // Runs the call while the steps answer its dialogs.
    template<class Call>
    auto Answered(std::deque<DialogDriver::Step> steps, Call&& call) {
        DialogDriver driver(owner.Handle(), std::move(steps));
        auto result = call();
        EXPECT_EQ(driver.StepsLeft(), 0U);
        EXPECT_EQ(GetLastActivePopup(owner.Handle()), owner.Handle());
        EXPECT_TRUE(IsWindowEnabled(owner.Handle()));
        return result;
    }

    // The icon next to a message.
    static HICON IconOf(HWND box) {
        HICON icon = nullptr;
        for (HWND text = nullptr;
             icon == nullptr && (text = FindWindowExA(box, text, "Static", nullptr)) != nullptr;)
            icon = reinterpret_cast<HICON>(SendMessageA(text, STM_GETICON, 0, 0));
        return icon;
    }

    static void TypeFileName(HWND box, const std::string& name) {
        const HWND edit = GetDlgItem(box, FileNameEdit);
        SendMessageA(edit != nullptr ? edit : GetDlgItem(box, FileNameCombo), WM_SETTEXT, 0,
                     reinterpret_cast<LPARAM>(name.c_str()));
    }

    OwnerTestWindow owner;
    PromptsWin prompts{owner.AsOwner()};
};

TEST_F(PromptsWinTest, ShowsAnErrorUntilItIsClosed) {
    std::string text, title;
    bool ownerDisabled = false;
    Answered({[&](HWND box) {
                 title = DialogDriver::TextOf(box);
                 text = DialogDriver::TextOf(box, MessageText);
                 ownerDisabled = !IsWindowEnabled(owner.Handle());
                 EXPECT_EQ(IconOf(box), LoadIconA(nullptr, IDI_ERROR));
                 EXPECT_EQ(GetWindow(box, GW_OWNER), owner.Handle());
                 DialogDriver::Press(box, IDOK);
             }},
             [&] {
                 prompts.ShowError("first line\r\nsecond & third", "Quarn - Error");
                 return 0;
             });
    EXPECT_EQ(title, "Quarn - Error");
    EXPECT_EQ(text, "first line\r\nsecond & third");
    EXPECT_TRUE(ownerDisabled);
}

TEST_F(PromptsWinTest, TrueOnYesOnly) {
    const auto ask = [&] { return prompts.AskYesNo("Sure?", "Question"); };
    EXPECT_TRUE(Answered({[](HWND box) { DialogDriver::Press(box, IDYES); }}, ask));
    EXPECT_FALSE(Answered({[](HWND box) { DialogDriver::Press(box, IDNO); }}, ask));
    EXPECT_FALSE(Answered({[&](HWND) { EXPECT_TRUE(prompts.CancelOpenBox()); }}, ask));
}

TEST_F(PromptsWinTest, EnterPressesTheDefaultButton) {
    using Default = Prompts::DefaultButton;
    for (const bool yes : {true, false}) {
        int focused = 0;
        const bool answer =
            Answered({[&](HWND) {
                         focused = GetDlgCtrlID(GetFocus());
                         PostMessageA(GetFocus(), WM_KEYDOWN, VK_RETURN, 0);
                     }},
                     [&] { return prompts.AskYesNo("Sure?", "Question", yes ? Default::Yes : Default::No); });
        EXPECT_EQ(focused, yes ? IDYES : IDNO);
        EXPECT_EQ(answer, yes);
    }
}

TEST_F(PromptsWinTest, ShowsAQuestionAsItIs) {
    std::string text;
    const std::string question = "a && b & c %1 %s {0} \\n <b>\r\n" + std::string(500, 'W');
    Answered({[&](HWND box) {
                 text = DialogDriver::TextOf(box, MessageText);
                 EXPECT_EQ(IconOf(box), LoadIconA(nullptr, IDI_QUESTION));
                 prompts.CancelOpenBox();
             }},
             [&] { return prompts.AskYesNo(question, "Question"); });
    EXPECT_EQ(text, question);
}

TEST_F(PromptsWinTest, ANestedMessageBoxIsOwnedByTheOuterOne) {
    HWND first = nullptr;
    Answered({[&](HWND box) {
                  first = box;
                  prompts.ShowError("inner", "Inner");
                  EXPECT_FALSE(IsWindowEnabled(owner.Handle()));
                  DialogDriver::Press(box, IDNO);
              },
              [&](HWND box) {
                  EXPECT_EQ(GetWindow(box, GW_OWNER), first);
                  EXPECT_FALSE(IsWindowEnabled(first));
                  DialogDriver::Press(box, IDOK);
              }},
             [&] { return prompts.AskYesNo("outer", "Outer"); });
}

TEST_F(PromptsWinTest, MessageBoxesAreTopMostIfTheMainWindowIs) {
    const auto topMost = [](HWND box) { return (GetWindowLongPtrA(box, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; };
    for (const bool wanted : {true, false}) {
        SetWindowPos(owner.Handle(), wanted ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                     SWP_NOMOVE | SWP_NOSIZE);
        const DialogDriver::Step check = [&](HWND box) {
            EXPECT_EQ(topMost(box), wanted);
            prompts.CancelOpenBox();
        };
        Answered({check}, [&] { return prompts.AskYesNo("Sure?", "Question"); });
        Answered({check}, [&] { return prompts.AskText("Name:", "Title"); });
    }
}

TEST_F(PromptsWinTest, AMessageBoxWithoutAMainWindowHasNoOwner) {
    const OwnerWindow none;
    EXPECT_EQ(none.ForBox(), nullptr);
    EXPECT_FALSE(none.IsTopMost());
    EXPECT_FALSE(PromptsWin(none).CancelOpenBox());
}

class InputBoxTest : public PromptsWinTest {};

TEST_F(InputBoxTest, AsksForAText) {
    std::string prompt, title, before;
    const auto typed = Answered({[&](HWND box) {
                                    title = DialogDriver::TextOf(box);
                                    prompt = DialogDriver::TextOf(box, ID_lblInputPrompt);
                                    before = DialogDriver::TextOf(box, ID_txtInput);
                                    EXPECT_EQ(GetFocus(), GetDlgItem(box, ID_txtInput));
                                    SetDlgItemTextA(box, ID_txtInput, " My & \xE4 folder ");
                                    DialogDriver::Press(box, IDOK);
                                }},
                                [&] { return prompts.AskText("Enter a new && name:", "Change name"); });
    EXPECT_EQ(title, "Change name");
    EXPECT_EQ(prompt, "Enter a new && name:");
    EXPECT_EQ(before, "");
    EXPECT_EQ(typed, " My & \xE4 folder ");
}

TEST_F(InputBoxTest, EnterIsOkAndEscapeIsCancel) {
    const auto ask = [&] { return prompts.AskText("Name:", "Title"); };
    const auto typeAndPress = [](WPARAM key) {
        return [key](HWND box) {
            SetDlgItemTextA(box, ID_txtInput, "typed");
            DialogDriver::PressKey(GetDlgItem(box, ID_txtInput), key);
        };
    };
    EXPECT_EQ(Answered({typeAndPress(VK_RETURN)}, ask), "typed");
    EXPECT_EQ(Answered({typeAndPress(VK_ESCAPE)}, ask), "");
    EXPECT_EQ(Answered({[](HWND box) { PostMessageA(box, WM_CLOSE, 0, 0); }}, ask), "");
    EXPECT_EQ(Answered({[&](HWND) { EXPECT_TRUE(prompts.CancelOpenBox()); }}, ask), "");
}

TEST_F(InputBoxTest, IsCentredOnItsOwner) {
    RECT inner{}, outer{};
    GetWindowRect(owner.Handle(), &outer);
    Answered({[&](HWND box) {
                 GetWindowRect(box, &inner);
                 prompts.CancelOpenBox();
             }},
             [&] { return prompts.AskText("Name:", "Title"); });
    EXPECT_NEAR(inner.left + inner.right, outer.left + outer.right, 4);
    EXPECT_NEAR(inner.top + inner.bottom, outer.top + outer.bottom, 4);
}

class PromptsWinSaveDialogTest : public PromptsWinTest {
  protected:
    std::string Ask() {
        return prompts.AskSaveFile("Save serverlist as...", "Text file (*.txt)|*.txt|All files (*.*)|*.*");
    }
    DialogDriver::Step Save(const std::string& name) {
        return [=](HWND box) {
            TypeFileName(box, name);
            DialogDriver::Press(box, IDOK);
        };
    }
    TemporaryFolder folder;
    FilesWin files;
};

TEST_F(PromptsWinSaveDialogTest, ReturnsTheChosenPath) {
    std::string title, name;
    const auto chosen = Answered({[&](HWND box) {
                                     title = DialogDriver::TextOf(box);
                                     name = DialogDriver::TextOf(box, FileNameEdit);
                                     Save(folder / "list.txt").act(box);
                                 }},
                                 [&] { return Ask(); });
    EXPECT_EQ(title, "Save serverlist as...");
    EXPECT_EQ(name, "");
    EXPECT_EQ(chosen, folder / "list.txt");
    EXPECT_FALSE(files.IsFile(chosen));
}

TEST_F(PromptsWinSaveDialogTest, AddsTheExtensionOfTheFilter) {
    EXPECT_EQ(Answered({Save(folder / "list")}, [&] { return Ask(); }), folder / "list.txt");
    EXPECT_EQ(Answered({Save(folder / "list.csv")}, [&] { return Ask(); }), folder / "list.csv");
}

TEST_F(PromptsWinSaveDialogTest, AsksBeforeAFileIsOverwritten) {
    files.Write(folder / "list.txt", "old");
    EXPECT_EQ(Answered({Save(folder / "list.txt"), [](HWND box) { DialogDriver::Press(box, IDYES); }},
                       [&] { return Ask(); }),
              folder / "list.txt");
    EXPECT_EQ(Answered({Save(folder / "list.txt"), [](HWND box) { DialogDriver::Press(box, IDNO); },
                        [](HWND box) { DialogDriver::Press(box, IDCANCEL); }},
                       [&] { return Ask(); }),
              "");
    EXPECT_EQ(files.Read(folder / "list.txt"), "old");
}

TEST_F(PromptsWinSaveDialogTest, ACancelledOneReturnsNothing) {
    EXPECT_EQ(Answered({[](HWND box) { DialogDriver::Press(box, IDCANCEL); }}, [&] { return Ask(); }), "");
    EXPECT_EQ(Answered({[&](HWND) { EXPECT_TRUE(prompts.CancelOpenBox()); }}, [&] { return Ask(); }), "");
}

// The question is answered with No: a program that closes overwrites nothing.
TEST_F(PromptsWinSaveDialogTest, ACancelledOverwriteQuestionOverwritesNothing) {
    files.Write(folder / "list.txt", "old");
    const DialogDriver::Step cancel([&](HWND) { EXPECT_TRUE(prompts.CancelOpenBox()); });
    EXPECT_EQ(Answered({Save(folder / "list.txt"), cancel, cancel}, [&] { return Ask(); }), "");
    EXPECT_EQ(files.Read(folder / "list.txt"), "old");
}

TEST_F(PromptsWinSaveDialogTest, LeavesTheCurrentFolderAlone) {
    char before[1024], after[1024];
    GetCurrentDirectoryA(sizeof before, before);
    Answered({Save(folder / "list.txt")}, [&] { return Ask(); });
    GetCurrentDirectoryA(sizeof after, after);
    EXPECT_STREQ(after, before);
}

class PromptsWinFolderDialogTest : public PromptsWinTest {
  protected:
    // A folder that has existed for a while: Wine's dialog sometimes misses one that was just created.
    PromptsWinFolderDialogTest() {
        char path[MAX_PATH] = "";
        GetSystemDirectoryA(path, sizeof path);
        folder = path;
    }

    std::string Ask(const std::string& preselected) {
        return prompts.AskFolder("Where is the game?", preselected);
    }

    std::string folder;
};

BOOL CALLBACK FindTree(HWND child, LPARAM found) {
    char name[32] = "";
    GetClassNameA(child, name, sizeof name);
    if (std::string(name) != WC_TREEVIEWA)
        return TRUE;
    *reinterpret_cast<HWND*>(found) = child;
    return FALSE;
}

// The text of the folder that is selected in the dialog's tree.
std::string SelectedFolder(HWND box) {
    HWND tree = nullptr;
    EnumChildWindows(box, &FindTree, reinterpret_cast<LPARAM>(&tree));
    char text[MAX_PATH] = "";
    TVITEMA item{};
    item.mask = TVIF_TEXT;
    item.hItem = reinterpret_cast<HTREEITEM>(SendMessageA(tree, TVM_GETNEXTITEM, TVGN_CARET, 0));
    item.pszText = text;
    item.cchTextMax = sizeof text;
    SendMessageA(tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
    return text;
}

TEST_F(PromptsWinFolderDialogTest, ReturnsTheFolderSelectedBeforehand) {
    const std::string name = folder.substr(folder.rfind('\\') + 1);
    const DialogDriver::Step confirm([&](HWND box) { return SelectedFolder(box) == name; },
                                     [](HWND box) { DialogDriver::Press(box, IDOK); });
    EXPECT_EQ(Answered({confirm}, [&] { return Ask(folder); }), folder);
}

TEST_F(PromptsWinFolderDialogTest, ACancelledOneReturnsNothing) {
    EXPECT_EQ(Answered({[](HWND box) { DialogDriver::Press(box, IDCANCEL); }}, [&] { return Ask(folder); }),
              "");
    EXPECT_EQ(Answered({[&](HWND) { EXPECT_TRUE(prompts.CancelOpenBox()); }}, [&] { return Ask(""); }), "");
}

TEST_F(PromptsWinTest, WithoutAnOpenMessageBoxThereIsNothingToCancel) {
    EXPECT_FALSE(prompts.CancelOpenBox());
}

// As the help's window is, which no call waits for.
TEST_F(PromptsWinTest, AWindowThatIsNoDialogIsNotTakenForOne) {
    const WindowHandle help(CreateWindowExA(0, WC_STATICA, "Help", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                            200, 100, owner.Handle(), nullptr, nullptr, nullptr));
    ASSERT_TRUE(help);
    EXPECT_FALSE(prompts.CancelOpenBox());
}

TEST_F(PromptsWinTest, ABoxOfAMinimizedWindowIsCancelledAsWell) {
    EXPECT_FALSE(Answered({[&](HWND) {
                              ShowWindow(owner.Handle(), SW_MINIMIZE);
                              EXPECT_TRUE(prompts.CancelOpenBox());
                          }},
                          [&] { return prompts.AskYesNo("Sure?", "Question"); }));
}

// A dialog that takes no notice of its Cancel button is ended in the end.
TEST_F(PromptsWinTest, ABoxThatResistsIsEnded) {
    static int cancels;
    cancels = 0;
    const auto resist = [](HWND dialog, UINT message, WPARAM wParam, LPARAM) -> INT_PTR {
        if (message == WM_COMMAND && LOWORD(wParam) == IDCANCEL)
            ++cancels;
        return message == WM_INITDIALOG || message == WM_COMMAND ||
               (message == WM_CLOSE && dialog != nullptr);
    };
    struct {
        DLGTEMPLATE header{WS_POPUP | WS_VISIBLE | WS_CAPTION, 0, 1, 0, 0, 100, 50};
        WORD menuClassAndTitle[3]{};
        alignas(DWORD) DLGITEMTEMPLATE button{WS_CHILD | WS_VISIBLE, 0, 5, 5, 50, 14, IDCANCEL};
        WORD classTitleAndData[4]{0xFFFF, 0x0080, 0, 0};
    } dialog;
    const UINT_PTR timer = SetTimer(owner.Handle(), 1, 10, nullptr);
    static PromptsWin* asked;
    asked = &prompts;
    SetTimer(owner.Handle(), 1, 10, [](HWND, UINT, UINT_PTR, DWORD) { asked->CancelOpenBox(); });
    EXPECT_EQ(DialogBoxIndirectParamA(nullptr, &dialog.header, owner.Handle(), resist, 0), IDCANCEL);
    KillTimer(owner.Handle(), timer);
    EXPECT_GT(cancels, 5);
}

TEST_F(PromptsWinTest, BoxesOnEachOtherAreCancelledFromTheTop) {
    std::vector<HWND> cancelled;
    Answered({[&](HWND outer) {
                  EXPECT_FALSE(prompts.AskYesNo("inner", "Inner"));
                  cancelled.push_back(outer);
                  EXPECT_TRUE(prompts.CancelOpenBox());
              },
              [&](HWND inner) {
                  cancelled.push_back(inner);
                  EXPECT_TRUE(prompts.CancelOpenBox());
              }},
             [&] { return prompts.AskText("Name:", "Outer"); });
    ASSERT_EQ(cancelled.size(), 2U);
    EXPECT_NE(cancelled[0], cancelled[1]);
}

} // namespace
} // namespace quarn
