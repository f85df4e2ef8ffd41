#include "fuzz/FuzzedProgram.h"

#include "fuzz/Require.h"
#include "query/modGamQuery.h"
#include "tests/fakes/Invariants.h"

#include <string>

namespace quarn::fuzz {

void FuzzedProgram::RequireBounds(std::size_t datagramSize) {
    RequireNone(ViolationsAfterDatagram(*this, datagramSize));
}

void FuzzedProgram::RequireCleanName(std::string_view text) {
    const std::size_t logged = program.AppLog->HistoryLog().size();
    const std::string name = ClearName(*program.AppLog, text);
    Require(name.size() <= text.size(), "a cleared name is no longer");
    Require(name.find('"') == std::string::npos, "a cleared name contains no quote");
    Require(program.AppLog->HistoryLog().size() == logged, "clearing a name never fails");
}

} // namespace quarn::fuzz
