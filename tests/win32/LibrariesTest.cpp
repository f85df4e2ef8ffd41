#include "win32/Libraries.h"

#include "tests/win32/harness/TemporaryFolder.h"
#include "win32/Handles.h"
#include "win32/desktop/FilesWin.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

TEST(LibrariesTest, LibrariesOfTheCurrentFolderAreNotLoadedAnyMore) {
    // Any program image can be loaded as a library; this one is at hand.
    char own[1024];
    GetModuleFileNameA(nullptr, own, sizeof own);
    const TemporaryFolder folder;
    FilesWin().Copy(own, folder / "planted.dll");
    char before[1024];
    GetCurrentDirectoryA(sizeof before, before);
    SetCurrentDirectoryA(folder.Path().c_str());

    EXPECT_TRUE(ModuleHandle(LoadLibraryA("planted.dll")));
    RestrictLibrarySearch();
    EXPECT_FALSE(ModuleHandle(LoadLibraryA("planted.dll")));
    EXPECT_TRUE(ModuleHandle(LoadLibraryA("winmm.dll"))); // the system's are found

    SetCurrentDirectoryA(before);
}

} // namespace
} // namespace quarn
