// Starting, finding and ending the program under test.

#include "tests/e2e/driver/Session.h"
#include "tests/e2e/driver/Words.h"

namespace quarn::uidrive {

namespace {

Lines Start(Session& session, const Words& arguments) {
    session.Start(arguments[0], arguments.size() > 1 ? arguments[1] : std::string());
    return {};
}

Lines Attach(Session& session, const Words& arguments) {
    session.Attach(arguments[0]);
    return {};
}

Lines IsRunning(Session& session, const Words&) {
    return {session.IsRunning() ? "1" : "0"};
}

Lines ExitCode(Session& session, const Words&) {
    const auto exitCode = session.WaitForExit(session.timeout);
    if (!exitCode)
        throw Failure("the program still runs");
    return {std::to_string(*exitCode)};
}

Lines Kill(Session& session, const Words&) {
    session.Kill();
    return {};
}

// Runs a second program next to the one under test and waits for its end.
Lines Run(Session& session, const Words& arguments) {
    Session other;
    other.Start(arguments[0]);
    const auto exitCode = other.WaitForExit(session.timeout);
    if (!exitCode)
        throw Failure(arguments[0] + " did not end in time");
    return {std::to_string(*exitCode)};
}

Lines Timeout(Session& session, const Words& arguments) {
    session.timeout = std::chrono::seconds(ToNumber(arguments[0]));
    return {};
}

} // namespace

Commands ProcessCommands() {
    return {
        {"start", "PROGRAM [ARGUMENTS]", "starts the program under test in its own folder", 1, Start},
        {"attach", "EXECUTABLE", "takes the running program of that file name", 1, Attach},
        {"is-running", "", "prints 1 while the program runs, 0 when it has ended", 0, IsRunning},
        {"exit-code", "", "waits until the program has ended; prints its exit code", 0, ExitCode},
        {"kill", "", "ends the program without asking it", 0, Kill},
        {"run", "PROGRAM", "runs another program to its end; prints its exit code", 1, Run},
        {"timeout", "SECONDS", "sets how long waits last before they fail", 1, Timeout},
    };
}

} // namespace quarn::uidrive
