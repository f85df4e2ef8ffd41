#include "controls/SortKeys.h"

#include <algorithm>

namespace quarn {

namespace {

constexpr std::size_t WordSize = sizeof(std::uint64_t);
constexpr std::size_t StretchSize = 2 * WordSize;
constexpr int MostStretches = 8; // keys with a longer common prefix are compared as a whole

// The next bytes of a text as a number with the same order; shorter texts are padded with zeros.
std::uint64_t WordAt(std::string_view text, std::size_t position) noexcept {
    const std::size_t start = std::min(position, text.size());
    const std::size_t size = std::min(text.size() - start, WordSize);
    const char* const bytes = text.data() + start;
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < size; ++i)
        word = word << 8 | static_cast<unsigned char>(bytes[i]);
    return size == 0 ? 0 : word << 8 * (WordSize - size);
}

} // namespace

// The next 16 bytes of a key, stored inline in the array being sorted, and the key's index.
struct SortKeys::Entry {
    std::uint64_t first;
    std::uint64_t second;
    std::uint32_t size; // number of bytes; less than 16 only at the key's end
    std::uint32_t number;

    bool IsLike(const Entry& other) const noexcept {
        return first == other.first && second == other.second && size == other.size;
    }
    bool IsBefore(const Entry& other) const noexcept {
        if (first != other.first)
            return first < other.first;
        if (second != other.second)
            return second < other.second;
        return size < other.size;
    }
};

void SortKeys::Add(std::string_view key) {
    bytes_ += key;
    ends_.push_back(bytes_.size());
}

std::string_view SortKeys::Key(std::size_t number) const noexcept {
    const std::size_t start = number == 0 ? 0 : ends_[number - 1];
    return std::string_view(bytes_).substr(start, ends_[number] - start);
}

// Formatted numbers often begin with many zeros, names with the same word.
std::size_t SortKeys::CommonBeginning() const noexcept {
    if (ends_.empty())
        return 0;
    const std::string_view first = Key(0);
    std::size_t common = first.size();
    for (std::size_t number = 1; number < ends_.size() && common > 0; ++number) {
        const std::string_view key = Key(number).substr(0, common);
        common = static_cast<std::size_t>(std::mismatch(key.begin(), key.end(), first.begin()).first -
                                          key.begin());
    }
    return common;
}

void SortKeys::TakeStretches(std::size_t position, Entry* begin, Entry* end) const noexcept {
    for (Entry* entry = begin; entry != end; ++entry) {
        const std::string_view rest = Key(entry->number).substr(position);
        entry->first = WordAt(rest, 0);
        entry->second = WordAt(rest, WordSize);
        entry->size = static_cast<std::uint32_t>(std::min(rest.size(), StretchSize));
    }
}

// Sorts by the next bytes of the keys, whose previous bytes are equal, and equal ones recursively by the
// bytes after these.
void SortKeys::SortFrom(std::size_t position, int stretches, SortOrder order, Entry* begin,
                        Entry* end) const {
    const bool ascending = order == SortOrder::Ascending;
    if (stretches == 0) {
        std::sort(begin, end, [&](const Entry& a, const Entry& b) {
            const int difference = Key(a.number).compare(Key(b.number));
            return difference != 0 ? (difference < 0) == ascending : a.number < b.number;
        });
        return;
    }
    TakeStretches(position, begin, end);
    if (ascending)
        std::sort(begin, end, [](const Entry& a, const Entry& b) {
            return a.IsBefore(b) || (a.IsLike(b) && a.number < b.number);
        });
    else
        std::sort(begin, end, [](const Entry& a, const Entry& b) {
            return b.IsBefore(a) || (a.IsLike(b) && a.number < b.number);
        });

    while (begin != end) {
        Entry* const other = std::find_if(begin, end, [&](const Entry& e) { return !e.IsLike(*begin); });
        if (other - begin > 1 && begin->size == StretchSize)
            SortFrom(position + StretchSize, stretches - 1, order, begin, other);
        begin = other;
    }
}

std::vector<std::uint32_t> SortKeys::Sorted(SortOrder order) const {
    std::vector<Entry> entries(ends_.size());
    for (std::size_t number = 0; number < entries.size(); ++number)
        entries[number].number = static_cast<std::uint32_t>(number);
    SortFrom(CommonBeginning(), MostStretches, order, entries.data(), entries.data() + entries.size());

    std::vector<std::uint32_t> numbers;
    numbers.reserve(entries.size());
    for (const Entry& entry : entries)
        numbers.push_back(entry.number);
    return numbers;
}

} // namespace quarn
