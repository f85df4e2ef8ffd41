#pragma once

// Scope guards: restore a value, or run an action, at the end of a scope, including its end by an exception.

#include <utility>

namespace quarn {

// Gives a variable another value and restores the previous one at the end of the scope.
template<class T>
class Restore {
  public:
    template<class Value>
    Restore(T& variable, Value&& value)
        : variable_(variable), previous_(std::exchange(variable, std::forward<Value>(value))) {}
    ~Restore() { variable_ = std::move(previous_); }
    Restore(const Restore&) = delete;
    Restore& operator=(const Restore&) = delete;

  private:
    T& variable_;
    T previous_;
};

// Runs an action at the end of the scope. The action must not throw.
template<class Action>
class Finally {
  public:
    explicit Finally(Action action) : action_(std::move(action)) {}
    ~Finally() { action_(); } // NOLINT(bugprone-exception-escape)
    Finally(const Finally&) = delete;
    Finally& operator=(const Finally&) = delete;

  private:
    Action action_;
};

} // namespace quarn
