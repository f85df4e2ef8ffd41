#pragma once

// From the system's error codes to the program's numbered run-time errors.

#include "base/RunTimeError.h"
#include "win32/WindowsHeaders.h"

#include <string>

namespace quarn {

// The number that names a file error of the system; 57, device I/O error, for what has no better name.
ErrorNumber ErrorNumberOf(DWORD systemError) noexcept;

[[noreturn]] void ThrowSystemError(DWORD systemError);

// Of the call that has just failed on this thread.
[[noreturn]] void ThrowLastError();

// Makes errors of drives come back as error codes: the system would ask, in a message box of its own, for the
// medium of an empty drive. Applies to this thread alone, so that the games that the program starts are not
// affected.
void SuppressDriveMessages() noexcept;

// The system's own sentence on an error code, followed by the code in brackets; for the log.
std::string SystemErrorText(DWORD systemError);

} // namespace quarn
