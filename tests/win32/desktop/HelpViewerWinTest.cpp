#include "win32/desktop/HelpViewerWin.h"

#include "tests/win32/support_code/OwnerTestWindow.h"
#include "tests/win32/support_code/TemporaryFolder.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace quarn
