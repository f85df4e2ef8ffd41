#pragma once

// What a user can do in the main window, in one table: the tests of reentrancy run its examples in the middle
// of each other, the fuzzer reads actions and their arguments from a script.

#include "tests/fakes/HeadlessBrowser.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

struct ActionArguments {
    std::int32_t number = 0;
    std::int32_t last = 0; // the second number of a range
    std::string text;
    std::string secondText;
    bool accept = true; // the user leaves a dialog by OK, not by Cancel
};

struct ActionExample {
    const char* name;
    ActionArguments arguments;
};

struct UserAction {
    const char* name;
    char letter; // in a script
    void (*run)(HeadlessBrowser& browser, const ActionArguments& arguments);
    const char* signature = ""; // the arguments that a script has after the letter: 'n' a number, 't' a text
    std::vector<ActionExample> examples = {}; // none: the action without arguments, under its own name
    bool replacesRecords = false;             // afterwards rows may show records that have left the list
};

const std::vector<UserAction>& UserActions();

// The action of this name, which must be in the table.
void Act(HeadlessBrowser& browser, std::string_view name, const ActionArguments& arguments = {});

} // namespace quarn
