#include "views/CommandGate.h"

#include "tests/fakes/FakeDesktop.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace quarn {
namespace {

using Kind = CommandKind;
using DialogActivity = CommandGate::DialogActivity;
using ListActivity = CommandGate::ListActivity;
using ScanActivity = CommandGate::ScanActivity;
using StepActivity = CommandGate::StepActivity;

class CommandGateTest : public ::testing::Test {
  protected:
    // Records a letter.
    std::function<void()> Note(char letter) {
        return [this, letter] { ran += letter; };
    }

    // Runs a command that works on a list or scan while `meanwhile` runs.
    template<class Activity>
    void RunWith(Kind kind, const std::function<void()>& meanwhile) {
        gate.Run(kind, [&] {
            ran += '(';
            {
                const Activity activity(gate);
                meanwhile();
            }
            ran += ')';
        });
    }

    // Runs `action` inside this work: a letter for each part, the outermost first.
    void During(const std::string& work, const std::function<void()>& action) {
        if (work.empty())
            return action();
        const std::string inner = work.substr(1);
        switch (work.front()) {
        case 'c':
            return gate.Run(Kind::Ordinary, [&] { During(inner, action); });
        case 's':
            return gate.Run(Kind::Ordinary, [&] { DuringA<ScanActivity>(inner, action); });
        case 'd':
            return DuringA<DialogActivity>(inner, action);
        case 'l':
            return DuringA<ListActivity>(inner, action);
        default:
            return DuringA<StepActivity>(inner, action);
        }
    }
    template<class Activity>
    void DuringA(const std::string& inner, const std::function<void()>& action) {
        const Activity activity(gate);
        During(inner, action);
    }

    // Closes at once where no command is at work.
    void Close(std::function<void()> unload) {
        gate.Close(std::move(unload), [] { return true; });
    }

