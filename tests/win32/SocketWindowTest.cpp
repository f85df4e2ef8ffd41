#include "win32/SocketWindow.h"

#include "tests/win32/harness/Pumping.h"

#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace quarn {
namespace {

class SocketWindowTest : public ::testing::Test {
  protected:
    UINT Register(int name) {
        return window.Register([this, name] { called.push_back(name); });
    }

    void Post(UINT message) { PostMessageA(window.Handle(), message, 0, 0); }

    void RunPosted() {
        ASSERT_TRUE(PumpUntil([] { return GetQueueStatus(QS_POSTMESSAGE) == 0; }));
    }

    SocketWindow window;
    std::vector<int> called;
};

TEST_F(SocketWindowTest, CallsTheReceiverOfTheMessage) {
    const UINT first = Register(1);
    const UINT second = Register(2);
    for (const UINT message : {second, first, second})
        Post(message);
    RunPosted();
    EXPECT_EQ(called, (std::vector<int>{2, 1, 2}));
}

TEST_F(SocketWindowTest, DropsMessagesOfAReleasedNumber) {
    const UINT first = Register(1);
    Post(first);
    window.Release(first);
    const UINT second = Register(2);
    EXPECT_NE(first, second);
    Post(first);
    Post(second);
    RunPosted();
    EXPECT_EQ(called, std::vector<int>{2});
}

TEST_F(SocketWindowTest, AReceiverMayReleaseItsNumberAndRegisterAnother) {
    UINT own = 0;
    UINT next = 0;
    own = window.Register([&] {
        window.Release(own);
        for (int i = 0; i < 100; ++i) // enough for the table to grow
            next = Register(3);
        called.push_back(1);
    });
    Post(own);
    Post(own);
    RunPosted();
    Post(next);
    RunPosted();
    EXPECT_EQ(called, (std::vector<int>{1, 3}));
}

TEST_F(SocketWindowTest, GivesOutNoNumberThatIsInUse) {
    const UINT kept = Register(1);
    for (int i = 0; i < 20'000; ++i) { // more than there are numbers
        const UINT other = Register(2);
        ASSERT_NE(other, kept);
        window.Release(other);
    }
    Post(kept);
    RunPosted();
    EXPECT_EQ(called, std::vector<int>{1});
}

} // namespace
} // namespace quarn
