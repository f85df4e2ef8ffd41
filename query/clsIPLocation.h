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

    // Errors: 53 no file, 13 a number that is none, 6 a number too large, 62 fewer lines than announced or
    // none announced, 9 a line with fewer than three fields. The database then counts as not loaded.
    void InitDatabase();

    // The code of the first range that holds the address, or "--". Error 13 for a part that is no number, 6
    // for one too large, 9 for an address of fewer than four parts, or when the database was released.
    std::string GetIPCountry(std::string_view IPAddress) const;

    // Releases the ranges; the range count keeps its value, so that callers must check Initialized first.
    void DestroyDatabase();

    bool Initialized() const noexcept { return initialized_; }

  private:
    // The ranges in file order, each bound in an array of its own that the search runs through at the speed
    // of memory. Both are filled up to whole blocks with ranges that hold nothing.
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
