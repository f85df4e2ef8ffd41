#pragma once

// Whole files, as byte strings. A failure is a RunTimeError with the classic number of its cause
// (53 file not found, 70 permission denied, 61 disk full, 76 path not found ...).

#include <string>
#include <string_view>

namespace quarn {

class Files {
  public:
    virtual ~Files() = default;

    // Folder of the executable, with or without a trailing backslash.
    virtual std::string ProgramFolder() const = 0;

    virtual std::string Read(const std::string& path) const = 0;

    // Replaces the file as one step: written beside it and then moved over it. A reader, or a crash at
    // any moment, finds the old file or the new one.
    virtual void Replace(const std::string& path, std::string_view content) = 0;

    // Truncates or creates the file and writes into it.
    virtual void Write(const std::string& path, std::string_view content) = 0;

    // Writes at the end of the file; creates it when missing.
    virtual void Append(const std::string& path, std::string_view content) = 0;

    // An existing target is replaced.
    virtual void Copy(const std::string& from, const std::string& to) = 0;

    // Moves a file over an existing one in one step.
    virtual void Move(const std::string& from, const std::string& to) = 0;

    virtual void Remove(const std::string& path) = 0;

    // True for a file, false for a folder or nothing.
    virtual bool IsFile(const std::string& path) const = 0;

    // True when at least one file matches the pattern ("*" and "?" in its last component).
    virtual bool AnyMatch(const std::string& pattern) const = 0;
};

} // namespace quarn
