#include "win32/desktop/HostNamesWin.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace quarn
