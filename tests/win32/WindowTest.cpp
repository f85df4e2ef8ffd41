#include "win32/Window.h"

#include "base/RunTimeError.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quarn {
namespace {

class FailingWindow final : public Window {
  public:
    FailingWindow() : Window("frmFailing") { Create({"QuarnFailingWindow"}); }

    bool fails = false;
    int destroyed = 0;

  private:
    Answer OnClose() override { return Fail(); }
    Answer OnCommand(int, CommandSource) override { return Fail(); }
    void OnDestroy() override { ++destroyed; }

    Answer Fail() const {
        if (fails)
            throw RunTimeError(ErrorNumber::Overflow);
        return 7;
    }
};

class Reports {
  public:
    Reports() {
        SetUncaughtErrorReporter([this](std::string_view module, std::string_view handler) {
            lines.push_back(std::string(module) + ";" + std::string(handler));
        });
    }
    Reports(const Reports&) = delete;
    Reports& operator=(const Reports&) = delete;
    ~Reports() { SetUncaughtErrorReporter({}); }

    std::vector<std::string> lines;
};

TEST(WindowTest, ReturnsTheResultOfItsHandler) {
    const FailingWindow window;
    EXPECT_EQ(SendMessageA(window.Handle(), WM_COMMAND, 1, 0), 7);
}

TEST(WindowTest, ReportsAnErrorOfAHandlerUnderFormAndHandler) {
    const Reports reports;
    FailingWindow window;
    window.fails = true;
    EXPECT_EQ(SendMessageA(window.Handle(), WM_COMMAND, 1, 0), 0);
    EXPECT_EQ(reports.lines, std::vector<std::string>{"frmFailing;OnCommand"});
}

TEST(WindowTest, StaysOpenIfItsCloseHandlerFails) {
    const Reports reports;
    FailingWindow window;
    window.fails = true;
    SendMessageA(window.Handle(), WM_CLOSE, 0, 0);
    EXPECT_TRUE(IsWindow(window.Handle()));
    EXPECT_EQ(reports.lines, std::vector<std::string>{"frmFailing;OnClose"});
}

TEST(WindowTest, ForgetsItsHandleWhenItIsDestroyed) {
    FailingWindow window;
    const HWND handle = window.Handle();
    DestroyWindow(handle);
    EXPECT_EQ(window.Handle(), nullptr);
    EXPECT_EQ(window.destroyed, 1);
    EXPECT_FALSE(IsWindow(handle));
}

TEST(WindowTest, DestroysItsWindow) {
    HWND handle = nullptr;
    {
        const FailingWindow window;
        handle = window.Handle();
        ASSERT_TRUE(IsWindow(handle));
    }
    EXPECT_FALSE(IsWindow(handle));
}

} // namespace
} // namespace quarn
