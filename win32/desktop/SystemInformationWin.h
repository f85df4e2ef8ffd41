#pragma once

#include "desktop/SystemInformation.h"
#include "win32/Handles.h"

namespace quarn {

class SystemInformationWin final : public SystemInformation {
  public:
    OsVersion WindowsVersion() const override;
    DllVersion ShellLightWeightVersion() const override;
    std::string DirectXVersion() const override;
    std::string LanguageName() const override;
    MemoryStatus Memory() const override;
    void InitCommonControls(std::uint32_t recordSize, std::uint32_t classes) override;

    // Claims the title for this process in the user's session, while the object exists.
    bool AlreadyRunning(const std::string& title) override;
    void ShowRunningInstance() override;

  private:
    KernelObject instanceMutex_;
};

} // namespace quarn
