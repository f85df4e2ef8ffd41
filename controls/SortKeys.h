#pragma once

// The sort keys of a list's rows, one for each row, in their order. Keys compare as unsigned bytes; a key
// that is a prefix of another sorts first. All keys are in one block of memory, so that a hundred thousand
// rows need neither an allocation each nor a cache miss at every comparison.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

enum class SortOrder : std::int32_t { Ascending = 0, Descending = 1 };

class SortKeys {
  public:
    void Add(std::string_view key);
    std::int32_t Count() const noexcept { return static_cast<std::int32_t>(ends_.size()); }
    std::string_view Key(std::size_t number) const noexcept; // from 0

    // The indexes of the keys, from 0, in sorted order; equal keys keep their order, in both directions.
    std::vector<std::uint32_t> Sorted(SortOrder order) const;

  private:
    struct Entry;

    std::size_t CommonBeginning() const noexcept;
    void TakeStretches(std::size_t position, Entry* begin, Entry* end) const noexcept;
    void SortFrom(std::size_t position, int stretches, SortOrder order, Entry* begin, Entry* end) const;

    std::string bytes_;
    std::vector<std::size_t> ends_;
};

} // namespace quarn
