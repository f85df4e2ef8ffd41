#include "win32/desktop/SystemInformationWin.h"

#include "base/RunTimeError.h"
#include "tests/win32/harness/ReplacedImport.h"
#include "win32/Handles.h"
#include "win32/RunningInstance.h"

#include <algorithm>
#include <commctrl.h>
#include <cstring>
#include <gtest/gtest.h>
#include <iterator>
#include <shlwapi.h>
#include <string>

namespace quarn {
namespace {

class SystemInformationWinTest : public ::testing::Test {
  protected:
    SystemInformationWin system;
};

TEST_F(SystemInformationWinTest, KnowsTheWindowsVersion) {
    const OsVersion version = system.WindowsVersion();
    EXPECT_GE(version.number.major, 6U);
    EXPECT_GT(version.number.build, 0U);
    EXPECT_EQ(version.servicePack.size(), 128U);
    EXPECT_NE(version.servicePack.find('\0'), std::string::npos);
}

TEST_F(SystemInformationWinTest, KnowsTheShellLibrarysVersion) {
    EXPECT_GE(system.ShellLightWeightVersion().major, 4U);
}

TEST_F(SystemInformationWinTest, ReadsTheDirectXVersionFromTheRegistry) {
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

INITCOMMONCONTROLSEX controlsAskedFor;

BOOL WINAPI NoteControls(const INITCOMMONCONTROLSEX* record) {
    controlsAskedFor = *record;
    return FALSE; // not reported as an error
}

TEST_F(SystemInformationWinTest, PassesTheClassesOfControlsUnchanged) {
    const ReplacedImport initControls(&InitCommonControlsEx, &NoteControls);
    system.InitCommonControls(8, 0x200);
    EXPECT_EQ(controlsAskedFor.dwSize, 8U);
    EXPECT_EQ(controlsAskedFor.dwICC, 0x200U);
}

TEST_F(SystemInformationWinTest, OneInstanceOfATitleRunsAtATime) {
    const std::string title = "Quarn test " + std::to_string(GetCurrentProcessId());
    {
        SystemInformationWin first;
        EXPECT_FALSE(first.AlreadyRunning(title));
        EXPECT_FALSE(first.AlreadyRunning(title)); // this is the running instance
        EXPECT_TRUE(system.AlreadyRunning(title));
        EXPECT_TRUE(system.AlreadyRunning(title));
        SystemInformationWin other;
        EXPECT_FALSE(other.AlreadyRunning(title + " too"));
    }
    EXPECT_FALSE(system.AlreadyRunning(title));
}

HWND foundWindow = nullptr;
DWORD allowedProcess = 0;

HWND WINAPI FindTheWindow(LPCSTR className, LPCSTR title) {
    EXPECT_STREQ(className, "QuarnMainWindow");
    EXPECT_EQ(title, nullptr);
    return foundWindow;
}

BOOL WINAPI AllowTheProcess(DWORD process) {
    allowedProcess = process;
    return TRUE;
}

TEST_F(SystemInformationWinTest, HasTheOtherInstanceShowItsWindow) {
    const ReplacedImport find(&FindWindowA, &FindTheWindow);
    const ReplacedImport allow(&AllowSetForegroundWindow, &AllowTheProcess);
    const WindowHandle window(
        CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr));
    const auto posted = [&] {
        MSG message;
        return PeekMessageA(&message, window.Get(), StartedAgainMessage(), StartedAgainMessage(),
                            PM_REMOVE) != 0;
    };
    system.ShowRunningInstance(); // its window may not be there yet
    EXPECT_EQ(allowedProcess, 0U);
    EXPECT_FALSE(posted());
    foundWindow = window.Get();
    system.ShowRunningInstance();
    EXPECT_EQ(allowedProcess, GetCurrentProcessId());
    EXPECT_TRUE(posted());
}

// What the system is asked, and answers of the test's own.

static_assert(sizeof(OSVERSIONINFOA) == 148);
static_assert(sizeof(DLLVERSIONINFO) == 20);

BOOL WINAPI AnswerVersion(OSVERSIONINFOA* version) {
    EXPECT_EQ(version->dwOSVersionInfoSize, sizeof(OSVERSIONINFOA));
    version->dwMajorVersion = 10;
    version->dwMinorVersion = 2;
    version->dwBuildNumber = 19045;
    constexpr char ServicePack[] = "Service Pack 1\0left over";
    std::copy(std::begin(ServicePack), std::end(ServicePack), version->szCSDVersion);
    return TRUE;
}

BOOL WINAPI AnswerNoVersion(OSVERSIONINFOA*) {
    SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return FALSE;
}

TEST_F(SystemInformationWinTest, AsksForTheSystemsVersionWithTheShortRecord) {
    {
        const ReplacedImport answer(&GetVersionExA, &AnswerVersion);
        const OsVersion version = system.WindowsVersion();
        EXPECT_EQ(version.number.major, 10U);
        EXPECT_EQ(version.number.minor, 2U);
        EXPECT_EQ(version.number.build, 19045U);
        EXPECT_STREQ(version.servicePack.c_str(), "Service Pack 1");
    }
    const ReplacedImport answer(&GetVersionExA, &AnswerNoVersion);
    EXPECT_THROW(system.WindowsVersion(), RunTimeError);
}

HRESULT CALLBACK AnswerLibraryVersion(DLLVERSIONINFO* version) {
    EXPECT_EQ(version->cbSize, sizeof(DLLVERSIONINFO));
    version->dwMajorVersion = 6;
    version->dwMinorVersion = 3;
    version->dwBuildNumber = 9600;
    return NOERROR;
}

HRESULT CALLBACK AnswerNoLibraryVersion(DLLVERSIONINFO*) {
    return E_FAIL;
}

template<HRESULT(CALLBACK* Answer)(DLLVERSIONINFO*)>
FARPROC WINAPI FindLibraryVersion(HMODULE library, const char* name) {
    EXPECT_EQ(library, GetModuleHandleA("shlwapi.dll"));
    EXPECT_STREQ(name, "DllGetVersion");
    return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(Answer));
}

TEST_F(SystemInformationWinTest, AsksForTheShellLibrarysVersionWithTheShortRecord) {
    {
        const ReplacedImport find(&GetProcAddress, &FindLibraryVersion<&AnswerLibraryVersion>);
        const DllVersion version = system.ShellLightWeightVersion();
        EXPECT_EQ(version.major, 6U);
        EXPECT_EQ(version.minor, 3U);
        EXPECT_EQ(version.build, 9600U);
    }
    {
        const ReplacedImport find(&GetProcAddress, &FindLibraryVersion<&AnswerNoLibraryVersion>);
        EXPECT_THROW(system.ShellLightWeightVersion(), RunTimeError);
    }
    const ReplacedImport find(&GetProcAddress, &FindLibraryVersion<nullptr>);
    EXPECT_THROW(system.ShellLightWeightVersion(), RunTimeError);
}

BOOL WINAPI AnswerMemory(MEMORYSTATUSEX* status) {
    EXPECT_EQ(status->dwLength, sizeof(MEMORYSTATUSEX));
    *status = {.dwLength = status->dwLength,
               .dwMemoryLoad = 1,
               .ullTotalPhys = 2,
               .ullAvailPhys = 3,
               .ullTotalPageFile = 4,
               .ullAvailPageFile = 5,
               .ullTotalVirtual = 6,
               .ullAvailVirtual = 7,
               .ullAvailExtendedVirtual = 8};
    return TRUE;
}

BOOL WINAPI AnswerNoMemory(MEMORYSTATUSEX*) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
}

