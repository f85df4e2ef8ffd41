#include "win32/desktop/HostNamesWin.h"

#include "tests/win32/harness/ReplacedImport.h"
#include "win32/WinsockSession.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

TEST(HostNamesWinTest, FindsAddresses) {
    EXPECT_EQ(HostNamesWin().AddressOf("localhost"), "127.0.0.1");
    EXPECT_EQ(HostNamesWin().AddressOf("127.0.0.1"), "127.0.0.1");
    EXPECT_EQ(HostNamesWin().AddressOf("127.200.0.255"), "127.200.0.255");
}

TEST(HostNamesWinTest, WhatDoesNotResolveIsEmpty) {
    // No label of a name is longer than 63 characters, so nobody needs to be asked for these.
    const std::string impossible(64, 'x');
    for (const std::string& host : {std::string(), impossible, impossible + ".example", "a." + impossible})
        EXPECT_EQ(HostNamesWin().AddressOf(host), "") << host;
}

// A sockets library of the test's own.
class WatchedHostNamesTest : public ::testing::Test {
  protected:
    using Calls = std::vector<std::string>;

    WatchedHostNamesTest() {
        calls.clear();
        startError = 0;
        addresses = {};
    }

    static int WSAAPI Startup(WORD version, WSADATA*) {
        calls.push_back("start " + std::to_string(LOBYTE(version)) + "." + std::to_string(HIBYTE(version)));
        return startError;
    }
    static hostent* WSAAPI GetHostByName(const char* name) {
        calls.push_back(std::string("ask for ") + name);
        if (addresses.empty())
            return nullptr;
        static hostent answer{};
        answer.h_length = 4;
        answer.h_addr_list = addresses.data();
        return &answer;
    }
    static int WSAAPI Cleanup() {
        calls.push_back("end");
        return 0;
    }

    inline static Calls calls;
    inline static int startError;
    inline static std::vector<char*> addresses;

  private:
    ReplacedImport startup_{&WSAStartup, &Startup};
    ReplacedImport getHostByName_{&gethostbyname, &GetHostByName};
    ReplacedImport cleanup_{&WSACleanup, &Cleanup};
};

TEST_F(WatchedHostNamesTest, TakesTheFirstAddress) {
    char first[] = "\x0A\0\xC8\xFF";
    char second[] = "\x7F\0\0\1";
    addresses = {first, second, nullptr};
    EXPECT_EQ(HostNamesWin().AddressOf("host.example"), "10.0.200.255");
    EXPECT_EQ(calls, (Calls{"start 1.1", "ask for host.example", "end"}));
}

TEST_F(WatchedHostNamesTest, LetsTheLibraryGoThoughNothingWasFound) {
    EXPECT_EQ(HostNamesWin().AddressOf("host.example"), "");
    addresses = {nullptr};
    EXPECT_EQ(HostNamesWin().AddressOf("host.example"), "");
    EXPECT_EQ(calls, (Calls{"start 1.1", "ask for host.example", "end", "start 1.1", "ask for host.example",
                            "end"}));
}

TEST_F(WatchedHostNamesTest, AsksNobodyWithoutTheLibrary) {
    startError = WSAVERNOTSUPPORTED;
    char address[] = "\x7F\0\0\1";
    addresses = {address, nullptr};
    EXPECT_EQ(HostNamesWin().AddressOf("host.example"), "");
    EXPECT_EQ(calls, Calls{"start 1.1"});
}

} // namespace
} // namespace quarn
