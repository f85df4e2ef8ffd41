#pragma once

#include "desktop/Files.h"
#include "win32/WindowsHeaders.h"

#include <set>
#include <string>
#include <string_view>

namespace quarn {

// Whole files through the system's own calls, in binary.
class FilesWin final : public Files {
  public:
    std::string ProgramFolder() const override;
    std::optional<std::string> ReadIfThere(const std::string& path) const override;
    void Replace(const std::string& path, std::string_view content) override;
    bool WriteNew(const std::string& path, std::string_view content) override;
    void Write(const std::string& path, std::string_view content) override;
    void Append(const std::string& path, std::string_view content) override;
    void Move(const std::string& from, const std::string& to) override;
    void Remove(const std::string& path) override;
    bool IsFile(const std::string& path) const override;

    // Hidden and system files do not count.
    bool AnyMatch(const std::string& pattern) const override;

  private:
    void WriteInto(const std::string& path, DWORD access, DWORD share, DWORD disposition,
                   std::string_view content);

    std::set<std::string> waitedInVain_; // by Write or Append, which do not wait for these files again
};

} // namespace quarn
