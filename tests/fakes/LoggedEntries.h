#pragma once

// What the application log holds, without the times.

#include "core/modStringHelper.h"
#include "support/clsAppLog.h"

#include <string>
#include <string_view>
#include <vector>

namespace quarn {

// "Module;Routine;ErrNumber" of every line of a log.
inline std::vector<std::string> LoggedEntries(std::string log) {
    std::vector<std::string> entries;
    ReplaceAll(log, "\r\n", "\n");
    for (const std::string_view line : Split(log, '\n')) {
        const std::vector<std::string_view> fields = Split(line, ';');
        if (fields.size() >= 4)
            entries.push_back(std::string(fields[0]) + ';' + std::string(fields[1]) + ';' +
                              std::string(fields[3]));
    }
    return entries;
}

// The errors among the entries of this run.
inline std::vector<std::string> LoggedErrors(const clsAppLog& log) {
    std::vector<std::string> errors = LoggedEntries(log.HistoryLog());
    std::erase_if(errors, [](const std::string& entry) { return entry.ends_with(";0"); });
    return errors;
}

} // namespace quarn
