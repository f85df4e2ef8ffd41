#include "win32/desktop/ShellWin.h"

#include "tests/fakes/Errors.h"
#include "tests/win32/harness/OwnerTestWindow.h"
#include "tests/win32/harness/Pumping.h"
#include "tests/win32/harness/ReplacedImport.h"
#include "tests/win32/harness/TemporaryFolder.h"
#include "win32/desktop/FilesWin.h"

#include <future>
#include <gtest/gtest.h>
#include <shellapi.h>
#include <thread>
#include <vector>

namespace quarn {
namespace {

class ShellWinTest : public ::testing::Test {
  protected:
    // What a started program wrote, once it has.
    std::string Written(const std::string& path) {
        std::string content;
        PumpUntil([&] {
            if (!files.IsFile(path) || ErrorOf([&] { content = files.Read(path); }) != NoError)
                return false;
            return content.ends_with('\n');
        });
        return content;
    }

    std::string ClipboardText() {
        EXPECT_TRUE(OpenClipboard(owner.Handle()));
        const HANDLE data = GetClipboardData(CF_TEXT);
        const std::string text = data != nullptr ? static_cast<const char*>(GlobalLock(data)) : "(no text)";
        if (data != nullptr)
            GlobalUnlock(data);
        CloseClipboard();
        return text;
    }

    OwnerTestWindow owner;
    ShellWin shell{owner.AsOwner()};
    TemporaryFolder folder;
    FilesWin files;
};

TEST_F(ShellWinTest, StartsAProgramInAFolder) {
    Shell::Request request;
    request.file = "cmd.exe";
    request.parameters = "/c cd > where.txt";
    request.folder = folder.Path();
    shell.Open(request);
    EXPECT_EQ(Written(folder / "where.txt"), folder.Path() + "\r\n");
}

TEST_F(ShellWinTest, HandsTheParametersOnAsTheyAre) {
    const std::string out = folder / "out.txt";
    Shell::Request request;
    request.file = "cmd.exe";
    request.parameters = "/c echo +set fs_game  +exec  +name a b +connect 1.2.3.4:27960>" + out;
    request.ownedByWindow = false;
    request.show = ShowState::Show;
    shell.Open(request);
    EXPECT_EQ(Written(out), "+set fs_game  +exec  +name a b +connect 1.2.3.4:27960\r\n");
}

TEST_F(ShellWinTest, WhatCannotBeOpenedIsNoError) {
    for (const std::string& file : {folder / "missing.exe", std::string(), folder / "no folder\\x.exe"}) {
        Shell::Request request;
        request.file = file;
        request.folder = "Q:\\nowhere";
        EXPECT_EQ(ErrorOf([&] { shell.Open(request); }), NoError) << file;
    }
}

class ShellRequestTest : public ShellWinTest {
  protected:
    struct Asked {
        HWND owner;
        std::string verb, file, parameters, folder;
        int show;
    };

    ShellRequestTest() { asked.clear(); }

    static HINSTANCE WINAPI Note(HWND owner, LPCSTR verb, LPCSTR file, LPCSTR parameters, LPCSTR folder,
                                 INT show) {
        const auto text = [](const char* given) { return given != nullptr ? given : "(none)"; };
        asked.push_back({owner, text(verb), text(file), text(parameters), text(folder), show});
        return nullptr;
    }

    inline static std::vector<Asked> asked;

  private:
    ReplacedImport shellExecute_{&ShellExecuteA, &Note};
};

TEST_F(ShellRequestTest, AsksForExactlyWhatIsWanted) {
    Shell::Request game;
    game.verb = "open";
    game.file = "C:\\Arena\\arena.exe";
    game.parameters = "+connect 1.2.3.4:27960";
    game.folder = "C:\\Arena\\";
    game.show = ShowState::Show;
    Shell::Request mail;
    mail.file = "MailTo:somebody@quarn.example";
    mail.ownedByWindow = false;
    shell.Open(game);
    shell.Open(mail);
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[0].owner, owner.Handle());
    EXPECT_EQ(asked[0].verb, "open");
    EXPECT_EQ(asked[0].file, "C:\\Arena\\arena.exe");
    EXPECT_EQ(asked[0].parameters, "+connect 1.2.3.4:27960");
    EXPECT_EQ(asked[0].folder, "C:\\Arena\\");
    EXPECT_EQ(asked[0].show, SW_SHOW);
    EXPECT_EQ(asked[1].owner, nullptr);
    EXPECT_EQ(asked[1].file, "MailTo:somebody@quarn.example");
    EXPECT_EQ(asked[1].parameters, "(none)");
    EXPECT_EQ(asked[1].folder, "(none)");
    EXPECT_EQ(asked[1].show, SW_SHOWNORMAL);
}

TEST_F(ShellWinTest, PutsTextOnTheClipboard) {
    shell.SetClipboardText("1.2.3.4:27960");
    EXPECT_EQ(ClipboardText(), "1.2.3.4:27960");
    shell.SetClipboardText("");
    EXPECT_EQ(ClipboardText(), "");
    const std::string large(100'000, 'x');
    shell.SetClipboardText(large);
    EXPECT_EQ(ClipboardText(), large);
}

// Another program that has opened the clipboard, until it is told to let go.
class ClipboardHolder {
  public:
    ClipboardHolder() { held_.get_future().wait(); }
    ClipboardHolder(const ClipboardHolder&) = delete;
    ClipboardHolder& operator=(const ClipboardHolder&) = delete;
    ~ClipboardHolder() { thread_.join(); }

    void LetGoAfter(DWORD milliseconds) { letGo_.set_value(milliseconds); }

  private:
    void Hold() {
        const WindowHandle window(CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                                  GetModuleHandleA(nullptr), nullptr));
        EXPECT_TRUE(OpenClipboard(window.Get()));
        held_.set_value();
        Sleep(letGo_.get_future().get());
        CloseClipboard();
    }

    std::promise<void> held_;
    std::promise<DWORD> letGo_;
    std::thread thread_{[this] { Hold(); }};
};

TEST_F(ShellWinTest, AClipboardThatSomebodyKeepsIsAnError) {
    shell.SetClipboardText("before");
    {
        ClipboardHolder holder;
        EXPECT_EQ(ErrorOf([&] { shell.SetClipboardText("after"); }), ErrorNumber::CannotOpenClipboard);
        holder.LetGoAfter(0);
    }
    EXPECT_EQ(ClipboardText(), "before");
    shell.SetClipboardText("after");
    EXPECT_EQ(ClipboardText(), "after");
}

TEST_F(ShellWinTest, AClipboardThatSomebodyHoldsForAMomentIsWaitedFor) {
    ClipboardHolder holder;
    holder.LetGoAfter(40);
    shell.SetClipboardText("patience");
    EXPECT_EQ(ClipboardText(), "patience");
}

} // namespace
} // namespace quarn
