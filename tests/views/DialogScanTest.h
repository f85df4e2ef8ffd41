#pragma once

// Scans during which dialogs and message boxes are open while events run.

#include "tests/views/ScanTest.h"

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

namespace quarn {

class DialogScanTest : public ScanTest {
  protected:
    // The dialogs and boxes that open from now on stay open for this time, then `then` runs in them.
    void KeepOpenFor(std::int32_t milliseconds, std::function<void()> then = nullptr) {
        browser.fake.prompts.whileOpen = browser.dialogs.whileOpen = [=, this] {
            ++opened;
            browser.fake.events.RunFor(milliseconds);
            if (then)
                then();
        };
    }

    // Runs an action once, this many milliseconds after the start of a scan of all servers.
    void RefreshAllAnd(std::int32_t milliseconds, std::function<void()> action) {
        browser.In(milliseconds, std::move(action));
        browser.RefreshAll();
    }

    void OpenOptions() { browser.Form().dialogs.mnuExtrasOptions_Click(); }

    void ExpectEnded(const char* message = "Ready.") {
        EXPECT_EQ(browser.Message(), message);
        EXPECT_EQ(browser.Count(), std::to_string(browser.program.ServerCount) + " servers");
        EXPECT_FALSE(browser.Controls().pbScanning.active);
        EXPECT_EQ(browser.Controls().pbScanning.toolTip, "Server query status");
        EXPECT_FALSE(browser.Controls().tmrTimeout.Enabled());
        EXPECT_FALSE(browser.Controls().tmrDeadlines.Enabled());
    }

    int opened = 0;
};

} // namespace quarn
