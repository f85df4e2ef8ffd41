#pragma once

// What the driver can be asked to do. Each unit of commands offers its own table; the session joins them.

#include <stdexcept>
#include <string>
#include <vector>

namespace quarn::uidrive {

class Session;

using Words = std::vector<std::string>;
using Lines = std::vector<std::string>;

// The one error of the driver: a sentence that says what was asked for and not found.
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
