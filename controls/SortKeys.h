#pragma once

// The keys by which rows are put into order: one for each row, from the first on. Keys compare as unsigned
// bytes, and a key that another one begins with comes before it. All of them lie in one piece of memory, so
// that a hundred thousand cost neither an allocation each nor a walk through memory at every comparison.

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

    // The keys' numbers, from 0, in their order; equal keys keep theirs, in either direction.
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
