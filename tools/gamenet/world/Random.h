#pragma once

// Repeatable random numbers: every draw follows from the seed and from counters, never from the time, so that
// two runs with the same seed are the same network.

#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <utility>

namespace quarn::gamenet {

// One SplitMix64 step (Steele, Lea, Flood: "Fast splittable pseudorandom number generators", 2014).
constexpr std::uint64_t SplitMix(std::uint64_t state) {
    state += 0x9E3779B97F4A7C15U;
    state = (state ^ state >> 30) * 0xBF58476D1CE4E5B9U;
    state = (state ^ state >> 27) * 0x94D049BB133111EBU;
    return state ^ state >> 31;
}

class Random {
  public:
    // The draws belong to this combination of seed and counters.
    Random(std::initializer_list<std::uint64_t> keys) {
        for (const std::uint64_t key : keys)
            state_ = SplitMix(state_ ^ key);
    }

    std::uint64_t Next() { return state_ = SplitMix(state_); }

    // 0 <= result < count; count must be above 0.
    std::size_t Below(std::size_t count) { return static_cast<std::size_t>(Next() % count); }

    int Between(int low, int high) {
        return low + static_cast<int>(Below(static_cast<std::size_t>(high - low) + 1));
    }

    // 0 <= result < 1
    double Fraction() { return static_cast<double>(Next() >> 11) * 0x1p-53; }

    bool Chance(double percent) { return Fraction() * 100 < percent; }

    template<class Range>
    const auto& OneOf(const Range& choices) {
        return choices[Below(std::size(choices))];
    }

    template<class Range>
    void Shuffle(Range& items) {
        for (std::size_t count = std::size(items); count > 1; --count)
            std::swap(items[count - 1], items[Below(count)]);
    }

  private:
    std::uint64_t state_ = 0;
};

} // namespace quarn::gamenet
