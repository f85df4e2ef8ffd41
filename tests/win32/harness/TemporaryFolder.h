#pragma once

#include "win32/WindowsHeaders.h"

#include <filesystem>
#include <stdexcept>
#include <string>

namespace quarn {

// An empty folder of its own for each test, gone with everything in it when the test ends.
class TemporaryFolder {
  public:
    TemporaryFolder() {
        char base[MAX_PATH + 1];
        GetTempPathA(sizeof base, base);
        path_ = std::string(base) + "quarn-test-" + std::to_string(GetCurrentProcessId());
        std::filesystem::remove_all(path_); // of a process that crashed under this number
        if (!CreateDirectoryA(path_.c_str(), nullptr))
            throw std::runtime_error("no temporary folder: " + path_);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::string& Path() const noexcept { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "\\" + name; }

    std::size_t EntryCount() const {
        return std::distance(std::filesystem::directory_iterator(path_),
                             std::filesystem::directory_iterator());
    }

  private:
    std::string path_;
};

} // namespace quarn
