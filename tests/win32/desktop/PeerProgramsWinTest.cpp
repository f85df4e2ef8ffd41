#include "win32/desktop/PeerProgramsWin.h"

#include "core/Version.h"
#include "tests/fakes/Errors.h"
#include "tests/win32/harness/OwnerTestWindow.h"
#include "tests/win32/harness/ReplacedImport.h"
#include "tests/win32/harness/TemporaryFolder.h"
#include "win32/desktop/FilesWin.h"

#include <future>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace quarn {
namespace {

struct Received {
    HWND sender;
    ULONG_PTR identifier;
    std::string bytes;
};

// A top-level window of another program, as far as the sender can tell.
class PeerWindow {
  public:
    explicit PeerWindow(const std::string& title) {
        static const ATOM registered = [] {
            WNDCLASSEXA description{};
            description.cbSize = sizeof description;
            description.lpfnWndProc = &Procedure;
            description.hInstance = GetModuleHandleA(nullptr);
            description.lpszClassName = "QuarnTestPeer";
            return RegisterClassExA(&description);
        }();
        EXPECT_NE(registered, 0);
        window_.Reset(CreateWindowExA(0, "QuarnTestPeer", title.c_str(), WS_OVERLAPPED, 0, 0, 100, 100,
                                      nullptr, nullptr, GetModuleHandleA(nullptr), nullptr));
        SetWindowLongPtrA(window_.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }

    std::vector<Received> received;

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message != WM_COPYDATA)
            return DefWindowProcA(window, message, wParam, lParam);
        const auto& record = *reinterpret_cast<const COPYDATASTRUCT*>(lParam);
        reinterpret_cast<PeerWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA))
            ->received.push_back({reinterpret_cast<HWND>(wParam), record.dwData,
                                  std::string(static_cast<const char*>(record.lpData), record.cbData)});
        return TRUE;
    }

    WindowHandle window_;
};

class PeerProgramsWinTest : public ::testing::Test {
  protected:
    OwnerTestWindow owner;
    PeerProgramsWin peers{owner.AsOwner()};
};

const std::string Message("ConGam:1.2.3.4:28960\0", 21);

TEST_F(PeerProgramsWinTest, SendsTheBytesToTheWindowOfTheTitle) {
    PeerWindow peer("Velmar 215");
    peers.SendCopyDataTo("Velmar 215", 3, Message);
    ASSERT_EQ(peer.received.size(), 1U);
    EXPECT_EQ(peer.received[0].sender, owner.Handle());
    EXPECT_EQ(peer.received[0].identifier, 3U);
    EXPECT_EQ(peer.received[0].bytes, Message);
}

TEST_F(PeerProgramsWinTest, SendsNothingToWindowsOfOtherTitles) {
    const char* const others[] = {"velmar 215", "Velmar 2150", "Velmar 21", "VELMAR 215", " Velmar 215", ""};
    std::vector<std::unique_ptr<PeerWindow>> windows;
    for (const char* title : others)
        windows.push_back(std::make_unique<PeerWindow>(title));
    peers.SendCopyDataTo("Velmar 215", 3, Message);
    for (const auto& window : windows)
        EXPECT_TRUE(window->received.empty());
}

TEST_F(PeerProgramsWinTest, FindsTheRightOneAmongLookAlikes) {
    for (const bool rightOneFirst : {true, false}) {
        PeerWindow one(rightOneFirst ? "Velmar 215" : "VELMAR 215");
        PeerWindow two(rightOneFirst ? "VELMAR 215" : "Velmar 215");
        peers.SendCopyDataTo("Velmar 215", 3, Message);
        EXPECT_EQ(one.received.size(), rightOneFirst ? 1U : 0U);
        EXPECT_EQ(two.received.size(), rightOneFirst ? 0U : 1U);
    }
}

TEST_F(PeerProgramsWinTest, AHungWindowIsSkipped) {
    std::promise<void> ready, release;
    std::thread hanging([&] {
        const PeerWindow window("Velmar that hangs");
        ready.set_value();
        release.get_future().wait();
    });
    ready.get_future().wait();
    const ULONGLONG start = GetTickCount64();
    peers.SendCopyDataTo("Velmar that hangs", 3, Message);
    EXPECT_LT(GetTickCount64() - start, 10'000U);
    release.set_value();
    hanging.join();
}

struct Sent {
    UINT flags;
    UINT timeout;
};
std::vector<Sent> sent;

LRESULT WINAPI NoteSent(HWND, UINT, WPARAM, LPARAM, UINT flags, UINT timeout, PDWORD_PTR) {
    sent.push_back({flags, timeout});
    return 0;
}

// Systems differ in when they take a window for hung, so this test looks at the call.
TEST_F(PeerProgramsWinTest, AsksNotToWaitForAHungWindow) {
    const ReplacedImport send(&SendMessageTimeoutA, &NoteSent);
    sent.clear();
    const PeerWindow peer("Velmar 215");
    peers.SendCopyDataTo("Velmar 215", 3, Message);
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].flags, UINT{SMTO_ABORTIFHUNG});
    EXPECT_EQ(sent[0].timeout, 3000U);
}

TEST_F(PeerProgramsWinTest, ReadsTheVersionOfAProgram) {
    char own[1024];
    GetModuleFileNameA(nullptr, own, sizeof own);
    const FileVersion version = peers.VersionOf(own);
    EXPECT_EQ(version.major, VersionMajor);
    EXPECT_EQ(version.minor, VersionMinor);
    EXPECT_EQ(version.build, VersionRevision);
}

TEST_F(PeerProgramsWinTest, DistinguishesAMissingProgramFromOneWithoutAVersion) {
    const TemporaryFolder folder;
    FilesWin().Write(folder / "text.exe", "no program at all");
    FilesWin().Write(folder / "empty.exe", "");
    for (const std::string& path :
         {folder / "missing.exe", folder.Path(), folder / "no folder\\a.exe", std::string()})
        EXPECT_EQ(ErrorOf([&] { peers.VersionOf(path); }), ErrorNumber::FileNotFound) << path;
    for (const char* name : {"text.exe", "empty.exe"})
        EXPECT_EQ(ErrorOf([&] { peers.VersionOf(folder / name); }), ErrorNumber::InvalidProcedureCall)
            << name;
}

} // namespace
} // namespace quarn
