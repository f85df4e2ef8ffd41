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

    // Sends a copy-data record from the main window to the top-level window with exactly this title; nothing
    // happens if there is none. The payload is sent as it is; the caller includes the terminating NUL.
    virtual void SendCopyDataTo(const std::string& windowTitle, std::uint32_t identifier,
                                std::string_view payload) = 0;

    // Error 53 if the file does not exist, 5 if it has no version resource.
    virtual FileVersion VersionOf(const std::string& path) const = 0;
};

} // namespace quarn
