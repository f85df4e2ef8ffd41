#include "win32/desktop/WindowsDesktop.h"

#include "tests/win32/harness/DialogDriver.h"
#include "tests/win32/harness/OwnerTestWindow.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

TEST(WindowsDesktopTest, BundlesTheRealServices) {
    WindowsDesktop desktop;
    Desktop& interfaces = desktop.Interfaces();
    EXPECT_EQ(&interfaces.events, &desktop.Events());
    EXPECT_EQ(&interfaces.prompts, &desktop.Prompts());
    EXPECT_FALSE(interfaces.files.ProgramFolder().empty());
    std::string address = "none";
    interfaces.hosts.LookUp("", [&](const std::string& answer) { address = answer; });
    EXPECT_EQ(address, "");
    EXPECT_TRUE(interfaces.locale.IsNumeric("5"));
    EXPECT_EQ(interfaces.profiles.ReadInteger("Q:\\missing.ini", "A", "b", 5), 5);
    EXPECT_GT(interfaces.clock.Now().time, DateTime::From({2020, 1, 1, 0, 0, 0}));
    EXPECT_GT(interfaces.system.Memory().totalPhysical, 0U);
    EXPECT_FALSE(interfaces.files.IsFile(""));
}

TEST(WindowsDesktopTest, TheMainWindowOwnsItsMessageBoxes) {
    const OwnerTestWindow main;
    WindowsDesktop desktop;
    desktop.SetMainWindow(main.Handle());
    HWND owner = nullptr;
    const DialogDriver driver(main.Handle(), {[&](HWND box) {
                                  owner = GetWindow(box, GW_OWNER);
                                  EXPECT_TRUE(desktop.Prompts().CancelOpenBox());
                              }});
    desktop.Interfaces().prompts.ShowError("text", "title");
    EXPECT_EQ(owner, main.Handle());
}

} // namespace
} // namespace quarn
