#include "base/RunTimeError.h"

namespace quarn {

const char* DescriptionOf(ErrorNumber number) noexcept {
    switch (number) {
    case ErrorNumber::InvalidProcedureCall:
        return "Invalid procedure call or argument";
    case ErrorNumber::Overflow:
        return "Overflow";
    case ErrorNumber::OutOfMemory:
        return "Out of memory";
    case ErrorNumber::SubscriptOutOfRange:
        return "Subscript out of range";
    case ErrorNumber::DivisionByZero:
        return "Division by zero";
    case ErrorNumber::TypeMismatch:
        return "Type mismatch";
    case ErrorNumber::InternalError:
        return "Internal error";
    case ErrorNumber::BadFileName:
        return "Bad file name or number";
    case ErrorNumber::FileNotFound:
        return "File not found";
    case ErrorNumber::FileAlreadyOpen:
        return "File already open";
    case ErrorNumber::DeviceIOError:
        return "Device I/O error";
    case ErrorNumber::DiskFull:
        return "Disk full";
    case ErrorNumber::InputPastEndOfFile:
        return "Input past end of file";
    case ErrorNumber::TooManyFiles:
        return "Too many files";
    case ErrorNumber::DeviceUnavailable:
        return "Device unavailable";
    case ErrorNumber::PermissionDenied:
        return "Permission denied";
    case ErrorNumber::DiskNotReady:
        return "Disk not ready";
    case ErrorNumber::PathFileAccessError:
        return "Path/File access error";
    case ErrorNumber::PathNotFound:
        return "Path not found";
    case ErrorNumber::ObjectVariableNotSet:
        return "Object variable not set";
    case ErrorNumber::InvalidPropertyValue:
        return "Invalid property value";
    case ErrorNumber::CannotOpenClipboard:
        return "Can't open Clipboard";
    case ErrorNumber::IndexOutOfBounds:
        return "Index out of bounds";
    case ErrorNumber::ElementNotFound:
        return "Element not found";
    case ErrorNumber::KeyNotUnique:
        return "Key is not unique in collection";
    }
    return "Application-defined or object-defined error";
}

} // namespace quarn
