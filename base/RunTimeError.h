#pragma once

// The one exception type that the program throws on purpose: a numbered run-time error with the classic text
// for its number. Routines throw it; their trap (support/Trap.h) catches it and writes it to the log.

#include <cstdint>
#include <exception>

namespace quarn {

// Numbers as they appear in the log.
enum class ErrorNumber : std::int32_t {
    InvalidProcedureCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    DivisionByZero = 11,
    TypeMismatch = 13,
    InternalError = 51,
    BadFileName = 52,
    FileNotFound = 53,
    FileAlreadyOpen = 55,
    DeviceIOError = 57,
    DiskFull = 61,
    InputPastEndOfFile = 62,
    TooManyFiles = 67,
    DeviceUnavailable = 68,
    PermissionDenied = 70,
    DiskNotReady = 71,
    PathFileAccessError = 75,
    PathNotFound = 76,
    ObjectVariableNotSet = 91,
    InvalidPropertyValue = 380,
    CannotOpenClipboard = 521,
    IndexOutOfBounds = 35600,
    ElementNotFound = 35601,
    KeyNotUnique = 35602,
};

// The text that belongs to a number.
const char* DescriptionOf(ErrorNumber number) noexcept;

class RunTimeError : public std::exception {
  public:
    explicit RunTimeError(ErrorNumber number) : number_(number) {}

    std::int32_t Number() const noexcept { return static_cast<std::int32_t>(number_); }
    ErrorNumber Kind() const noexcept { return number_; }
    const char* what() const noexcept override { return DescriptionOf(number_); }

  private:
    ErrorNumber number_;
};

} // namespace quarn
