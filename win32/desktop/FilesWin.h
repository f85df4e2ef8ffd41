#pragma once

#include "desktop/Files.h"

namespace quarn {

// Whole files through the system's own calls, in binary. Stateless.
class FilesWin final : public Files {
  public:
    std::string ProgramFolder() const override;
    std::string Read(const std::string& path) const override;
    void Replace(const std::string& path, std::string_view content) override;
    void Write(const std::string& path, std::string_view content) override;
    void Append(const std::string& path, std::string_view content) override;
    void Copy(const std::string& from, const std::string& to) override;
    void Move(const std::string& from, const std::string& to) override;
    void Remove(const std::string& path) override;
    bool IsFile(const std::string& path) const override;

    // Hidden and system files do not count.
    bool AnyMatch(const std::string& pattern) const override;
};

} // namespace quarn
