#pragma once

// Facts about the system for error reports. Each getter may throw; the caller leaves its item empty.

#include <cstdint>
#include <string>

namespace quarn {

struct DllVersion {
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t build = 0;
};

struct OsVersion {
    DllVersion number;
    std::string servicePack; // may contain NULs after its text
};

struct MemoryStatus {
    std::uint64_t availablePhysical = 0; // bytes, as all
    std::uint64_t totalPhysical = 0;
    std::uint64_t availableVirtual = 0;
    std::uint64_t totalVirtual = 0;
};

class SystemInformation {
  public:
    virtual ~SystemInformation() = default;

    virtual OsVersion WindowsVersion() const = 0;
    virtual DllVersion ShellLightWeightVersion() const = 0; // shlwapi.dll: its version is the browser's
    virtual std::string DirectXVersion() const = 0;
    virtual std::string LanguageName() const = 0;
    virtual MemoryStatus Memory() const = 0;

    // Initialises the platform's common controls with a record of the given size and the class flags.
    virtual void InitCommonControls(std::uint32_t recordSize, std::uint32_t classes) = 0;

    // True if another instance of the program with this title is running.
    virtual bool AlreadyRunning(const std::string& title) = 0;

    // Asks that instance to show its window.
    virtual void ShowRunningInstance() = 0;
};

} // namespace quarn
