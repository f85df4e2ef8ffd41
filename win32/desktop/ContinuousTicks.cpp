#include "win32/desktop/ContinuousTicks.h"

#include <algorithm>

namespace quarn {

std::uint32_t ContinuousTicks::At(std::uint32_t coarse, std::int64_t fine) noexcept {
    coarseTime_ += std::int64_t{coarse - coarse_} * 1000;
    coarse_ = coarse;
    const std::int64_t advanced = time_ + std::max<std::int64_t>(fine - fine_, 0);
    fine_ = fine;
    time_ = std::max(time_, std::clamp(advanced, coarseTime_, coarseTime_ + Ahead));
    return static_cast<std::uint32_t>(time_ / 1000);
}

} // namespace quarn
