#pragma once

// The commands of the driver. Each unit has its own table; the interpreter joins them.

#include <stdexcept>
#include <string>
#include <vector>

namespace quarn::uidrive {

class Session;

using Words = std::vector<std::string>;
using Lines = std::vector<std::string>;

// The only error of the driver, with a message that says what could not be done.
struct Failure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Command {
    const char* name;
    // The words after the name, for the help; "[…]" is optional.
    const char* arguments;
    const char* purpose;
    std::size_t fewest;
    Lines (*run)(Session& session, const Words& arguments);
};

using Commands = std::vector<Command>;

Commands ProcessCommands();
Commands WindowCommands();
Commands ControlCommands();
Commands TreeViewCommands();
Commands ListViewCommands();
Commands BarCommands();
Commands InputCommands();
Commands KeyboardCommands();
Commands FileCommands();
Commands AccessibleCommands();

} // namespace quarn::uidrive
