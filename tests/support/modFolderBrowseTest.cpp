#include "support/modFolderBrowse.h"

#include "tests/fakes/FakePrompts.h"

#include <gtest/gtest.h>
#include <string>

namespace quarn {
namespace {

TEST(BrowseForFolder, AsksWithTheFolderSelected) {
    FakePrompts prompts;
    prompts.folderAnswers = {"C:\\Games\\Arena", ""};
    EXPECT_EQ(BrowseForFolder(prompts, "C:\\Quarn\\"), "C:\\Games\\Arena");
    EXPECT_EQ(BrowseForFolder(prompts, ""), "") << "cancelled";
    ASSERT_EQ(prompts.shown.size(), 2U);
    EXPECT_EQ(prompts.shown[0].kind, FakePrompts::Kind::Folder);
    EXPECT_EQ(prompts.shown[0].text, "C:\\Quarn\\");
    EXPECT_EQ(prompts.shown[0].title.find('\n'), std::string::npos);
    EXPECT_EQ(prompts.shown[0].title, prompts.shown[1].title);
    EXPECT_FALSE(prompts.shown[0].title.empty());
}

} // namespace
} // namespace quarn
