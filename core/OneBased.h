#pragma once

// A list with slots 0..N that is used from 1 to N; slot 0 exists and stays empty. Every access is checked:
// an index outside 0..N is run-time error 9, so that a parser that walks one past the last slot ends in a
// logged error and never in foreign memory.

#include "core/RunTimeError.h"

#include <cstdint>
#include <vector>

namespace quarn {

template<class T>
class OneBased {
  public:
    OneBased() : slots_(1) {}
    explicit OneBased(std::int32_t highestIndex) { Reset(highestIndex); }

    std::int32_t HighestIndex() const noexcept { return static_cast<std::int32_t>(slots_.size()) - 1; }

    // Sizes the list to 0..highestIndex, all slots empty.
    void Reset(std::int32_t highestIndex = 0) {
        slots_.clear();
        slots_.resize(SlotCount(highestIndex));
    }

    // Sizes the list to 0..highestIndex, keeping what fits.
    void Resize(std::int32_t highestIndex) { slots_.resize(SlotCount(highestIndex)); }

    T& operator[](std::int32_t index) { return slots_[Checked(index)]; }
    const T& operator[](std::int32_t index) const { return slots_[Checked(index)]; }

    bool Holds(std::int32_t index) const noexcept { return index >= 1 && index <= HighestIndex(); }

  private:
    static std::size_t SlotCount(std::int32_t highestIndex) {
        if (highestIndex < 0)
            throw RunTimeError(ErrorNumber::SubscriptOutOfRange);
        return static_cast<std::size_t>(highestIndex) + 1;
    }
    std::size_t Checked(std::int32_t index) const {
        if (index < 0 || static_cast<std::size_t>(index) >= slots_.size())
            throw RunTimeError(ErrorNumber::SubscriptOutOfRange);
        return static_cast<std::size_t>(index);
    }

    std::vector<T> slots_;
};

} // namespace quarn
