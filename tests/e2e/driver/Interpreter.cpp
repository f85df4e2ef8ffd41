#include "tests/e2e/driver/Interpreter.h"

#include "tests/e2e/driver/Messages.h"
#include "tests/e2e/driver/Session.h"
#include "tests/e2e/driver/Words.h"

#include <algorithm>
#include <chrono>
#include <initializer_list>
#include <optional>
#include <stop_token>
#include <thread>

namespace quarn::uidrive {

namespace {

constexpr DWORD PollMilliseconds = 5;

using Clock = std::chrono::steady_clock;

// An answer that takes longer comes from a busy window.
constexpr std::chrono::milliseconds LateAnswer(20);
// Deferred work of a window, such as painting, has started by then.
constexpr std::chrono::milliseconds QuietEnd(100);

// Checks repeatedly whether the window answers, in parallel with the commands: a command of many messages
// takes long in a busy window, but a window hangs only if a single message is not answered.
class AnswerWatch {
  public:
    explicit AnswerWatch(HWND window)
        : thread_([this, window](std::stop_token stop) { Watch(window, stop); }) {}

    Clock::duration Longest() {
        thread_.request_stop();
        thread_.join();
        return longest_;
    }

  private:
    void Watch(HWND window, const std::stop_token& stop) noexcept {
        while (!stop.stop_requested()) {
            const auto asked = Clock::now();
            DWORD_PTR ignored = 0;
            SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, LongestAnswer, &ignored);
            longest_ = std::max(longest_, Clock::now() - asked);
            Sleep(1);
        }
    }

    static constexpr UINT LongestAnswer = 10'000; // milliseconds

    Clock::duration longest_{};
    std::jthread thread_; // last, because it uses the other members
};

std::string Milliseconds(Clock::duration duration) {
    return std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(duration).count());
}

} // namespace

Interpreter::Interpreter() {
    for (const auto group :
         {ProcessCommands, WindowCommands, ControlCommands, TreeViewCommands, ListViewCommands, BarCommands,
          InputCommands, KeyboardCommands, FileCommands, AccessibleCommands}) {
        const Commands offered = group();
        commands_.insert(commands_.end(), offered.begin(), offered.end());
    }
}

Lines Interpreter::Run(Session& session, const Words& words) const {
    if (words[0] == "help")
        return Help();
    if (words[0] == "wait")
        return Wait(session, words);
    if (words[0] == "measure")
        return Measure(session, words);
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
    const auto end = Clock::now() + session.timeout;
    std::string last;
    while (true) {
        // What does not exist yet, for example a window, is waited for too.
        try {
            const Lines lines = Run(session, polled);
            last = Joined(lines, "\n");
            if (Matches(last, words[1]))
                return lines;
        } catch (const Failure& failure) {
            last = failure.what();
        }
        if (Clock::now() >= end)
            throw Failure("waited in vain for \"" + words[1] + "\" from \"" + Joined(polled, " ") +
                          "\"; last: " + last);
        Sleep(PollMilliseconds);
    }
}

Lines Interpreter::Measure(Session& session, const Words& words) const {
    if (words.size() < 3)
        throw Failure("measure needs PATTERN COMMAND...");
    const Words polled(words.begin() + 2, words.end());
    const HWND window = session.Window();
    const auto start = Clock::now();
    AnswerWatch watch(window);
    Clock::time_point done = start;
    for (bool reached = false; !reached || Clock::now() < done + QuietEnd; Sleep(1)) {
        const auto asked = Clock::now();
        Send(window, WM_NULL);
        const bool reachedNow = !reached && Matches(Joined(Run(session, polled), "\n"), words[1]);
        const auto answered = Clock::now();
        if (reachedNow || !reached || answered - asked > LateAnswer)
            done = answered;
        reached = reached || reachedNow;
        if (answered > start + session.timeout)
            throw Failure("measured in vain until \"" + words[1] + "\"");
    }
    return {Milliseconds(done - start) + " " + Milliseconds(watch.Longest())};
}

Lines Interpreter::Help() const {
    Lines lines;
    for (const Command& command : commands_)
        lines.push_back(std::string(command.name) + " " + command.arguments + ": " + command.purpose);
    lines.emplace_back(
        "wait PATTERN COMMAND...: repeats a command until its output matches; * stands for any text");
    lines.emplace_back(
        "measure PATTERN COMMAND...: as wait, and until the window answers at once; prints how "
        "long that took and how long the slowest answer took, in milliseconds");
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
