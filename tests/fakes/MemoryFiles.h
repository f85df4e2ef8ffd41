#pragma once

// Files in memory, with faults to order. Paths compare without case, as on Windows; folders exist where a
// test says so, and only to be told from files.

#include "base/RunTimeError.h"
#include "desktop/Files.h"

#include <cstddef>
#include <cstdint>
#include <functional>
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

    std::string ProgramFolder() const override { return programFolder; }
    std::string Read(const std::string& path) const override;
    void Replace(const std::string& path, std::string_view content) override;
    void Write(const std::string& path, std::string_view content) override;
    void Append(const std::string& path, std::string_view content) override;
    void Copy(const std::string& from, const std::string& to) override;
    void Move(const std::string& from, const std::string& to) override;
    void Remove(const std::string& path) override;
    bool IsFile(const std::string& path) const override;
    bool AnyMatch(const std::string& pattern) const override;

    // The test's own access: uncounted and without faults. Get fails the test when there is no such file.
    void Put(const std::string& path, std::string content);
    std::string Get(const std::string& path) const;
    bool Has(const std::string& path) const { return IsFile(path); }
    void PutFolder(const std::string& path);
    std::vector<std::string> Paths() const; // as they were written first, in alphabetical order

    // Every later read of, or change to, this path ends in the error.
    void FailReads(const std::string& path, ErrorNumber error);
    void FailWrites(const std::string& path, ErrorNumber error);
    void ClearFaults();

    // Runs while a file is being changed, when the system may let events run.
    std::function<void(const std::string& path)> whileWriting;

    // Room left on the disk, in bytes; writing beyond it is error 61. A plain write leaves what fitted.
    std::optional<std::size_t> freeBytes;

    // How often the program set out to read or to change the file; a copy or move changes its target, a move
    // or removal also the file that goes.
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
    std::string_view TakeRoomFor(std::string_view content);
    void RequireRoomFor(std::string_view content);

    std::map<std::string, Stored> files_; // by the path in lower case, as all maps here
    std::set<std::string> folders_;
    std::map<std::string, ErrorNumber> readFaults_;
    std::map<std::string, ErrorNumber> writeFaults_;
    mutable std::map<std::string, std::int32_t> reads_;
    std::map<std::string, std::int32_t> writes_;
};

} // namespace quarn
