#pragma once

// Runs lines of words as commands, among them those that need the others: "wait" and "help".

#include "tests/e2e/driver/Command.h"

namespace quarn::uidrive {

class Interpreter {
  public:
    Interpreter();

    // The command's output. Failure if the command is unknown, lacks arguments or fails.
    Lines Run(Session& session, const Words& words) const;

    Lines Help() const;

  private:
    // Repeats a reading command until its output matches a pattern.
    Lines Wait(Session& session, const Words& words) const;
    Lines Measure(Session& session, const Words& words) const;
    const Command& Find(const std::string& name) const;

    Commands commands_;
};

} // namespace quarn::uidrive
