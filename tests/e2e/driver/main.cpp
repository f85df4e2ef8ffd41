// uidrive: operates the windows of another program like a user, for tests and demonstrations.
//
//   uidrive EXECUTABLE COMMAND [ARGUMENT...]   runs one command against a running program
//   uidrive script                             reads commands from standard input, one per line
//   uidrive help                               lists the commands
//
// In a script each output line comes after a blank, and each command ends in a line "ok" or "failed: why".
// Empty lines and those that begin with # are ignored. The exit code is 0 if every command succeeded, 1 if
// one failed, 2 if the command line is wrong.

#include "tests/e2e/driver/Interpreter.h"
#include "tests/e2e/driver/Session.h"
#include "tests/e2e/driver/Words.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <iostream>

namespace quarn::uidrive {

namespace {

bool RunLine(const Interpreter& interpreter, Session& session, const std::string& line) {
    try {
        const Words words = SplitWords(line);
        if (words.empty() || words[0].starts_with('#'))
            return true;
        for (const std::string& output : interpreter.Run(session, words))
            std::cout << ' ' << output << '\n';
        std::cout << "ok" << std::endl;
        return true;
    } catch (const Failure& failure) {
        std::cout << "failed: " << Escaped(failure.what()) << std::endl;
        return false;
    }
}

int RunScript() {
    const Interpreter interpreter;
    Session session;
    bool allDone = true;
    for (std::string line; std::getline(std::cin, line);)
        allDone = RunLine(interpreter, session, line) && allDone;
    return allDone ? 0 : 1;
}

int RunOne(const std::string& executable, const Words& words) {
    try {
        const Interpreter interpreter;
        Session session;
        session.Attach(executable);
        for (const std::string& output : interpreter.Run(session, words))
            std::cout << output << '\n';
        return 0;
    } catch (const Failure& failure) {
        std::cerr << "uidrive: " << Escaped(failure.what()) << '\n';
        return 1;
    }
}

int Main(const Words& arguments) {
    if (arguments.size() == 1 && arguments[0] == "script")
        return RunScript();
    if (arguments.size() == 1 && arguments[0] == "help") {
        for (const std::string& line : Interpreter().Help())
            std::cout << line << '\n';
        return 0;
    }
    if (arguments.size() < 2) {
        std::cerr << "usage: uidrive EXECUTABLE COMMAND [ARGUMENT...] | uidrive script | uidrive help\n";
        return 2;
    }
    return RunOne(arguments[0], Words(arguments.begin() + 1, arguments.end()));
}

} // namespace

} // namespace quarn::uidrive

int main(int count, char** arguments) {
    // Lines end in LF on every system.
    _setmode(_fileno(stdout), _O_BINARY);
    return quarn::uidrive::Main({arguments + 1, arguments + count});
}
