#pragma once

// INI files with the semantics of the platform's private-profile calls: section and key names without
// case; a missing file, section or key gives the default; a present number is the value of its leading
// digits; quotes and blanks around a value are stripped; the first of duplicate keys counts. A file that
// cannot be read counts as missing: Files::ReadIfThere tells the two apart.

#include <cstddef>
#include <cstdint>
#include <string>

namespace quarn {

// Size of the buffer for every text of the definitions and settings: 254 characters and a NUL.
inline constexpr std::size_t ProfileTextSize = 255;

class ProfileFiles {
  public:
    virtual ~ProfileFiles() = default;

    virtual std::int32_t ReadInteger(const std::string& path, const std::string& section,
                                     const std::string& key, std::int32_t missing) const = 0;

    // At most `bufferSize` - 1 characters are returned. The default is the empty text.
    virtual std::string ReadText(const std::string& path, const std::string& section, const std::string& key,
                                 std::size_t bufferSize) const = 0;

    // Creates the file, the section and the key as needed and replaces an existing value in place. False if
    // the file could not be written, but this is not reliable: on a full disk the system may truncate the
    // file and return success. Waits for a file that another program holds, like Files.
    virtual bool WriteText(const std::string& path, const std::string& section, const std::string& key,
                           const std::string& value) = 0;

    // A missing key, section or file is not an error. The result is that of WriteText.
    virtual bool RemoveKey(const std::string& path, const std::string& section, const std::string& key) = 0;

    // Drops the system's cached content of the file, so that the next read returns what is on the disk.
    virtual void Forget(const std::string& path) = 0;
};

} // namespace quarn
