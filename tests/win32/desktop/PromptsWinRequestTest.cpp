// What the system's own dialogs are asked for. The test answers in their place.

#include "win32/desktop/PromptsWin.h"

#include "tests/win32/harness/OwnerTestWindow.h"
#include "tests/win32/harness/ReplacedImport.h"
#include "win32/Libraries.h"

#include <algorithm>
#include <commdlg.h>
#include <gtest/gtest.h>
#include <shlobj.h>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {
namespace {

class PromptsWinSaveRequestTest : public ::testing::Test {
  protected:
    struct Request {
        HWND owner;
        std::string title;
        std::string name;
        std::string filter;
        DWORD selectedFilter;
        DWORD flags;
    };

    PromptsWinSaveRequestTest() { requests.clear(); }

    static BOOL WINAPI Note(OPENFILENAMEA* dialog) {
        const char* end = dialog->lpstrFilter;
        while (end[0] != '\0' || end[1] != '\0')
            ++end;
        requests.push_back({dialog->hwndOwner, dialog->lpstrTitle, dialog->lpstrFile,
                            std::string(dialog->lpstrFilter, end), dialog->nFilterIndex, dialog->Flags});
        return FALSE;
    }

    inline static std::vector<Request> requests;
    OwnerTestWindow owner;
    PromptsWin prompts{owner.AsOwner()};

  private:
    // The dialog's library is loaded on first use, and the function is found by name.
    static FARPROC WINAPI FindFunction(HMODULE library, LPCSTR name) {
        const bool isDialog = !IS_INTRESOURCE(name) && std::string_view(name) == "GetSaveFileNameA";
        return isDialog ? reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&Note))
                        : systemsFindFunction(library, name);
    }

    // Found by name, because the compiler takes the function's address from the table that is changed.
    inline static const auto systemsFindFunction =
        FunctionAddress<decltype(GetProcAddress)>(GetModuleHandleA("kernel32.dll"), "GetProcAddress");
    ReplacedImport findFunction_{&GetProcAddress, &FindFunction};
};

TEST_F(PromptsWinSaveRequestTest, OffersTextFilesAndAsksBeforeOneIsOverwritten) {
    EXPECT_EQ(prompts.AskSaveFile("Save serverlist as...", "Text file (*.txt)|*.txt|All files (*.*)|*.*"),
              "");
    ASSERT_EQ(requests.size(), 1U);
    const Request& request = requests[0];
    EXPECT_EQ(request.owner, owner.Handle());
    EXPECT_EQ(request.title, "Save serverlist as...");
    EXPECT_EQ(request.name, "");
    std::string filter = "Text file (*.txt)|*.txt|All files (*.*)|*.*";
    std::replace(filter.begin(), filter.end(), '|', '\0');
    EXPECT_EQ(request.filter, filter);
    EXPECT_EQ(request.selectedFilter, 1U);
    EXPECT_NE(request.flags & OFN_OVERWRITEPROMPT, 0U);
    EXPECT_NE(request.flags & OFN_HIDEREADONLY, 0U);
    EXPECT_NE(request.flags & OFN_NOCHANGEDIR, 0U);
}

class PromptsWinFolderRequestTest : public ::testing::Test {
  protected:
    using Lists = std::vector<const void*>;

    PromptsWinFolderRequestTest() {
        chosen = nullptr;
        path.clear();
        hasPath = true;
        freed.clear();
    }

    static ITEMIDLIST* WINAPI Choose(BROWSEINFOA* dialog) {
        request = *dialog;
        title = dialog->lpszTitle;
        return chosen;
    }
    static BOOL WINAPI ToPath(const ITEMIDLIST* list, char* text) {
        EXPECT_EQ(list, chosen);
        std::fill_n(text, 256, 'x'); // the system may leave anything after the end
        std::copy_n(path.c_str(), path.size() + 1, text);
        return hasPath;
    }
    static void WINAPI Free(void* memory) { freed.push_back(memory); }

    inline static BROWSEINFOA request;
    inline static std::string title;
    inline static ITEMIDLIST* chosen;
    inline static std::string path;
    inline static bool hasPath;
    inline static Lists freed;
    ITEMIDLIST someList{};
    OwnerTestWindow owner;
    PromptsWin prompts{owner.AsOwner()};

