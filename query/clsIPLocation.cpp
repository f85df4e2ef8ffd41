#include "query/clsIPLocation.h"

#include "base/Conversions.h"
#include "base/LineReader.h"
#include "core/modDefinitions.h"
#include "core/modStringHelper.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <utility>

namespace quarn {

namespace {

constexpr std::size_t AddressParts = 4;

// A multiple of every vector register's width, so that the compiler vectorises the search.
constexpr std::size_t BlockSize = 64;

// The shortest line of a range, "0;0;" and its end; the last line may lack its end.
constexpr std::size_t MinLineLength = 5;

// Maps an unsigned address to a signed integer with the same ordering; SIMD compares are signed.
constexpr std::int32_t OrderedAddress(std::uint32_t address) noexcept {
    return std::bit_cast<std::int32_t>(address ^ 0x8000'0000U);
}

constexpr std::int32_t NoFrom = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t NoTo = std::numeric_limits<std::int32_t>::min();

std::string_view PartAt(const std::vector<std::string_view>& parts, std::size_t index) {
    if (index >= parts.size())
        throw RunTimeError(ErrorNumber::SubscriptOutOfRange);
    return parts[index];
}

// Writes the parts as hexadecimal digits, at least two each, one after another, and reads the last eight of
// them: so a part above 255 changes the parts before it.
std::uint32_t IPToNumber(std::string_view address) {
    const std::vector<std::string_view> parts = Split(address, '.');
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < AddressParts; ++i) {
        const std::uint32_t part = std::bit_cast<std::uint32_t>(ToLong(PartAt(parts, i)));
        const int digits = std::max(2, (static_cast<int>(std::bit_width(part)) + 3) / 4);
        number = number << (4 * digits) | part;
    }
    return static_cast<std::uint32_t>(number);
}

// A bound as a fixed-point number: a count of ten-thousandths in 64 bits.
constexpr std::int64_t FixedPointUnit = 10'000;

std::int64_t ToFixedPoint(std::string_view text) {
    constexpr std::size_t SafeDigits = 14;
    std::int64_t whole = 0;
    const char* const end = text.data() + text.size();
    if (text.size() <= SafeDigits && std::from_chars(text.data(), end, whole).ptr == end && !text.empty())
        return whole * FixedPointUnit;

    const double scaled = std::nearbyint(ToDouble(text) * FixedPointUnit);
    if (!(std::abs(scaled) < 9'223'372'036'854'775'808.0)) // 2^63
        throw RunTimeError(ErrorNumber::Overflow);
    return static_cast<std::int64_t>(scaled);
}

struct Bounds {
    std::int32_t from;
    std::int32_t to;
};

// The whole addresses between two fixed-point numbers. Addresses are whole numbers, so the range contains no
// others.
Bounds AddressesBetween(std::int64_t from, std::int64_t to) noexcept {
    constexpr std::int64_t Highest = std::numeric_limits<std::uint32_t>::max();
    const std::int64_t first = from <= 0 ? 0 : from / FixedPointUnit + (from % FixedPointUnit != 0 ? 1 : 0);
    const std::int64_t last = std::min(to / FixedPointUnit, Highest);
    if (to < 0 || first > last)
        return {NoFrom, NoTo};
    return {OrderedAddress(static_cast<std::uint32_t>(first)),
            OrderedAddress(static_cast<std::uint32_t>(last))};
}

// Counts hits instead of breaking out early, so that the compiler can vectorise the loop.
bool BlockHolds(const std::int32_t* from, const std::int32_t* to, std::int32_t address) noexcept {
    std::size_t held = 0;
    for (std::size_t i = 0; i < BlockSize; ++i)
        held += (from[i] <= address) & (address <= to[i]);
    return held != 0;
}

// Each name once, in the order of appearance.
class NameTable {
  public:
    explicit NameTable(std::vector<std::string>& names) : names_(names) {}

    std::uint32_t IndexOf(std::string_view name) {
        const auto [entry, added] = indexes_.try_emplace(name, static_cast<std::uint32_t>(names_.size()));
        if (added)
            names_.emplace_back(name);
        return entry->second;
    }

  private:
    std::vector<std::string>& names_;
    std::unordered_map<std::string_view, std::uint32_t> indexes_;
};

} // namespace

clsIPLocation::clsIPLocation(const Files& files, std::string databasePath)
    : files_(files), path_(std::move(databasePath)) {}

void clsIPLocation::InitDatabase() {
    DestroyDatabase();
    const std::string content = files_.Read(path_);
    LineReader lines(content);
    rangeCount_ = ToLong(lines.ReadLine());
    ranges_ = ReadRanges(lines.Rest(), rangeCount_);
    initialized_ = true;
}

clsIPLocation::RangeTable clsIPLocation::ReadRanges(std::string_view content, std::int32_t count) {
    // A count that the text cannot contain must not size memory.
    if (count < 1 || static_cast<std::size_t>(count) > (content.size() + 1) / MinLineLength)
        throw RunTimeError(ErrorNumber::InputPastEndOfFile);

    RangeTable ranges;
    const std::size_t size = static_cast<std::size_t>(count);
    const std::size_t paddedSize = (size + BlockSize - 1) / BlockSize * BlockSize;
    ranges.from.resize(paddedSize, NoFrom);
    ranges.to.resize(paddedSize, NoTo);
    ranges.country.reserve(size);

    NameTable names(ranges.countryNames);
    LineReader lines(content);
    for (std::size_t i = 0; i < size; ++i) {
        const std::vector<std::string_view> fields = Split(lines.ReadLine(), ';');
        const std::int64_t from = ToFixedPoint(PartAt(fields, 0));
        const std::int64_t to = ToFixedPoint(PartAt(fields, 1));
        ranges.country.push_back(names.IndexOf(PartAt(fields, 2)));
        const Bounds bounds = AddressesBetween(from, to);
        ranges.from[i] = bounds.from;
        ranges.to[i] = bounds.to;
    }
    return ranges;
}

std::string clsIPLocation::GetIPCountry(std::string_view IPAddress) const {
    const std::int32_t address = OrderedAddress(IPToNumber(IPAddress));
    if (!initialized_ && rangeCount_ >= 1)
        throw RunTimeError(ErrorNumber::SubscriptOutOfRange);

    const std::int32_t* const from = ranges_.from.data();
    const std::int32_t* const to = ranges_.to.data();
    for (std::size_t block = 0; block < ranges_.from.size(); block += BlockSize) {
        if (!BlockHolds(from + block, to + block, address))
            continue;
        std::size_t range = block;
        while (from[range] > address || to[range] < address)
            ++range;
        return ranges_.countryNames[ranges_.country[range]];
    }
    return UnknownCountry;
}

void clsIPLocation::DestroyDatabase() {
    ranges_ = {};
    initialized_ = false;
}

} // namespace quarn