TEST_F(SystemInformationWinTest, ReportsThePhysicalAndTheVirtualMemory) {
    {
        const ReplacedImport answer(&GlobalMemoryStatusEx, &AnswerMemory);
        const MemoryStatus memory = system.Memory();
        EXPECT_EQ(memory.availablePhysical, 3U);
        EXPECT_EQ(memory.totalPhysical, 2U);
        EXPECT_EQ(memory.availableVirtual, 7U);
        EXPECT_EQ(memory.totalVirtual, 6U);
    }
    const ReplacedImport answer(&GlobalMemoryStatusEx, &AnswerNoMemory);
    EXPECT_THROW(system.Memory(), RunTimeError);
}

int WINAPI AnswerLanguage(LCID locale, LCTYPE item, LPSTR text, int size) {
    EXPECT_EQ(locale, 0x400U); // the user's
    EXPECT_EQ(item, 2U);       // the language's name in the user's language
    EXPECT_EQ(size, 99);
    constexpr char Language[] = "Fran\xE7"
                                "ais";
    std::copy(std::begin(Language), std::end(Language), text);
    return sizeof Language;
}

int WINAPI AnswerNoLanguage(LCID, LCTYPE, LPSTR text, int) {
    text[0] = 'x';
    return 0;
}

TEST_F(SystemInformationWinTest, AsksForTheNameOfTheUsersLanguage) {
    {
        const ReplacedImport answer(&GetLocaleInfoA, &AnswerLanguage);
        EXPECT_EQ(system.LanguageName(), "Fran\xE7"
                                         "ais");
    }
    const ReplacedImport answer(&GetLocaleInfoA, &AnswerNoLanguage);
    EXPECT_EQ(system.LanguageName(), "");
}

} // namespace
} // namespace quarn
