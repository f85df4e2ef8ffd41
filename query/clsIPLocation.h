#pragma once

// Country of an IPv4 address, from the range file "countryip.dat" in the program's folder.
//
// The file is text: the number N of ranges on the first line, then N lines "from;to;country" with the first
// and last address of a range as unsigned decimal numbers (a.b.c.d is a*2^24 + b*2^16 + c*2^8 + d). Lines
// beyond the N-th are not read. The search is linear in file order: the earlier of two overlapping ranges
// wins.
//
// InitDatabase and GetIPCountry leave their errors to the caller's trap.

#include "desktop/Files.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

class clsIPLocation {
  public:
    clsIPLocation(const Files& files, std::string databasePath);

    // Errors: 53 no file, 13 not a number, 6 a number too large, 62 fewer lines than announced or none
    // announced, 9 a line with fewer than three fields. The database then counts as not loaded.
    void InitDatabase();

    // The code of the first range that contains the address, or "--". Error 13 for a part that is not a
    // number, 6 for one too large, 9 for an address of fewer than four parts, or if the database was
    // released.
    std::string GetIPCountry(std::string_view IPAddress) const;

    // Releases the ranges; the range count keeps its value, so that callers must check Initialized first.
    void DestroyDatabase();

    bool Initialized() const noexcept { return initialized_; }

  private:
    // The ranges in file order. Each bound has its own array, which the search reads at memory speed. Both
    // arrays are padded to whole blocks with empty ranges.
    struct RangeTable {
        std::vector<std::int32_t> from; // ordered addresses, see clsIPLocation.cpp
        std::vector<std::int32_t> to;
        std::vector<std::uint32_t> country; // index into countryNames
        std::vector<std::string> countryNames;
    };
    static RangeTable ReadRanges(std::string_view lines, std::int32_t count);

    const Files& files_;
    std::string path_;
    RangeTable ranges_;
    std::int32_t rangeCount_ = 0;
    bool initialized_ = false;
};

} // namespace quarn
