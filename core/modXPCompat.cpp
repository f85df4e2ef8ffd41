#include "core/modXPCompat.h"

#include "base/Succeeds.h"

namespace quarn {

namespace {

constexpr std::uint32_t ControlsRecordSize = 8;
constexpr std::uint32_t ExtendedComboBoxClass = 0x200;

} // namespace

void InitCommonControlsVB(SystemInformation& system) noexcept {
    // Without the library's newer classes the controls still work, in the classic style.
    Succeeds([&] { system.InitCommonControls(ControlsRecordSize, ExtendedComboBoxClass); });
}

} // namespace quarn
