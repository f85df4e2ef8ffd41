#include "support/clsSysTray.h"

#include "tests/fakes/Errors.h"
#include "tests/fakes/FakeFormWindow.h"
#include "tests/fakes/FakeNotificationArea.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace quarn {
namespace {

using Texts = std::vector<std::string>;

class clsSysTrayTest : public ::testing::Test {
  protected:
    clsSysTrayTest() {
        tray.SetSourceWindow(window);
        tray.LButtonDblClk = [this] { Raise("LButtonDblClk"); };
        tray.LButtonDown = [this] { Raise("LButtonDown"); };
        tray.LButtonUp = [this] { Raise("LButtonUp"); };
        tray.RButtonDblClk = [this] { Raise("RButtonDblClk"); };
        tray.RButtonDown = [this] { Raise("RButtonDown"); };
        tray.RButtonUp = [this] { Raise("RButtonUp"); };
    }
    void Raise(const char* event) {
        raised.push_back(event);
        if (whileRaised)
            whileRaised();
    }
    const FakeNotificationArea::Call& LastCall() const { return area.calls.at(area.calls.size() - 1); }
    bool InTray() const { return !window.visible && !window.shownInTaskbar && area.icons.size() == 1; }
    bool Shown() const { return window.visible && window.shownInTaskbar && area.icons.empty(); }

