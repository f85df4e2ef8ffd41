#pragma once

// A browser that shows a list to be scanned. Time-out 1000 ms; a server answers after 20 ms.

#include "tests/fakes/HeadlessBrowser.h"
#include "tools/gamenet/protocol/ServerReplies.h"

#include <cstdint>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace quarn {

// A browser that was started with a list of servers that all answer.
class BrowserWithServers : public HeadlessBrowser {
  public:
    explicit BrowserWithServers(std::int32_t count, std::int32_t atOnce = 1) {
        PutList("q3", Addresses(count));
        PutServers(Addresses(count));
        EXPECT_TRUE(Start());
        program.Simultaneous = atOnce;
    }
};

class ScanTest : public ::testing::Test {
  protected:
    using Family = gamenet::Family;

    static constexpr std::int32_t Timeout = 1000;
    static constexpr std::int32_t Latency = 20;

    // Starts with a list of this many servers, all of which answer.
    void StartWith(std::int32_t count, Family family = Family::Quake3) {
        addresses = HeadlessBrowser::Addresses(count);
        const char* const shorts[] = {"q3", "d3", "hl"};
        const std::size_t game = static_cast<std::size_t>(family);
        browser.PutList(shorts[game], addresses);
        browser.PutServers(addresses, family);
        browser.Set("Selection", "LastGame", HeadlessBrowser::Q3 + static_cast<std::int32_t>(game));
        ASSERT_TRUE(browser.Start());
        ASSERT_EQ(browser.RowCount(), count);
    }

    const std::string& Address(std::int32_t number) const {
        return addresses[static_cast<std::size_t>(number) - 1];
    }
    ServerRecord& Server(std::int32_t number) { return browser.program.Servers[number]; }
    void Silence(std::int32_t number) { browser.network.servers.erase(Address(number)); }

    // Replaces the answer of this server.
    void Script(std::int32_t number, std::function<void()> script) {
        browser.network.scripts[Address(number)] = [script = std::move(script)](const SentDatagram&) {
            script();
        };
    }

    // The datagram that this server answers.
    std::string HonestReply(std::int32_t number,
                            const std::string& request = "\xFF\xFF\xFF\xFFgetstatus") const {
        const EmulatedServer& server = browser.network.servers.at(Address(number));
        return gamenet::ServerReply(server.family, server.status, request).value();
    }

    // Runs an action while this server is queried, before its answer.
    void During(std::int32_t number, std::function<void()> action) {
        browser.network.whenAsked = [this, number, action = std::move(action)](const std::string& address) {
            if (address == Address(number))
                browser.In(Latency / 2, action);
        };
    }

    // Numbers of the servers queried so far.
    std::vector<std::int32_t> Asked() const {
        std::vector<std::int32_t> numbers;
        for (const std::string& asked : browser.network.Asked())
            for (std::size_t i = 0; i < addresses.size(); ++i)
                if (addresses[i] == asked)
                    numbers.push_back(static_cast<std::int32_t>(i) + 1);
        return numbers;
    }

    void ExpectIdle() {
        EXPECT_FALSE(browser.Controls().tmrTimeout.Enabled());
        EXPECT_EQ(browser.Form().scan.wait.ReplyState, 0);
        EXPECT_EQ(browser.Form().scan.wait.QuerySentTick, 0);
        EXPECT_FALSE(browser.Form().scan.ScanAborted);
        browser.fake.events.RunFor(2 * Timeout); // until late replies are not waited for any more
        EXPECT_EQ(browser.sckServer.CurrentState(), UdpSocket::State::Closed);
        EXPECT_FALSE(browser.Controls().tmrPorts.Enabled());
        EXPECT_FALSE(browser.Controls().tmrDeadlines.Enabled());
    }

    HeadlessBrowser browser;
    std::vector<std::string> addresses;
};

} // namespace quarn
