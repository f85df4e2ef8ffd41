#pragma once

#include "desktop/PeerPrograms.h"
#include "win32/OwnerWindow.h"

namespace quarn {

class PeerProgramsWin final : public PeerPrograms {
  public:
    explicit PeerProgramsWin(const OwnerWindow& owner) noexcept : owner_(owner) {}

    // Returns at once if the window is hung, and after 3 s if it is slow.
    void SendCopyDataTo(const std::string& windowTitle, std::uint32_t identifier,
                        std::string_view payload) override;
    FileVersion VersionOf(const std::string& path) const override;

  private:
    const OwnerWindow& owner_;
};

} // namespace quarn
