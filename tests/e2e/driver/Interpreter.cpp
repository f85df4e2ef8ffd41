#include "tests/e2e/driver/Interpreter.h"

#include "tests/e2e/driver/Session.h"
#include "tests/e2e/driver/Words.h"

#include <initializer_list>
#include <optional>

namespace quarn::uidrive {

namespace {

constexpr DWORD PollMilliseconds = 5;

} // namespace

Interpreter::Interpreter() {
    for (const auto group : {ProcessCommands, WindowCommands, ControlCommands, TreeViewCommands,
                             ListViewCommands, BarCommands, InputCommands, KeyboardCommands}) {
        const Commands offered = group();
        commands_.insert(commands_.end(), offered.begin(), offered.end());
    }
}

Lines Interpreter::Run(Session& session, const Words& words) const {
    if (words[0] == "help")
        return Help();
    if (words[0] == "wait")
        return Wait(session, words);
    const Command& command = Find(words[0]);
    const Words arguments(words.begin() + 1, words.end());
    if (arguments.size() < command.fewest)
        throw Failure(words[0] + " needs " + command.arguments);
    return command.run(session, arguments);
}

Lines Interpreter::Wait(Session& session, const Words& words) const {
    if (words.size() < 3)
        throw Failure("wait needs PATTERN COMMAND...");
    const Words polled(words.begin() + 2, words.end());
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(session.timeout.count());
    std::string last;
    while (true) {
        // What is not there yet, a window for one, is waited for as well.
        try {
            const Lines lines = Run(session, polled);
            last = Joined(lines, "\n");
            if (Matches(last, words[1]))
                return lines;
        } catch (const Failure& failure) {
            last = failure.what();
        }
        if (GetTickCount64() >= end)
            throw Failure("waited in vain for \"" + words[1] + "\" from \"" + Joined(polled, " ") +
                          "\"; last: " + last);
        Sleep(PollMilliseconds);
    }
}

Lines Interpreter::Help() const {
    Lines lines;
    for (const Command& command : commands_)
        lines.push_back(std::string(command.name) + " " + command.arguments + ": " + command.purpose);
    lines.emplace_back(
        "wait PATTERN COMMAND...: repeats a command until its output matches; * stands for any text");
    return lines;
}

const Command& Interpreter::Find(const std::string& name) const {
    for (const Command& command : commands_) {
        if (name == command.name)
            return command;
    }
    throw Failure("there is no command " + name);
}

} // namespace quarn::uidrive