    FakeDesktop fake;
    CommandGate gate{fake.events};
    std::string ran;
};

TEST_F(CommandGateTest, RunsACommandAtOnceIfNothingIsRunning) {
    gate.Run(Kind::Ordinary, Note('a'));
    gate.Run(Kind::ReplacesList, Note('b'));
    EXPECT_EQ(ran, "ab");
}

TEST_F(CommandGateTest, RunsACommandInsideAnotherWithoutListOrScan) {
    gate.Run(Kind::Ordinary, [&] {
        gate.Run(Kind::ReplacesList, Note('a'));
        ran += 'b';
    });
    EXPECT_EQ(ran, "ab");
}

TEST_F(CommandGateTest, EveryCommandWaitsForAList) {
    RunWith<ListActivity>(Kind::ReplacesList, [&] {
        gate.Run(Kind::Ordinary, Note('a'));
        gate.Run(Kind::ReplacesList, Note('b'));
        gate.Run(Kind::Ordinary, Note('c'));
    });
    EXPECT_EQ(ran, "()abc");
}

TEST_F(CommandGateTest, OnlyReplacementsWaitForAScan) {
    RunWith<ScanActivity>(Kind::Ordinary, [&] {
        gate.Run(Kind::ReplacesList, Note('a'));
        gate.Run(Kind::Ordinary, Note('b'));
        gate.Run(Kind::ReplacesList, Note('c'));
    });
    EXPECT_EQ(ran, "(b)ac");
}

TEST_F(CommandGateTest, ReportsToAScanThatAReplacementIsWaiting) {
    RunWith<ScanActivity>(Kind::Ordinary, [&] {
        EXPECT_FALSE(gate.ReplacementWaits());
        gate.Run(Kind::Ordinary, Note('a'));
        EXPECT_FALSE(gate.ReplacementWaits());
        gate.Run(Kind::ReplacesList, [&] {
            EXPECT_FALSE(gate.ReplacementWaits());
            ran += 'b';
        });
        EXPECT_TRUE(gate.ReplacementWaits());
    });
    EXPECT_EQ(ran, "(a)b");
    EXPECT_FALSE(gate.ReplacementWaits());
}

TEST_F(CommandGateTest, KeepsTheOrderOfWaitingCommands) {
    RunWith<ListActivity>(Kind::ReplacesList, [&] {
        gate.Run(Kind::ReplacesList, [&] {
            RunWith<ListActivity>(Kind::Ordinary, [&] { gate.Run(Kind::Ordinary, Note('z')); });
        });
        gate.Run(Kind::Ordinary, Note('b'));
        gate.Run(Kind::ReplacesList, Note('c'));
    });
    EXPECT_EQ(ran, "()()bcz");
}

TEST_F(CommandGateTest, WaitsUntilTheOutermostCommandIsDone) {
    gate.Run(Kind::Ordinary, [&] {
        RunWith<ScanActivity>(Kind::Ordinary, [&] {
            RunWith<ScanActivity>(Kind::Ordinary, [&] { gate.Run(Kind::ReplacesList, Note('x')); });
            EXPECT_TRUE(gate.ReplacementWaits()); // the outer scan must end as well
        });
        ran += '.';
    });
    EXPECT_EQ(ran, "(()).x");
}

TEST_F(CommandGateTest, TellsWhetherAScanRunsAndAnotherMayStart) {
    EXPECT_FALSE(gate.ScanRuns());
    int scans = 0;
    const std::function<void()> scan = [&] {
        if (!gate.ScanMayStart())
            return;
        const ScanActivity activity(gate);
        ++scans;
        EXPECT_TRUE(gate.ScanRuns());
        gate.Run(Kind::Ordinary, scan);
    };
    gate.Run(Kind::Ordinary, scan);
    EXPECT_EQ(scans, CommandGate::MostNestedScans);
    EXPECT_FALSE(gate.ScanRuns());
    EXPECT_TRUE(gate.ScanMayStart());
}

TEST_F(CommandGateTest, LetsACommandWaitThatWouldNestTooDeep) {
    int depth = 0;
    int deepest = 0;
    int runs = 0;
    const std::function<void()> command = [&] {
        const Restore deeper(depth, depth + 1);
        deepest = std::max(deepest, depth);
        if (++runs < 1000)
            gate.Run(Kind::Ordinary, command);
    };
    gate.Run(Kind::Ordinary, command);
    EXPECT_EQ(deepest, CommandGate::MostNestedCommands);
    EXPECT_EQ(runs, 1000); // none is lost
}

TEST_F(CommandGateTest, AScanStepsFromAnEventOnlyIfADialogIsAllThatIsAboveIt) {
    struct Case {
        const char* work; // from the outermost: c: command, s: scan, d: dialog, l: list, t: a scan's step
        bool steps;
    };
    for (const Case& c : {Case{"", false},     Case{"d", false},   Case{"cd", false},   Case{"cds", false},
                          Case{"s", false},    Case{"sc", false},  Case{"ss", false},   Case{"sl", false},
                          Case{"st", false},   Case{"scl", false}, Case{"sdl", false},  Case{"sld", false},
                          Case{"scld", false}, Case{"sdc", false}, Case{"sdcl", false}, Case{"sdcld", false},
                          Case{"sdt", false},  Case{"std", false}, Case{"sds", false},  Case{"sdss", false},
                          Case{"sd", true},    Case{"scd", true},  Case{"scdd", true},  Case{"sccd", true},
                          Case{"scdcd", true}, Case{"sscd", true}, Case{"sdsd", true},  Case{"cdsd", true}}) {
        bool steps = false;
        During(c.work, [&] {
            gate.StepScan = [&] { steps = true; };
            gate.ContinueScan();
            gate.StepScan = nullptr;
            EXPECT_EQ(gate.ScanMayStep(), c.steps) << c.work;
        });
        EXPECT_EQ(steps, c.steps) << c.work;
    }
}

TEST_F(CommandGateTest, AScanStepsBehindADialogAfterACommandThatDidNotAllowIt) {
    gate.StepScan = Note('s');
    During("scd", [&] {
        gate.Run(Kind::Ordinary, [&] {
            gate.ContinueScan();
            ran += 'a';
        });
        ran += '.';
        gate.ContinueScan();
    });
    EXPECT_EQ(ran, "as.s");
}

TEST_F(CommandGateTest, NoScanStepsBehindADialogWhileTheProgramCloses) {
    gate.StepScan = Note('s');
    During("scd", [&] {
        Close(Note('u'));
        gate.ContinueScan();
    });
    EXPECT_EQ(ran, "u");
}

TEST_F(CommandGateTest, ClosesAtOnceWhenNothingIsAtWork) {
    Close(Note('u'));
    EXPECT_EQ(ran, "u");
    EXPECT_TRUE(gate.Closing());
}

TEST_F(CommandGateTest, ClosesAfterTheOutermostCommandAndDropsWaitingOnes) {
    RunWith<ListActivity>(Kind::ReplacesList, [&] {
        gate.Run(Kind::Ordinary, Note('a'));
        Close(Note('u'));
        gate.Run(Kind::ReplacesList, Note('b'));
    });
    gate.Run(Kind::Ordinary, Note('c'));
    EXPECT_EQ(ran, "()u");
}

TEST_F(CommandGateTest, ClosesWhenNothingIsOpenAnyMore) {
    bool isOpen = true;
    const auto ready = [&] { return !isOpen; };
    gate.Close(Note('u'), ready);
    gate.ContinueClosing();
    EXPECT_EQ(ran, "");
    EXPECT_TRUE(gate.Closing());
    isOpen = false;
    gate.ContinueClosing();
    gate.ContinueClosing();
    EXPECT_EQ(ran, "u");
}

TEST_F(CommandGateTest, ClosesNeitherInsideACommandNorWhileSomethingIsOpenBehindIt) {
    bool isOpen = true;
    gate.Run(Kind::Ordinary, [&] {
        gate.Close(Note('u'), [&] { return !isOpen; });
        gate.ContinueClosing();
        ran += 'e';
    });
    EXPECT_EQ(ran, "e");
    isOpen = false;
    gate.ContinueClosing();
    EXPECT_EQ(ran, "eu");
}

TEST_F(CommandGateTest, ContinuesNoClosingThatHasNotBegun) {
    gate.ContinueClosing();
    gate.Run(Kind::Ordinary, Note('a'));
    EXPECT_EQ(ran, "a");
}

TEST_F(CommandGateTest, DropsWhatStillWaitsWhenOneOfTheWaitingCommandsCloses) {
    RunWith<ListActivity>(Kind::ReplacesList, [&] {
        gate.Run(Kind::Ordinary, [&] {
            ran += 'q';
            Close(Note('u'));
        });
        gate.Run(Kind::Ordinary, Note('a'));
    });
    EXPECT_EQ(ran, "()qu");
}

TEST_F(CommandGateTest, CountsOnlyTheFirstClose) {
    gate.Run(Kind::Ordinary, [&] {
        Close(Note('u'));
        Close(Note('v'));
    });
    Close(Note('w'));
    EXPECT_EQ(ran, "u");
}

TEST_F(CommandGateTest, UnloadsWithoutWaitingWhenTheSessionEnds) {
    RunWith<ScanActivity>(Kind::Ordinary, [&] {
        gate.Run(Kind::ReplacesList, Note('a'));
        gate.CloseAtOnce(Note('u'));
        EXPECT_FALSE(gate.WaitUntil([] { return true; }));
    });
    EXPECT_EQ(ran, "(u)");
}

TEST_F(CommandGateTest, UnloadsOnceIfTheSessionEndsDuringOrAfterAClose) {
    gate.Run(Kind::Ordinary, [&] {
        Close(Note('u'));
        gate.CloseAtOnce(Note('v'));
    });
    EXPECT_EQ(ran, "v");
    gate.CloseAtOnce(Note('w'));
    EXPECT_EQ(ran, "v");
}

TEST_F(CommandGateTest, UnloadsOnceThoughTheSystemEndsInTheMiddleOfIt) {
    Close([&] {
        ran += 'u';
        gate.CloseAtOnce(Note('v'));
        ran += '.';
    });
    EXPECT_EQ(ran, "u.");
}

TEST_F(CommandGateTest, ChecksAConditionBeforeItWaitsAndAfterEachEvent) {
    EXPECT_TRUE(gate.WaitUntil([] { return true; }));
    EXPECT_EQ(fake.events.waitCalls, 0);

    int events = 0;
    for (int i = 0; i < 5; ++i)
        fake.events.Post([&] { ++events; });
    EXPECT_TRUE(gate.WaitUntil([&] { return events == 2; }));
    EXPECT_EQ(events, 2);
    EXPECT_EQ(fake.events.Pending(), 3U);
}

TEST_F(CommandGateTest, RunsCommandsThatWaitedForAListBeforeTheScanEnds) {
    RunWith<ScanActivity>(Kind::Ordinary, [&] {
        fake.events.Post([&] {
            RunWith<ListActivity>(Kind::Ordinary, [&] {
                gate.Run(Kind::Ordinary, Note('a'));
                gate.Run(Kind::ReplacesList, Note('b'));
                gate.Run(Kind::Ordinary, Note('c'));
            });
        });
        fake.events.PostIn(10, Note('x'));
        EXPECT_TRUE(gate.WaitUntil([&] { return ran.ends_with('x'); }));
    });
    EXPECT_EQ(ran, "(()ax)bc");
}

TEST_F(CommandGateTest, ChecksAConditionAfterEachWaitingCommand) {
    RunWith<ScanActivity>(Kind::Ordinary, [&] {
        fake.events.Post([&] {
            RunWith<ListActivity>(Kind::Ordinary, [&] {
                gate.Run(Kind::Ordinary, Note('a'));
                gate.Run(Kind::Ordinary, Note('b'));
            });
        });
        EXPECT_TRUE(gate.WaitUntil([&] { return ran.ends_with('a'); }));
        ran += '.';
    });
    EXPECT_EQ(ran, "(()a.)b");
}

TEST_F(CommandGateTest, EndsAWaitWhenItCloses) {
    fake.events.PostIn(10, [&] { Close(Note('u')); });
    fake.events.PostIn(20, Note('x'));
    gate.Run(Kind::Ordinary, [&] {
        EXPECT_FALSE(gate.WaitUntil([] { return false; }));
        EXPECT_FALSE(gate.WaitUntil([] { return true; }));
        ran += 'e';
    });
    EXPECT_EQ(ran, "eu");
}

TEST_F(CommandGateTest, YieldsToEventsUntilItCloses) {
    fake.events.Post([&] { gate.Run(Kind::Ordinary, Note('a')); });
    fake.events.Post([&] { Close(Note('u')); });
    RunWith<ListActivity>(Kind::ReplacesList, [&] {
        gate.LetEventsRun();
        fake.events.Post(Note('x'));
        gate.LetEventsRun();
    });
    EXPECT_EQ(ran, "()u");
    EXPECT_EQ(fake.events.doEventsCalls, 1);
}

} // namespace
} // namespace quarn
