#pragma once

// Converts the system's error codes to the program's numbered run-time errors.

#include "base/RunTimeError.h"
#include "win32/WindowsHeaders.h"

#include <string>

namespace quarn {

// The number of a file error of the system; 57, device I/O error, for all without a better one.
ErrorNumber ErrorNumberOf(DWORD systemError) noexcept;

[[noreturn]] void ThrowSystemError(DWORD systemError);

// Of the call that has just failed on this thread.
[[noreturn]] void ThrowLastError();

// Makes errors of drives return as error codes; otherwise the system shows a message box of its own and asks
// for the medium of an empty drive. It affects this thread only, not the games that the program starts.
void SuppressDriveMessages() noexcept;

// The system's own text for an error code, followed by the code in brackets; for the log.
std::string SystemErrorText(DWORD systemError);

} // namespace quarn
