#include "core/modFileHelper.h"

#include "tests/fakes/MemoryFiles.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

class FileExistsTest : public ::testing::Test {
  protected:
    FileExistsTest() {
        files.Put("C:\\Games\\arena.exe", "");
        files.Put("C:\\Games\\maps\\one.map", "");
        files.PutFolder("C:\\Games");
        files.PutFolder("C:\\Games\\maps");
    }
    MemoryFiles files;
};

TEST_F(FileExistsTest, FindsAFileOfThisPath) {
    EXPECT_TRUE(FileExists(files, "C:\\Games\\arena.exe"));
    EXPECT_TRUE(FileExists(files, "c:\\games\\ARENA.EXE"));
}

TEST_F(FileExistsTest, FindsAnyFileOfAPattern) {
    EXPECT_TRUE(FileExists(files, "C:\\Games\\*.exe"));
    EXPECT_TRUE(FileExists(files, "C:\\Games\\aren?.exe"));
    EXPECT_TRUE(FileExists(files, "C:\\Games\\maps\\*"));
}

TEST_F(FileExistsTest, FindsNeitherFoldersNorWhatIsNotThere) {
    for (const char* path :
         {"", "C:\\Games", "C:\\Games\\", "C:\\Games\\maps", "C:\\Games\\arena", "C:\\Games\\arena.exe.bak",
          "arena.exe", "C:\\Games\\*.txt", "C:\\Games\\map?", "C:\\Games\\arena?.exe", "D:\\Games\\*", "*"})
        EXPECT_FALSE(FileExists(files, path)) << path;
}

} // namespace
} // namespace quarn
