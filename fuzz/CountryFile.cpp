// A country file of any content is refused with one of the errors that a file can have, or is loaded; then,
// where its bounds are plain whole numbers, look-ups agree with a search of its lines.

#include "base/LineReader.h"
#include "base/RunTimeError.h"
#include "core/modStringHelper.h"
#include "fuzz/Require.h"
#include "query/clsIPLocation.h"
#include "tests/fakes/MemoryFiles.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quarn::fuzz {

namespace {

const std::string Path = "C:\\Quarn\\countryip.dat";
constexpr std::uint32_t Addresses[] = {0,          1,          255,        256,        0x0A000001,
                                       0x7FFFFFFF, 0x80000000, 0xC0A80101, 0xFFFFFFFE, 0xFFFFFFFF};

struct PlainRange {
    std::uint64_t from;
    std::uint64_t to;
    std::string_view country;
};

std::optional<std::uint64_t> PlainNumber(std::string_view text) {
    std::uint64_t number = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || stop != text.data() + text.size())
        return std::nullopt;
    return number;
}

// The ranges of a file that was loaded, unless a number in it is written in another way.
std::optional<std::vector<PlainRange>> PlainRanges(std::string_view content) {
    LineReader lines(content);
    const auto count = PlainNumber(lines.ReadLine());
    if (!count)
        return std::nullopt;
    std::vector<PlainRange> ranges;
    for (std::uint64_t i = 0; i < *count; ++i) {
        const std::vector<std::string_view> fields = Split(lines.ReadLine(), ';');
        const auto from = PlainNumber(fields.at(0));
        const auto to = PlainNumber(fields.at(1));
        if (!from || !to)
            return std::nullopt;
        ranges.push_back({*from, *to, fields.at(2)});
    }
    return ranges;
}

std::string CountryIn(const std::vector<PlainRange>& ranges, std::uint32_t address) {
    for (const PlainRange& range : ranges) {
        if (range.from <= address && address <= range.to)
            return std::string(range.country);
    }
    return "--";
}

std::string Dotted(std::uint32_t address) {
    return std::to_string(address >> 24) + '.' + std::to_string(address >> 16 & 255) + '.' +
           std::to_string(address >> 8 & 255) + '.' + std::to_string(address & 255);
}

void RequireLookUps(const clsIPLocation& database, const std::vector<PlainRange>& ranges) {
    for (const std::uint32_t address : Addresses)
        Require(database.GetIPCountry(Dotted(address)) == CountryIn(ranges, address),
                "a look-up by its lines");
    for (const PlainRange& range : ranges) {
        for (const std::uint64_t bound : {range.from - 1, range.from, range.to, range.to + 1}) {
            const auto address = static_cast<std::uint32_t>(bound);
            Require(database.GetIPCountry(Dotted(address)) == CountryIn(ranges, address),
                    "a look-up at a bound");
        }
    }
}

bool IsErrorOfAFile(ErrorNumber error) {
    return error == ErrorNumber::TypeMismatch || error == ErrorNumber::Overflow ||
           error == ErrorNumber::InputPastEndOfFile || error == ErrorNumber::SubscriptOutOfRange;
}

} // namespace

} // namespace quarn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quarn;
    using namespace quarn::fuzz;
    const std::string content(reinterpret_cast<const char*>(data), size);
    MemoryFiles files;
    files.Put(Path, content);
    clsIPLocation database(files, Path);
    try {
        database.InitDatabase();
    } catch (const RunTimeError& error) {
        Require(IsErrorOfAFile(error.Kind()), "an error that a file can have");
        Require(!database.Initialized(), "a file refused is no database");
        return 0;
    }
    Require(database.Initialized(), "a file loaded is a database");
    if (const auto ranges = PlainRanges(content))
        RequireLookUps(database, *ranges);
    return 0;
}
