#pragma once

// A browser that shows a list, for the commands of the server list.

#include "tests/fakes/HeadlessBrowser.h"
#include "views/ServerListView.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {

class ListedServersTest : public ::testing::Test {
  protected:
    void StartWith(std::int32_t count) {
        addresses = HeadlessBrowser::Addresses(count);
        browser.PutList("q3", addresses);
        ASSERT_TRUE(browser.Start());
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (std::int32_t i = 1; i <= browser.program.Servers.HighestIndex(); ++i)
            names.push_back(browser.program.Servers[i].Name);
        return names;
    }
    ServerListView& View() { return browser.Form().servers; }

    HeadlessBrowser browser;
    std::vector<std::string> addresses;
};

} // namespace quarn
