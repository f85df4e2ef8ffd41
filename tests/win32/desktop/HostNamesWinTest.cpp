#include "win32/desktop/HostNamesWin.h"

#include "tests/win32/harness/Pumping.h"
#include "tests/win32/harness/ReplacedImport.h"

#include <cstring>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

namespace quarn {
namespace {

// What the look-up answers, waited for as a dialog does.
std::string AddressOf(HostNamesWin& names, const std::string& host) {
    std::optional<std::string> answer;
    names.LookUp(host, [&](const std::string& address) { answer = address; });
    EXPECT_TRUE(PumpUntil([&] { return answer.has_value(); })) << host;
    return answer.value_or("no answer");
}

TEST(HostNamesWinTest, FindsAddresses) {
    HostNamesWin names;
    EXPECT_EQ(AddressOf(names, "localhost"), "127.0.0.1");
    EXPECT_EQ(AddressOf(names, "127.0.0.1"), "127.0.0.1");
    EXPECT_EQ(AddressOf(names, "127.200.0.255"), "127.200.0.255");
}

TEST(HostNamesWinTest, WhatDoesNotResolveIsEmpty) {
    // No label of a name is longer than 63 characters, so no server is asked for these.
    const std::string impossible(64, 'x');
    HostNamesWin names;
    for (const std::string& host : {std::string(), impossible, impossible + ".example", "a." + impossible})
        EXPECT_EQ(AddressOf(names, host), "") << host;
}

TEST(HostNamesWinTest, ACancelledLookUpDoesNotAnswer) {
    HostNamesWin names;
    int answers = 0;
    names.LookUp("localhost", [&](const std::string&) { ++answers; });
    names.Cancel();
    names.Cancel();
    EXPECT_EQ(AddressOf(names, "127.0.0.1"), "127.0.0.1");
    EXPECT_EQ(answers, 0);
}

TEST(HostNamesWinTest, ANewLookUpReplacesTheOneUnderWay) {
    HostNamesWin names;
    int answers = 0;
    names.LookUp("localhost", [&](const std::string&) { ++answers; });
    EXPECT_EQ(AddressOf(names, "127.0.0.2"), "127.0.0.2");
    EXPECT_EQ(answers, 0);
}

// A fake sockets library.
class HostNamesWinWatchedTest : public ::testing::Test {
  protected:
    using Calls = std::vector<std::string>;

    HostNamesWinWatchedTest() {
        calls.clear();
        startError = 0;
        canAsk = true;
    }

    static int WSAAPI Startup(WORD version, WSADATA*) {
        calls.push_back("start " + std::to_string(LOBYTE(version)) + "." + std::to_string(HIBYTE(version)));
        return startError;
    }
    // Finds 10.0.200.255 and tells so at once.
    static HANDLE WSAAPI Ask(HWND window, u_int message, const char* name, char* buffer, int) {
        calls.push_back(std::string("ask for ") + name);
        if (!canAsk) {
            WSASetLastError(WSAENOBUFS);
            return nullptr;
        }
        auto* const answer = reinterpret_cast<hostent*>(buffer);
        auto* const list = reinterpret_cast<char**>(buffer + sizeof(hostent));
        char* const address = reinterpret_cast<char*>(list + 2);
        std::memcpy(address, "\x0A\0\xC8\xFF", 4);
        list[0] = address;
        list[1] = nullptr;
        *answer = {};
        answer->h_addrtype = AF_INET;
        answer->h_length = 4;
        answer->h_addr_list = list;
        PostMessageA(window, message, 1, 0);
        return reinterpret_cast<HANDLE>(1);
    }
    static int WSAAPI Cleanup() {
        calls.push_back("end");
        return 0;
    }

    inline static Calls calls;
    inline static int startError;
    inline static bool canAsk;

  private:
    ReplacedImport startup_{&WSAStartup, &Startup};
    ReplacedImport ask_{&WSAAsyncGetHostByName, &Ask};
    ReplacedImport cleanup_{&WSACleanup, &Cleanup};
};

TEST_F(HostNamesWinWatchedTest, AsksTheLibraryAndLetsItGo) {
    {
        HostNamesWin names;
        EXPECT_EQ(calls, Calls{}) << "not before it is needed";
        EXPECT_EQ(AddressOf(names, "host.example"), "10.0.200.255");
        EXPECT_EQ(AddressOf(names, "other.example"), "10.0.200.255");
    }
    EXPECT_EQ(calls, (Calls{"start 1.1", "ask for host.example", "ask for other.example", "end"}));
}

TEST_F(HostNamesWinWatchedTest, AnswersAtOnceWhatCannotBeAsked) {
    canAsk = false;
    HostNamesWin names;
    std::string answer = "none";
    names.LookUp("host.example", [&](const std::string& address) { answer = address; });
    EXPECT_EQ(answer, "");
}

} // namespace
} // namespace quarn
