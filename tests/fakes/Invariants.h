#pragma once

// What must hold of the program whatever the user, the network or a file did. Each function returns the
// statements that do not hold; tests and fuzz targets report them in their own ways.

#include "tests/fakes/HeadlessBrowser.h"
#include "tests/fakes/HeadlessProgram.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace quarn {

using Violations = std::vector<std::string>;

// After one datagram of this size was parsed into a program with one server: a handful of log entries, no
// message box, and lists no longer than the bytes account for.
Violations ViolationsAfterDatagram(HeadlessProgram& headless, std::size_t datagramSize);

// Whether rows may show records that are no longer in the list: after a command that replaced the records.
enum class Rows { OfTheList, Stale };

// The rows of the server list: each belongs to one record and shows its address.
Violations ViolationsOfRows(HeadlessBrowser& browser, Rows rows);

// Between two commands: no scan is running, and the list in memory is the one shown.
Violations ViolationsAtRest(HeadlessBrowser& browser, Rows rows);

// The list files, except those that `isForeign` says the program did not write: each has as many entries as
// its first line counts, and its last line is complete.
Violations ViolationsOfListFiles(const MemoryFiles& files,
                                 const std::function<bool(const std::string& path)>& isForeign = {});

} // namespace quarn
