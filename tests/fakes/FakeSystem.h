#pragma once

// System facts as a test sets them. A fact without a value throws, like one that cannot be determined.

#include "base/RunTimeError.h"
#include "desktop/SystemInformation.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quarn {

class FakeSystem : public SystemInformation {
  public:
    std::optional<OsVersion> windows = OsVersion{{10, 0, 19045}, ""};
    std::optional<DllVersion> shellLightWeight = DllVersion{11, 0, 19041};
    std::optional<std::string> directX = "4.09.00.0904";
    std::optional<std::string> language = "English (United States)";
    std::optional<MemoryStatus> memory = MemoryStatus{};

    bool alreadyRunning = false;
    std::vector<std::string> instancesAskedFor;
    int instancesShown = 0;

    std::vector<std::pair<std::uint32_t, std::uint32_t>> controlsInitialised; // record size and classes
    std::optional<ErrorNumber> controlsFault;
    std::function<void()> whileInitialisingControls;

    OsVersion WindowsVersion() const override { return Known(windows); }
    DllVersion ShellLightWeightVersion() const override { return Known(shellLightWeight); }
    std::string DirectXVersion() const override { return Known(directX); }
    std::string LanguageName() const override { return Known(language); }
    MemoryStatus Memory() const override { return Known(memory); }

    void InitCommonControls(std::uint32_t recordSize, std::uint32_t classes) override {
        controlsInitialised.emplace_back(recordSize, classes);
        if (whileInitialisingControls)
            whileInitialisingControls();
        if (controlsFault)
            throw RunTimeError(*controlsFault);
    }
    bool AlreadyRunning(const std::string& title) override {
        instancesAskedFor.push_back(title);
        return alreadyRunning;
    }
    void ShowRunningInstance() override { ++instancesShown; }

  private:
    template<class Fact>
    static Fact Known(const std::optional<Fact>& fact) {
        if (!fact)
            throw RunTimeError(ErrorNumber::InvalidProcedureCall);
        return *fact;
    }
};

} // namespace quarn
