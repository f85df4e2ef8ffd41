#pragma once

// Files in memory, with faults on demand. Paths compare without case, as on Windows. Folders exist only where
// a test puts them, to be distinguished from files.

#include "base/RunTimeError.h"
#include "desktop/Files.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

class MemoryFiles : public Files {
  public:
    std::string programFolder = "C:\\Quarn\\";

    bool programFolderHasName = true; // in the code page

    std::string ProgramFolder() const override;
    std::optional<std::string> ReadIfThere(const std::string& path) const override;
    void Replace(const std::string& path, std::string_view content) override;
    bool WriteNew(const std::string& path, std::string_view content) override;
    void Write(const std::string& path, std::string_view content) override;
    void Append(const std::string& path, std::string_view content) override;
    void Move(const std::string& from, const std::string& to) override;
    void Remove(const std::string& path) override;
    bool IsFile(const std::string& path) const override;
    bool AnyMatch(const std::string& pattern) const override;

    // The test's own access: not counted and without faults. Get fails the test if the file does not exist.
    void Put(const std::string& path, std::string content);
    std::string Get(const std::string& path) const;
    bool Has(const std::string& path) const { return IsFile(path); }
    void PutFolder(const std::string& path);
    std::vector<std::string> Paths() const; // as they were written first, in alphabetical order

    // Every later read of, or change to, this path ends in the error; or the next reads only.
    void FailReads(const std::string& path, ErrorNumber error,
                   std::int32_t times = std::numeric_limits<std::int32_t>::max());
    void FailWrites(const std::string& path, ErrorNumber error);
    void ClearFaults();

    // The file can be read and removed, but not changed or replaced, until it is removed or unprotected.
    void Protect(const std::string& path);
    void Unprotect(const std::string& path);

    // Runs while a file is being changed, when the system may let events run.
    std::function<void(const std::string& path)> whileWriting;

    // Free space of the disk, in bytes; writing beyond it is error 61. A plain write leaves what fitted.
    std::optional<std::size_t> freeBytes;

    // How often the program tried to read or to change the file. A copy or move changes its target; a move or
    // removal also changes the file that it removes.
    std::int32_t Reads(const std::string& path) const;
    std::int32_t Writes(const std::string& path) const;
    std::int32_t TotalWrites() const;

  private:
    struct Stored {
        std::string path;
        std::string content;
    };

    const Stored& Existing(const std::string& path) const;
    void BeginWrite(const std::string& path);
    std::string_view TakeSpaceFor(std::string_view content);
    void FreeSpaceOf(const std::string& path);

    std::map<std::string, Stored> files_; // by the path in lower case, as all maps here
    std::set<std::string> folders_;
    struct ReadFault {
        ErrorNumber error;
        std::int32_t timesLeft;
    };

    mutable std::map<std::string, ReadFault> readFaults_;
    std::map<std::string, ErrorNumber> writeFaults_;
    std::set<std::string> protected_;
    mutable std::map<std::string, std::int32_t> reads_;
    std::map<std::string, std::int32_t> writes_;
};

} // namespace quarn
