#pragma once

// A list with slots 0..N that is used from 1 to N; slot 0 exists and stays empty. Every access is checked: an
// index outside 0..N is run-time error 9, so that a parser that steps past the last slot causes a logged
// error and never reads other memory.

#include "base/RunTimeError.h"

#include <cstdint>
#include <vector>

namespace quarn {

template<class T>
class OneBased {
  public:
    OneBased() = default;
    explicit OneBased(std::int32_t highestIndex) { Reset(highestIndex); }

    std::int32_t HighestIndex() const noexcept { return static_cast<std::int32_t>(slots_.size()); }

    // Sizes the list to 0..highestIndex, all slots empty.
    void Reset(std::int32_t highestIndex = 0) {
        zero_ = T();
        slots_.clear();
        Resize(highestIndex);
    }

    // Resizes the list to 0..highestIndex; slots that still exist keep their content.
    void Resize(std::int32_t highestIndex) {
        if (highestIndex < 0)
            throw RunTimeError(ErrorNumber::SubscriptOutOfRange);
        slots_.resize(static_cast<std::size_t>(highestIndex));
    }

    T& operator[](std::int32_t index) { return index == 0 ? zero_ : slots_[Checked(index)]; }
    const T& operator[](std::int32_t index) const { return index == 0 ? zero_ : slots_[Checked(index)]; }

    bool Holds(std::int32_t index) const noexcept { return index >= 1 && index <= HighestIndex(); }

  private:
    // Position of a slot from 1 on.
    std::size_t Checked(std::int32_t index) const {
        if (!Holds(index))
            throw RunTimeError(ErrorNumber::SubscriptOutOfRange);
        return static_cast<std::size_t>(index) - 1;
    }

    // Slot 0 is stored separately, so that an empty list takes no memory. Every server record has one.
    T zero_{};
    std::vector<T> slots_;
};

} // namespace quarn
