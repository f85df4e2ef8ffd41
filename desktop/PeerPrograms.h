#pragma once

// Other programs on this desktop: their windows and their version resources.

#include <cstdint>
#include <string>
#include <string_view>

namespace quarn {

struct FileVersion {
    std::uint16_t major = 0;
    std::uint16_t minor = 0;
    std::uint16_t build = 0;
};

class PeerPrograms {
  public:
    virtual ~PeerPrograms() = default;

    // Sends a copy-data record from the main window to the top-level window of exactly this title; nothing
    // happens when there is none. The payload goes as it is, its terminating NUL included by the caller.
    virtual void SendCopyDataTo(const std::string& windowTitle, std::uint32_t identifier,
                                std::string_view payload) = 0;

    // Error 53 when there is no such file, 5 when it has no version resource.
    virtual FileVersion VersionOf(const std::string& path) const = 0;
};

} // namespace quarn
