#pragma once

// The fixture of a test that needs a program state with its log, on a desktop in memory.

#include "tests/fakes/HeadlessProgram.h"

#include <gtest/gtest.h>

namespace quarn {

class ProgramTest : public ::testing::Test, protected HeadlessProgram {};

} // namespace quarn
