// Locking the program's files.

#include "tests/e2e/driver/Session.h"

namespace quarn::uidrive {

namespace {

Lines Hold(Session& session, const Words& arguments) {
    session.HoldFile(arguments[0]);
    return {};
}

Lines LetGo(Session& session, const Words&) {
    session.LetFileGo();
    return {};
}

} // namespace

Commands FileCommands() {
    return {
        {"hold", "FILE", "opens a file that nobody else may open then", 1, Hold},
        {"let-go", "", "closes the file that is held", 0, LetGo},
    };
}

} // namespace quarn::uidrive
