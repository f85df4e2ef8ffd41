#include "win32/desktop/SystemInformationWin.h"

#include <commctrl.h>
#include <gtest/gtest.h>

namespace quarn {
namespace {

class SystemInformationWinTest : public ::testing::Test {
  protected:
    SystemInformationWin system;
};

TEST_F(SystemInformationWinTest, KnowsTheSystem) {
    const OsVersion version = system.WindowsVersion();
    EXPECT_GE(version.number.major, 6U);
    EXPECT_GT(version.number.build, 0U);
    EXPECT_EQ(version.servicePack.size(), 128U);
    EXPECT_NE(version.servicePack.find('\0'), std::string::npos);
}

TEST_F(SystemInformationWinTest, KnowsTheShellLibrarysVersion) {
    EXPECT_GE(system.ShellLightWeightVersion().major, 4U);
}

TEST_F(SystemInformationWinTest, ReadsWhatTheRegistrySaysOfDirectX) {
    char expected[255] = "";
    DWORD size = sizeof expected;
    RegGetValueA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\DirectX", "Version", RRF_RT_REG_SZ, nullptr,
                 expected, &size);
    EXPECT_EQ(system.DirectXVersion(), expected);
}

TEST_F(SystemInformationWinTest, NamesTheUsersLanguage) {
    const std::string name = system.LanguageName();
    EXPECT_FALSE(name.empty());
    EXPECT_EQ(name.find('\0'), std::string::npos);
    if (GetUserDefaultLangID() == MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US)) {
        EXPECT_TRUE(name.starts_with("English")) << name;
    }
}

TEST_F(SystemInformationWinTest, KnowsTheMemory) {
    const MemoryStatus memory = system.Memory();
    EXPECT_GT(memory.totalPhysical, 64U << 20);
    EXPECT_GT(memory.availablePhysical, 0U);
    EXPECT_LE(memory.availablePhysical, memory.totalPhysical);
    EXPECT_GE(memory.totalVirtual, 1U << 30);
    EXPECT_LE(memory.availableVirtual, memory.totalVirtual);
}

TEST_F(SystemInformationWinTest, InitialisesTheCommonControls) {
    system.InitCommonControls(sizeof(INITCOMMONCONTROLSEX), ICC_USEREX_CLASSES);
    WNDCLASSA description;
    EXPECT_TRUE(GetClassInfoA(nullptr, WC_COMBOBOXEXA, &description) ||
                GetClassInfoA(GetModuleHandleA("comctl32.dll"), WC_COMBOBOXEXA, &description));
    system.InitCommonControls(1, 0xFFFFFFFF); // a record of the wrong size is ignored
}

TEST_F(SystemInformationWinTest, OneInstanceOfATitleRunsAtATime) {
    const std::string title = "Quarn test " + std::to_string(GetCurrentProcessId());
    {
        SystemInformationWin first;
        EXPECT_FALSE(first.AlreadyRunning(title));
        EXPECT_FALSE(first.AlreadyRunning(title)); // it is the one that runs
        EXPECT_TRUE(system.AlreadyRunning(title));
        EXPECT_TRUE(system.AlreadyRunning(title));
        SystemInformationWin other;
        EXPECT_FALSE(other.AlreadyRunning(title + " too"));
    }
    EXPECT_FALSE(system.AlreadyRunning(title));
}

} // namespace
} // namespace quarn
