#include "win32/desktop/HelpViewerWin.h"

#include "tests/win32/harness/OwnerTestWindow.h"
#include "tests/win32/harness/ReplacedImport.h"
#include "tests/win32/harness/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

TEST(HelpViewerWin, AFileThatIsNotThereShowsNoWindow) {
    OwnerTestWindow owner;
    TemporaryFolder folder;
    HelpViewerWin viewer;
    const auto caller = reinterpret_cast<WindowReference>(owner.Handle());
    const std::string file = (folder / "missing.chm") + ">Main";
    EXPECT_FALSE(viewer.HtmlHelp(caller, file, HelpCommand::DisplayTopic, "Progs\\Quarn\\Main.htm"));
    EXPECT_FALSE(viewer.HtmlHelp(0, file, HelpCommand::DisplayTopic, "topic"));
    viewer.HtmlHelp(caller, file, HelpCommand::CloseAll, nullptr);
    EXPECT_TRUE(IsWindow(owner.Handle()));
}

// A help library of the test's own, which shows a window for each topic.
class HelpRequestTest : public ::testing::Test {
  protected:
    using Requests = std::vector<std::string>;

    HelpRequestTest() {
        requests.clear();
        librariesLoaded = 0;
        libraryIsThere = true;
    }

    static HMODULE WINAPI LoadHelp(LPCSTR path, HANDLE, DWORD) {
        char folder[MAX_PATH];
        GetSystemDirectoryA(folder, sizeof folder);
        EXPECT_EQ(path, folder + std::string("\\hhctrl.ocx"));
        ++librariesLoaded;
        return libraryIsThere ? GetModuleHandleA(nullptr) : nullptr;
    }
    static FARPROC WINAPI FindHelp(HMODULE, LPCSTR name) {
        EXPECT_STREQ(name, "HtmlHelpA");
        return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Show));
    }
    static HWND WINAPI Show(HWND caller, LPCSTR file, UINT command, DWORD_PTR data) {
        const auto* const topic = reinterpret_cast<const char*>(data);
        requests.push_back(std::string(file) + " " + std::to_string(command) + " " +
                           (topic != nullptr ? topic : "-"));
        return topic != nullptr ? caller : nullptr;
    }

    inline static Requests requests;
    inline static int librariesLoaded;
    inline static bool libraryIsThere;
    OwnerTestWindow owner;
    const WindowReference caller = reinterpret_cast<WindowReference>(owner.Handle());
    HelpViewerWin viewer;

  private:
    ReplacedImport loadLibrary_{&LoadLibraryExA, &LoadHelp};
    ReplacedImport getProcAddress_{&GetProcAddress, &FindHelp};
};

TEST_F(HelpRequestTest, AsksTheSystemsHelpLibraryForTheTopic) {
    EXPECT_TRUE(viewer.HtmlHelp(caller, "C:\\Help.chm>Main", HelpCommand::DisplayTopic, "Main.htm"));
    EXPECT_FALSE(viewer.HtmlHelp(caller, "C:\\Help.chm>Main", HelpCommand::CloseAll, nullptr));
    EXPECT_EQ(requests, (Requests{"C:\\Help.chm>Main 0 Main.htm", "C:\\Help.chm>Main 18 -"}));
    EXPECT_EQ(librariesLoaded, 1);
}

TEST_F(HelpRequestTest, ShowsNothingWithoutTheLibrary) {
    libraryIsThere = false;
    for (int i = 0; i < 2; ++i)
        EXPECT_FALSE(viewer.HtmlHelp(caller, "C:\\Help.chm>Main", HelpCommand::DisplayTopic, "Main.htm"));
    EXPECT_TRUE(requests.empty());
    EXPECT_EQ(librariesLoaded, 1);
}

} // namespace
} // namespace quarn
