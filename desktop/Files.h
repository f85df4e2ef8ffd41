#pragma once

// Whole files, as byte strings. A failure is a RunTimeError with the classic number of its cause (53 file not
// found, 70 permission denied, 61 disk full, 76 path not found ...). Only 53 means that the file does not
// exist.
//
// Other programs, mostly virus scanners, hold a file for a moment. Each call waits for such a file, for about
// half a second in all, during which no events run; then it fails. After a wait that failed, Write and Append
// do not wait for this file again until one of them has succeeded.

#include "base/RunTimeError.h"

#include <optional>
#include <string>
#include <string_view>

namespace quarn {

class Files {
  public:
    virtual ~Files() = default;

    // Folder of the executable, with or without a trailing backslash. Error 52 if it has no name in the
    // system's code page.
    virtual std::string ProgramFolder() const = 0;

    // Nothing if the file does not exist. Any other failure is an error: the file may exist on a drive that
    // is not connected, or another program may hold it.
    virtual std::optional<std::string> ReadIfThere(const std::string& path) const = 0;

    // Error 53 if the file does not exist.
    std::string Read(const std::string& path) const {
        if (auto content = ReadIfThere(path))
            return *std::move(content);
        throw RunTimeError(ErrorNumber::FileNotFound);
    }

    // Replaces the file in one step: the content is written to a temporary file, flushed to the disk and
    // moved over the file. A reader, or a crash at any moment, finds the old file or the new one.
    virtual void Replace(const std::string& path, std::string_view content) = 0;

    // The same for a name that must be free. False if a file or folder of that name exists; it is not
    // changed.
    virtual bool WriteNew(const std::string& path, std::string_view content) = 0;

    // Truncates or creates the file and writes into it.
    virtual void Write(const std::string& path, std::string_view content) = 0;

    // Writes at the end of the file; creates it when missing.
    virtual void Append(const std::string& path, std::string_view content) = 0;

    // Flushes a file to the disk and moves it over an existing one, as one step.
    virtual void Move(const std::string& from, const std::string& to) = 0;

    // Removes write-protected files, too.
    virtual void Remove(const std::string& path) = 0;

    // True for a file, false for a folder or nothing.
    virtual bool IsFile(const std::string& path) const = 0;

    // True when at least one file matches the pattern ("*" and "?" in its last component).
    virtual bool AnyMatch(const std::string& pattern) const = 0;
};

} // namespace quarn