    FakeNotificationArea area;
    FakeFormWindow window;
    clsSysTray tray{area};
    Texts raised;
    std::function<void()> whileRaised;
};

TEST_F(clsSysTrayTest, DeclaresItsEventsInOrder) {
    const clsSysTray::Event* const events[] = {&tray.LButtonDblClk, &tray.LButtonDown, &tray.LButtonUp,
                                               &tray.RButtonDblClk, &tray.RButtonDown, &tray.RButtonUp};
    EXPECT_TRUE(std::is_sorted(std::begin(events), std::end(events), std::less<>()));
}

TEST_F(clsSysTrayTest, DescribesTheIconInThePlatformsForm) {
    tray.IconInSysTray();
    ASSERT_EQ(area.calls.size(), 1U);
    EXPECT_EQ(LastCall().command, NotifyCommand::Add);
    const NotifyIconRecord& record = LastCall().record;
    EXPECT_EQ(record.size, 88U);
    EXPECT_EQ(record.owner, FakeNotificationArea::PictureBox);
    EXPECT_EQ(record.identifier, 1U);
    EXPECT_EQ(record.flags, 7U);
    EXPECT_EQ(record.callbackMessage, 512U);
    EXPECT_EQ(record.icon, FakeFormWindow::TheIcon);
    EXPECT_EQ(LastCall().Tip(), "");
    EXPECT_EQ(area.pictureBoxParent, FakeFormWindow::TheReference);

    tray.RemoveFromSysTray();
    EXPECT_EQ(LastCall().command, NotifyCommand::Delete);
    EXPECT_EQ(LastCall().record.size, 88U);
    EXPECT_TRUE(area.icons.empty());
}

TEST_F(clsSysTrayTest, UsesTheWindowsIconUntilItGetsAnother) {
    EXPECT_EQ(tray.Icon(), FakeFormWindow::TheIcon);
    tray.SetIcon(0x99);
    EXPECT_EQ(tray.Icon(), 0x99U);
    tray.IconInSysTray();
    EXPECT_EQ(LastCall().record.icon, 0x99U);

    tray.ChangeIcon(0xAA);
    EXPECT_EQ(LastCall().command, NotifyCommand::Modify);
    EXPECT_EQ(LastCall().record.icon, 0xAAU);
    EXPECT_TRUE(LastCall().done);
    EXPECT_EQ(&tray.SourceWindow(), &window);
}

TEST_F(clsSysTrayTest, KeepsDefaultDblClkForItsOwner) {
    EXPECT_TRUE(tray.DefaultDblClk);
    tray.DefaultDblClk = false;
    area.Mouse(515);
    EXPECT_EQ(raised, Texts{"LButtonDblClk"});
}

TEST_F(clsSysTrayTest, CutsTooltipsToTheirField) {
    const struct {
        std::string text;
        std::string tip;
    } cases[] = {
        {"Quarn 1.0.0", "Quarn 1.0.0"},
        {"", ""},
        {std::string(62, 'a'), std::string(62, 'a')},
        {std::string(63, 'b'), std::string(63, 'b')},
        {std::string(64, 'c'), std::string(63, 'c')},
        {std::string(10'000, 'd'), std::string(63, 'd')},
        {"\xff\x80&%n", "\xff\x80&%n"},
        {std::string("a\0b", 3), "a"},
        {"short", "short"}, // nothing of the longer one is left after it
    };
    for (const auto& c : cases) {
        tray.ChangeToolTip(c.text);
        EXPECT_EQ(tray.ToolTip(), c.text);
        EXPECT_EQ(LastCall().command, NotifyCommand::Modify);
        EXPECT_EQ(LastCall().Tip(), c.tip);
        EXPECT_EQ(LastCall().record.tip.back(), '\0');
    }
}

TEST_F(clsSysTrayTest, KeepsATooltipForALaterIcon) {
    window.state = WindowState::Minimized;
    window.caption = "caption";
    tray.SetToolTip("tip");
    EXPECT_EQ(tray.ToolTip(), "tip");
    EXPECT_TRUE(area.calls.empty());
    EXPECT_EQ(window.caption, "caption");
    tray.IconInSysTray();
    EXPECT_EQ(LastCall().Tip(), "tip");
}

TEST_F(clsSysTrayTest, NamesAMinimisedWindowLikeItsTooltip) {
    window.caption = "caption";
    for (const WindowState state : {WindowState::Normal, WindowState::Maximized}) {
        window.state = state;
        tray.ChangeToolTip("tip");
        EXPECT_EQ(window.caption, "caption");
    }
    window.state = WindowState::Minimized;
    tray.ChangeToolTip(std::string(100, 'x'));
    EXPECT_EQ(window.caption, std::string(100, 'x'));
}

TEST_F(clsSysTrayTest, GoesIntoTheTrayAndBackAnyNumberOfTimes) {
    for (int cycle = 0; cycle < 5; ++cycle) {
        window.state = WindowState::Minimized;
        tray.MinToSysTray();
        EXPECT_TRUE(InTray());
        tray.BringWindowBack();
        EXPECT_TRUE(Shown());
        EXPECT_EQ(window.state, WindowState::Normal);
    }
}

// The calls of a window and a notification area, in one line.
struct Steps {
    std::string line;
    void Note(const char* step) { line += line.empty() ? step : std::string(", ") + step; }
};

class SteppedWindow : public FakeFormWindow {
  public:
    explicit SteppedWindow(Steps& steps) : steps_(steps) {}
    void SetState(WindowState) override { steps_.Note("state"); }
    void SetVisible(bool) override { steps_.Note("visible"); }
    void SetShownInTaskbar(bool) override { steps_.Note("taskbar"); }

  private:
    Steps& steps_;
};

class SteppedArea : public FakeNotificationArea {
  public:
    explicit SteppedArea(Steps& steps) : steps_(steps) {}
    bool Notify(NotifyCommand, const NotifyIconRecord&) override {
        steps_.Note("icon");
        return true;
    }

  private:
    Steps& steps_;
};

TEST(clsSysTrayStepsTest, LeaveNoMomentWithoutWindowAndIcon) {
    Steps steps;
    SteppedWindow window(steps);
    SteppedArea area(steps);
    clsSysTray tray(area);
    tray.SetSourceWindow(window);
    tray.MinToSysTray();
    EXPECT_EQ(std::exchange(steps.line, ""), "icon, visible, taskbar");
    tray.BringWindowBack();
    EXPECT_EQ(steps.line, "state, visible, taskbar, icon");
}

TEST_F(clsSysTrayTest, KeepsAWindowVisibleThatCouldNotComeBack) {
    area.absent = true;
    window.state = WindowState::Minimized;
    tray.MinToSysTray();
    EXPECT_TRUE(window.visible);
    EXPECT_TRUE(window.shownInTaskbar);
    tray.BringWindowBack();
    EXPECT_TRUE(Shown());
}

TEST_F(clsSysTrayTest, ANewTaskbarGetsTheIconAgainWhileTheWindowIsInTheTray) {
    tray.TaskbarCreated();
    EXPECT_TRUE(area.calls.empty());

    tray.MinToSysTray();
    tray.ChangeToolTip("tip");
    area.icons.clear();
    tray.TaskbarCreated();
    EXPECT_EQ(area.icons.size(), 1U);
    EXPECT_EQ(LastCall().Tip(), "tip");

    tray.BringWindowBack();
    tray.TaskbarCreated();
    EXPECT_TRUE(area.icons.empty());
}

TEST_F(clsSysTrayTest, AWindowGoesIntoTheTrayWhenATaskbarThatStartsTakesTheIcon) {
    area.absent = true;
    window.state = WindowState::Minimized;
    tray.MinToSysTray();
    for (int attempt = 0; attempt < 5; ++attempt) {
        EXPECT_TRUE(tray.tmrIcon.Enabled());
        tray.tmrIcon.Tick();
        EXPECT_TRUE(window.visible && window.shownInTaskbar);
    }
    area.absent = false;
    tray.tmrIcon.Tick();
    EXPECT_TRUE(InTray());
    EXPECT_FALSE(tray.tmrIcon.Enabled());
}

TEST_F(clsSysTrayTest, AWindowThatTheUserHasRestoredMeanwhileStaysInSight) {
    area.absent = true;
    window.state = WindowState::Minimized;
    tray.MinToSysTray();
    window.state = WindowState::Normal;
    area.absent = false;
    tray.tmrIcon.Tick();
    EXPECT_TRUE(Shown());
    EXPECT_FALSE(tray.tmrIcon.Enabled());
}

TEST_F(clsSysTrayTest, AMinimisedWindowStaysOnATaskbarThatTakesNoIcon) {
    area.absent = true;
    window.state = WindowState::Minimized;
    tray.MinToSysTray();
    int ticks = 0;
    for (; tray.tmrIcon.Enabled() && ticks < 1000; ++ticks)
        tray.tmrIcon.Tick();
    EXPECT_EQ(ticks, 15);
    EXPECT_TRUE(window.visible && window.shownInTaskbar);
    EXPECT_EQ(window.statesSet, std::vector<WindowState>{});

    tray.MinToSysTray();
    EXPECT_TRUE(tray.tmrIcon.Enabled()) << "the next time it is tried again";
}

TEST_F(clsSysTrayTest, AHiddenWindowGetsItsIconWhenANewTaskbarIsReady) {
    window.state = WindowState::Minimized;
    tray.MinToSysTray();
    area.icons.clear();
    area.absent = true;
    tray.TaskbarCreated();
    tray.tmrIcon.Tick();
    EXPECT_FALSE(window.visible);
    area.absent = false;
    tray.tmrIcon.Tick();
    EXPECT_TRUE(InTray());
    EXPECT_FALSE(tray.tmrIcon.Enabled());
    tray.BringWindowBack();
    EXPECT_TRUE(Shown());
}

TEST_F(clsSysTrayTest, AHiddenWindowWithoutAnIconComesBack) {
    window.state = WindowState::Minimized;
    tray.MinToSysTray();
    area.icons.clear();
    area.absent = true;
    tray.TaskbarCreated();
    int ticks = 0;
    for (; tray.tmrIcon.Enabled() && ticks < 1000; ++ticks)
        tray.tmrIcon.Tick();
    EXPECT_EQ(ticks, 15);
    EXPECT_TRUE(Shown());
    EXPECT_EQ(window.state, WindowState::Normal);
}

TEST_F(clsSysTrayTest, AnIconThatWasTakenInSpiteOfAFailureIsNotAddedTwice) {
    area.icons.insert({FakeNotificationArea::PictureBox, 1});
    window.state = WindowState::Minimized;
    tray.MinToSysTray();
    EXPECT_TRUE(InTray());
    EXPECT_FALSE(tray.tmrIcon.Enabled());
}

TEST_F(clsSysTrayTest, EndingTheProgramEndsTheAttempts) {
    area.absent = true;
    window.state = WindowState::Minimized;
    tray.MinToSysTray();
    tray.RemoveFromSysTray();
    EXPECT_FALSE(tray.tmrIcon.Enabled());
}

TEST_F(clsSysTrayTest, RaisesTheEventOfEachMouseMessage) {
    for (const double twipsPerPixel : {15.0, 12.0, 10.0, 7.5, 8.571428571428571, 1440 / 110.0}) {
        raised.clear();
        area.twipsPerPixelX = twipsPerPixel;
        for (const int message : {513, 514, 515, 516, 517, 518}) {
            area.Mouse(message);
            EXPECT_EQ(tray.LastMessage(), message) << twipsPerPixel;
        }
        EXPECT_EQ(raised, (Texts{"LButtonDown", "LButtonUp", "LButtonDblClk", "RButtonDown", "RButtonUp",
                                 "RButtonDblClk"}));
    }
}

TEST_F(clsSysTrayTest, RaisesNothingForAnyOtherNumber) {
    for (const int message : {512, 0, -1, 511, 519, 520, 521, 522, 1024, 1025, 65535, -513}) {
        area.Mouse(message);
        EXPECT_EQ(tray.LastMessage(), message);
    }
    EXPECT_EQ(raised, Texts{});
}

TEST_F(clsSysTrayTest, RoundsThePositionToAWholeNumber) {
    const struct {
        double X;
        int message;
    } cases[] = {
        {515 * 15.0 + 7, 515}, {515 * 15.0 - 7, 515}, {515 * 15.0 + 8, 516}, {516 * 15.0 - 7.5, 516}};
    for (const auto& c : cases) {
        area.pictureBoxMouseMove(c.X);
        EXPECT_EQ(tray.LastMessage(), c.message) << c.X;
    }
}

TEST_F(clsSysTrayTest, DropsMessagesWhileAHandlerRuns) {
    whileRaised = [this] {
        area.Mouse(517);
        EXPECT_EQ(tray.LastMessage(), 517);
    };
    area.Mouse(513);
    EXPECT_EQ(raised, Texts{"LButtonDown"});
    whileRaised = nullptr;
    area.Mouse(517);
    EXPECT_EQ(raised, (Texts{"LButtonDown", "RButtonUp"}));
}

TEST_F(clsSysTrayTest, AFailingHandlerLeavesItReadyForTheNextEvent) {
    whileRaised = [] { throw RunTimeError(ErrorNumber::TypeMismatch); };
    EXPECT_EQ(ErrorOf([&] { area.Mouse(513); }), ErrorNumber::TypeMismatch);
    whileRaised = nullptr;
    area.Mouse(514);
    EXPECT_EQ(raised, (Texts{"LButtonDown", "LButtonUp"}));
}

TEST_F(clsSysTrayTest, EventsWithoutAHandlerAreIgnored) {
    tray.LButtonUp = nullptr;
    area.Mouse(514);
    EXPECT_EQ(raised, Texts{});
}

TEST_F(clsSysTrayTest, NeedsAWindow) {
    clsSysTray fresh(area);
    EXPECT_TRUE(fresh.DefaultDblClk);
    EXPECT_EQ(fresh.ToolTip(), "");
    const std::vector<std::function<void()>> calls = {
        [&] { fresh.SourceWindow(); },    [&] { fresh.Icon(); },
        [&] { fresh.SetPicHook(); },      [&] { fresh.MinToSysTray(); },
        [&] { fresh.BringWindowBack(); }, [&] { fresh.ChangeToolTip("x"); }};
    for (const auto& call : calls)
        EXPECT_EQ(ErrorOf(call), ErrorNumber::ObjectVariableNotSet);
}

} // namespace
} // namespace quarn
