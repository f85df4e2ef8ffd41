#pragma once

// Whole files, as byte strings. A failure is a RunTimeError with the classic number of its cause
// (53 file not found, 70 permission denied, 61 disk full, 76 path not found ...). Only 53 means that there is
// no such file.
//
// Other programs, virus scanners above all, hold a file for a moment. Each call waits for such a file, for
// about half a second in all, and no events run meanwhile; then it fails. Write and Append do not wait for a
// file for which they waited in vain, until one of them has succeeded.

#include "base/RunTimeError.h"

#include <optional>
#include <string>
#include <string_view>

namespace quarn {

class Files {
  public:
    virtual ~Files() = default;

    // Folder of the executable, with or without a trailing backslash. Error 52 when it has no name in the
    // system's code page.
    virtual std::string ProgramFolder() const = 0;

    // Nothing when there is no such file. Any other failure is an error: the file may well be there, on a
    // drive that is away for the moment or held by another program.
    virtual std::optional<std::string> ReadIfThere(const std::string& path) const = 0;

    // Error 53 when there is no such file.
    std::string Read(const std::string& path) const {
        if (auto content = ReadIfThere(path))
            return *std::move(content);
        throw RunTimeError(ErrorNumber::FileNotFound);
    }

    // Replaces the file as one step: written next to it, flushed to the disk and then moved over it. A
    // reader, or a crash at any moment, finds the old file or the new one.
    virtual void Replace(const std::string& path, std::string_view content) = 0;

    // The same under a name that must be free. False if there is a file or folder of that name, which stays
    // as it is.
    virtual bool WriteNew(const std::string& path, std::string_view content) = 0;

    // Truncates or creates the file and writes into it.
    virtual void Write(const std::string& path, std::string_view content) = 0;

    // Writes at the end of the file; creates it when missing.
    virtual void Append(const std::string& path, std::string_view content) = 0;

    // Flushes a file to the disk and moves it over an existing one, as one step.
    virtual void Move(const std::string& from, const std::string& to) = 0;

    // Also a write-protected file.
    virtual void Remove(const std::string& path) = 0;

    // True for a file, false for a folder or nothing.
    virtual bool IsFile(const std::string& path) const = 0;

    // True when at least one file matches the pattern ("*" and "?" in its last component).
    virtual bool AnyMatch(const std::string& pattern) const = 0;
};

} // namespace quarn
