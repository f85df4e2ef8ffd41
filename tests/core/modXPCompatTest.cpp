#include "core/modXPCompat.h"

#include "tests/fakes/FakeSystem.h"

#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace quarn {
namespace {

TEST(InitCommonControlsVB, AsksForTheExtendedComboBoxClass) {
    FakeSystem system;
    InitCommonControlsVB(system);
    const std::vector<std::pair<std::uint32_t, std::uint32_t>> expected = {{8, 0x200}};
    EXPECT_EQ(system.controlsInitialised, expected);
}

TEST(InitCommonControlsVB, IgnoresAFailure) {
    FakeSystem system;
    system.controlsFault = ErrorNumber::InternalError;
    InitCommonControlsVB(system);
    EXPECT_EQ(system.controlsInitialised.size(), 1U);
}

} // namespace
} // namespace quarn
