// Chance that repeats: every draw follows from the seed and from counters, never from the time, so that
// two runs with one seed are the same network.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <utility>

namespace quarn::gamenet {

// One SplitMix64 step (Steele, Lea, Flood: "Fast splittable pseudorandom number generators", 2014).
constexpr std::uint64_t splitMix(std::uint64_t state) {
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
            state_ = splitMix(state_ ^ key);
    }

    std::uint64_t next() { return state_ = splitMix(state_); }

    // 0 <= result < count; count must be above 0.
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(next() % count); }

    int between(int low, int high) {
        return low + static_cast<int>(below(static_cast<std::size_t>(high - low) + 1));
    }

    // 0 <= result < 1
    double fraction() { return static_cast<double>(next() >> 11) * 0x1p-53; }

    bool chance(double percent) { return fraction() * 100 < percent; }

    template<class Range>
    const auto& oneOf(const Range& choices) {
        return choices[below(std::size(choices))];
    }

    template<class Range>
    void shuffle(Range& items) {
        for (std::size_t count = std::size(items); count > 1; --count)
            std::swap(items[count - 1], items[below(count)]);
    }

  private:
    std::uint64_t state_ = 0;
};

} // namespace quarn::gamenet
