#pragma once

// A program state with its log, on a desktop in memory: what one routine or form needs, without the main
// form.

#include "core/modDefinitions.h"
#include "support/clsAppLog.h"
#include "tests/fakes/FakeDesktop.h"
#include "tests/fakes/LoggedEntries.h"

#include <memory>
#include <string>
#include <vector>

namespace quarn {

class HeadlessProgram {
  public:
    HeadlessProgram() {
        program.AppPath = "C:\\Quarn\\";
        program.AppLog = std::make_unique<clsAppLog>(fake.desktop, program.AppPath);
    }
    HeadlessProgram(const HeadlessProgram&) = delete;
    HeadlessProgram& operator=(const HeadlessProgram&) = delete;

    // "Module;Routine;ErrNumber" of every entry so far.
    std::vector<std::string> Logged() const { return LoggedEntries(program.AppLog->HistoryLog()); }

    FakeDesktop fake;
    ProgramState program;
};

} // namespace quarn