  private:
    ReplacedImport folderDialog_{&SHBrowseForFolderA, &Choose};
    ReplacedImport toPath_{&SHGetPathFromIDListA, &ToPath};
    ReplacedImport free_{&CoTaskMemFree, &Free};
};

TEST_F(PromptsWinFolderRequestTest, OffersEveryFolderOfTheDesktop) {
    EXPECT_EQ(prompts.AskFolder("Where is the game?", "C:\\Games"), "");
    EXPECT_EQ(request.hwndOwner, owner.Handle());
    EXPECT_EQ(request.pidlRoot, nullptr);
    EXPECT_EQ(title, "Where is the game?");
    EXPECT_EQ(request.ulFlags, 0U);
    EXPECT_TRUE(freed.empty()) << "nothing was chosen";
}

// The dialog finds no folder whose path ends in a backslash; the root of a drive is one that does.
TEST_F(PromptsWinFolderRequestTest, PreselectsAFolderWithoutItsLastBackslash) {
    static std::string preselected;
    const ReplacedImport folderDialog(
        &SHBrowseForFolderA, +[](BROWSEINFOA* dialog) -> ITEMIDLIST* {
            preselected = reinterpret_cast<const char*>(dialog->lParam);
            return nullptr;
        });
    const std::pair<const char*, const char*> cases[] = {{"C:\\Games\\Quarn\\", "C:\\Games\\Quarn"},
                                                         {"C:\\Games", "C:\\Games"},
                                                         {"C:\\", "C:\\"},
                                                         {"\\\\server\\share\\", "\\\\server\\share"},
                                                         {"", ""}};
    for (const auto& [given, expected] : cases) {
        prompts.AskFolder("Where is the game?", given);
        EXPECT_EQ(preselected, expected);
    }
}

TEST_F(PromptsWinFolderRequestTest, ReturnsThePathAndFreesTheList) {
    chosen = &someList;
    path = "C:\\Games\\Arena";
    EXPECT_EQ(prompts.AskFolder("Where is the game?", ""), "C:\\Games\\Arena");
    EXPECT_EQ(freed, Lists{&someList});
}

TEST_F(PromptsWinFolderRequestTest, FreesAListThatHasNoPathToo) {
    chosen = &someList;
    path = "left over";
    hasPath = false;
    EXPECT_EQ(prompts.AskFolder("Where is the game?", ""), "");
    EXPECT_EQ(freed, Lists{&someList});
}

// A window in place of the dialog, which records its messages.
LRESULT CALLBACK NoteSelection(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message >= WM_USER) {
        auto& told = *reinterpret_cast<std::vector<std::string>*>(GetWindowLongPtrA(window, GWLP_USERDATA));
        told.push_back(std::to_string(message) + " " + std::to_string(wParam) + " " +
                       reinterpret_cast<const char*>(lParam));
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

TEST_F(PromptsWinFolderRequestTest, PreselectsTheFolderOnceWhenTheDialogIsCreated) {
    std::vector<std::string> told;
    static std::vector<std::string>* toldWithinTheCall;
    toldWithinTheCall = &told;
    const ReplacedImport folderDialog(
        &SHBrowseForFolderA, +[](BROWSEINFOA* dialog) -> ITEMIDLIST* {
            const HWND window =
                CreateWindowExA(0, WC_STATICA, "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
            SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(toldWithinTheCall));
            SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&NoteSelection));
            for (const UINT event : {BFFM_INITIALIZED, BFFM_SELCHANGED, BFFM_VALIDATEFAILEDA, BFFM_IUNKNOWN})
                EXPECT_EQ(dialog->lpfn(window, event, 0, dialog->lParam), 0);
            DestroyWindow(window);
            return nullptr;
        });
    prompts.AskFolder("Where is the game?", "C:\\Games");
    EXPECT_EQ(told, std::vector<std::string>{std::to_string(WM_USER + 102) + " 1 C:\\Games"});
}

} // namespace
} // namespace quarn
