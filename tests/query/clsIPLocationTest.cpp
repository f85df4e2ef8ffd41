#include "query/clsIPLocation.h"

#include "tests/fakes/Errors.h"
#include "tests/fakes/MemoryFiles.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace quarn {
namespace {

using namespace std::string_literals;
using enum ErrorNumber;

const std::string Path = "C:\\Quarn\\countryip.dat";

class CountryDatabase : public ::testing::Test {
  protected:
    void Load(const std::string& content) {
        files.Put(Path, content);
        database.InitDatabase();
    }
    ErrorNumber ErrorOfLoading(const std::string& content) {
        return ErrorOf([&] { Load(content); });
    }
    ErrorNumber ErrorOfLookUp(std::string_view address) {
        return ErrorOf([&] { database.GetIPCountry(address); });
    }

    MemoryFiles files;
    clsIPLocation database{files, Path};
};

TEST_F(CountryDatabase, FindsAnAddressBetweenBothBoundsInclusive) {
    Load("2\r\n167772160;184549375;XX\r\n3232235520;3232301055;yy\r\n");
    EXPECT_EQ(database.GetIPCountry("10.0.0.0"), "XX");
    EXPECT_EQ(database.GetIPCountry("10.0.0.1"), "XX");
    EXPECT_EQ(database.GetIPCountry("10.255.255.255"), "XX");
    EXPECT_EQ(database.GetIPCountry("192.168.1.2"), "yy"); // as written
    EXPECT_EQ(database.GetIPCountry("9.255.255.255"), "--");
    EXPECT_EQ(database.GetIPCountry("11.0.0.0"), "--");
}

TEST_F(CountryDatabase, KnowsTheHighestAndTheLowestAddress) {
    Load("3\n4294967295;4294967295;HI\n0;0;LO\n2147483647;2147483648;MID\n");
    EXPECT_EQ(database.GetIPCountry("255.255.255.255"), "HI");
    EXPECT_EQ(database.GetIPCountry("255.255.255.254"), "--");
    EXPECT_EQ(database.GetIPCountry("0.0.0.0"), "LO");
    EXPECT_EQ(database.GetIPCountry("0.0.0.1"), "--");
    EXPECT_EQ(database.GetIPCountry("127.255.255.255"), "MID");
    EXPECT_EQ(database.GetIPCountry("128.0.0.0"), "MID");
    EXPECT_EQ(database.GetIPCountry("128.0.0.1"), "--");
}

TEST_F(CountryDatabase, TheEarlierOfTwoOverlappingLinesWins) {
    Load("3\n100;200;A\n150;300;B\n0;1000;C\n");
    EXPECT_EQ(database.GetIPCountry("0.0.0.150"), "A");
    EXPECT_EQ(database.GetIPCountry("0.0.0.201"), "B");
    EXPECT_EQ(database.GetIPCountry("0.0.0.99"), "C");
}

TEST_F(CountryDatabase, FileOrderCountsAndNotTheOrderOfNumbers) {
    Load("3\n300;400;C\n1;2;A\n100;200;B\n");
    EXPECT_EQ(database.GetIPCountry("0.0.0.1"), "A");
    EXPECT_EQ(database.GetIPCountry("0.0.0.100"), "B");
    EXPECT_EQ(database.GetIPCountry("0.0.1.44"), "C");
}

TEST_F(CountryDatabase, FindsEachOfManyRanges) {
    constexpr int Count = 1000;
    std::string content = std::to_string(Count) + "\r\n";
    for (int i = 0; i < Count; ++i)
        content += std::to_string(i * 65536) + ';' + std::to_string(i * 65536 + 65535) + ";C" +
                   std::to_string(i % 7) + "\r\n";
    Load(content);
    for (int i = 0; i < Count; ++i) {
        const std::string network = std::to_string(i / 256) + '.' + std::to_string(i % 256);
        EXPECT_EQ(database.GetIPCountry(network + ".0.0"), "C" + std::to_string(i % 7));
        EXPECT_EQ(database.GetIPCountry(network + ".255.255"), "C" + std::to_string(i % 7));
    }
    EXPECT_EQ(database.GetIPCountry("3.232.0.0"), "--");
    EXPECT_EQ(database.GetIPCountry("255.255.255.255"), "--");
}

TEST_F(CountryDatabase, LinesBeyondTheAnnouncedCountAreNotRead) {
    Load("3\n1;1;A\n2;2;B\n3;3;C\n4;4;D\nnonsense\n");
    EXPECT_TRUE(database.Initialized());
    EXPECT_EQ(database.GetIPCountry("0.0.0.3"), "C");
    EXPECT_EQ(database.GetIPCountry("0.0.0.4"), "--");
}

TEST_F(CountryDatabase, AnyKindOfLineEndWillDo) {
    for (const char* content : {"2\r\n1;1;A\r\n2;2;B\r\n", "2\n1;1;A\n2;2;B\n", "2\r1;1;A\r2;2;B\r",
                                "2\r\n1;1;A\n2;2;B", "2\r1;1;A\n2;2;B\r"}) {
        Load(content);
        EXPECT_EQ(database.GetIPCountry("0.0.0.1"), "A") << content;
        EXPECT_EQ(database.GetIPCountry("0.0.0.2"), "B") << content;
    }
}

TEST_F(CountryDatabase, TheShortestLinesAreRead) {
    Load("2\n0;0;\n1;1;");
    EXPECT_EQ(database.GetIPCountry("0.0.0.0"), "");
    EXPECT_EQ(database.GetIPCountry("0.0.0.1"), "");
    EXPECT_EQ(database.GetIPCountry("0.0.0.2"), "--");
}

TEST_F(CountryDatabase, CountriesAreAnyTextUpToTheNextField) {
    Load("4\n1;1;\n2;2; a country \n3;3;A\0\x1A\xFF\n4;4;B;more;fields\n"s);
    EXPECT_EQ(database.GetIPCountry("0.0.0.1"), "");
    EXPECT_EQ(database.GetIPCountry("0.0.0.2"), " a country ");
    EXPECT_EQ(database.GetIPCountry("0.0.0.3"), "A\0\x1A\xFF"s);
    EXPECT_EQ(database.GetIPCountry("0.0.0.4"), "B");
}

TEST_F(CountryDatabase, NumbersMayBeWrittenInAnyWay) {
    Load(" 2 \n 1e1 ;+20.0;A\n0030;4E+1;B\n");
    EXPECT_EQ(database.GetIPCountry("0.0.0.10"), "A");
    EXPECT_EQ(database.GetIPCountry("0.0.0.20"), "A");
    EXPECT_EQ(database.GetIPCountry("0.0.0.35"), "B");
    EXPECT_EQ(database.GetIPCountry("0.0.0.41"), "--");
}

TEST_F(CountryDatabase, BoundsAreComparedAsTheyAreWritten) {
    const struct {
        const char* bounds;
        const char* inside;  // "" when no address is
        const char* outside; // "" when every address is inside
    } cases[] = {
        {"9.5;20", "0.0.0.10", "0.0.0.9"},
        {"9;10.9999", "0.0.0.10", "0.0.0.11"},
        {"9;10.99996", "0.0.0.11", "0.0.0.12"},  // four decimals are kept
        {"10.00004;11", "0.0.0.10", "0.0.0.9"},  //
        {"10.00006;11", "0.0.0.11", "0.0.0.10"}, //
        {"10.25;10.75", "", "0.0.0.10"},
        {"20;10", "", "0.0.0.15"},
        {"-5;5", "0.0.0.0", "0.0.0.6"},
        {"-5;-1", "", "0.0.0.0"},
        {"-0.5;0.5", "0.0.0.0", "0.0.0.1"},
        {"-5;-0.5", "", "0.0.0.0"},
        {"-900000000000000;900000000000000", "255.255.255.255", ""},
        {"4294967295;4294967296", "255.255.255.255", "255.255.255.254"},
        {"4294967295.5;5000000000", "", "255.255.255.255"},
        {"4294967296;5000000000", "", "255.255.255.255"},
        {"4294967296;900000000000000", "", "0.0.0.0"},
        {"0;922337203685477", "255.255.255.255", ""},
        {"922337203685477.4;922337203685477.5", "", "0.0.0.0"},
    };
    for (const auto& c : cases) {
        Load("1\n"s + c.bounds + ";A\n");
        if (*c.inside) {
            EXPECT_EQ(database.GetIPCountry(c.inside), "A") << c.bounds;
        }
        if (*c.outside) {
            EXPECT_EQ(database.GetIPCountry(c.outside), "--") << c.bounds;
        }
    }
}

TEST_F(CountryDatabase, ADamagedFileIsRefusedWithItsCause) {
    const struct {
        std::string content;
        ErrorNumber error;
    } cases[] = {
        {"", InputPastEndOfFile},
        {"\n", TypeMismatch},
        {"\n1;1;A\n", TypeMismatch},
        {"many\n1;1;A\n", TypeMismatch},
        {"2;\n1;1;A\n", TypeMismatch},
        {"1;1;A\n", TypeMismatch},
        {"99999999999\n1;1;A\n", Overflow},
        {"0\n1;1;A\n", InputPastEndOfFile},
        {"-1\n1;1;A\n", InputPastEndOfFile},
        {"-2147483648\n", InputPastEndOfFile},
        {"2147483647\n1;1;A\n", InputPastEndOfFile},
        {"1", InputPastEndOfFile},
        {"1\n", InputPastEndOfFile},
        {"2\n1;1;A\n", InputPastEndOfFile},
        {"2\n1;1;ABCDEFGHIJ\n", InputPastEndOfFile}, // one line as long as two
        {"2\n1;1;ABCDEFGHIJ\n\n", SubscriptOutOfRange},
        {"1\n\n1;1;A\n", SubscriptOutOfRange},
        {"1\n1;1\n1;1;A", SubscriptOutOfRange},
        {"1\n123456\n", SubscriptOutOfRange},
        {"1\nA;1;A\n", TypeMismatch},
        {"1\n1;A;A\n", TypeMismatch},
        {"1\n;1;A\n", TypeMismatch},
        {"1\n1;;A\n", TypeMismatch},
        {"1\n1;0x1F;A\n", TypeMismatch},
        {"1\n1,5;2;A\n", TypeMismatch},
        {"1\nnonsense\n", TypeMismatch},
        {"1\n1;922337203685478;A\n", Overflow},
        {"1\n-922337203685478;1;A\n", Overflow},
        {"1\n1;1e30;A\n", Overflow},
        {"1\n1;1e999;A\n", Overflow},
        {"\xEF\xBB\xBF"
         "1\n1;1;A\n",
         TypeMismatch}, // a mark of another encoding is no part of a number
        {"1\x1A\n1;1;A\n", TypeMismatch},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ErrorOfLoading(c.content), c.error) << c.content;
        EXPECT_FALSE(database.Initialized()) << c.content;
    }
}

TEST_F(CountryDatabase, AFileThatCannotBeReadIsRefusedWithItsCause) {
    EXPECT_EQ(ErrorOf([&] { database.InitDatabase(); }), FileNotFound);
    files.FailReads(Path, PermissionDenied);
    EXPECT_EQ(ErrorOf([&] { database.InitDatabase(); }), PermissionDenied);
    EXPECT_FALSE(database.Initialized());
}

TEST_F(CountryDatabase, AFailedLoadLeavesNothingOfTheLastOne) {
    Load("1\n1;1;A\n");
    EXPECT_EQ(ErrorOfLoading("2\n1;1;B\n2;2\n0;0;C"), SubscriptOutOfRange);
    EXPECT_FALSE(database.Initialized());
    EXPECT_EQ(ErrorOfLookUp("0.0.0.1"), SubscriptOutOfRange);
}

TEST_F(CountryDatabase, IsInitializedFromACompleteLoadToItsRelease) {
    EXPECT_FALSE(database.Initialized());
    Load("1\n1;1;A\n");
    EXPECT_TRUE(database.Initialized());
    database.DestroyDatabase();
    EXPECT_FALSE(database.Initialized());
    Load("1\n2;2;B\n");
    EXPECT_TRUE(database.Initialized());
    EXPECT_EQ(database.GetIPCountry("0.0.0.1"), "--");
    EXPECT_EQ(database.GetIPCountry("0.0.0.2"), "B");
}

TEST_F(CountryDatabase, ALookUpAfterTheReleaseFailsAtItsFirstRange) {
    Load("1\n1;1;A\n");
    database.DestroyDatabase();
    EXPECT_EQ(ErrorOfLookUp("0.0.0.1"), SubscriptOutOfRange);
}

TEST_F(CountryDatabase, KnowsNoCountryBeforeItIsLoaded) {
    EXPECT_EQ(database.GetIPCountry("10.0.0.1"), "--");
}

TEST_F(CountryDatabase, AddressesThatAreNoneAreRefused) {
    Load("1\n0;4294967295;A\n");
    const struct {
        const char* address;
        ErrorNumber error;
    } cases[] = {
        {"", SubscriptOutOfRange},      {"1", SubscriptOutOfRange},
        {"1.2.3", SubscriptOutOfRange}, {".", TypeMismatch},
        {"1..2.3", TypeMismatch},       {"1.2.3.", TypeMismatch},
        {"...", TypeMismatch},          {"a.b.c.d", TypeMismatch},
        {"localhost", TypeMismatch},    {"1.2.3.x", TypeMismatch},
        {"1.2.3.0x4", TypeMismatch},    {"1.2.3.4:27960", TypeMismatch},
        {"1.2.3.9999999999", Overflow}, {"1.2.-9999999999.4", Overflow},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ErrorOfLookUp(c.address), c.error) << c.address;
}

TEST_F(CountryDatabase, UnusualPartsCountByTheirHexadecimalDigits) {
    Load("4\n16909060;16909060;PLAIN\n2684431361;2684431361;WIDE\n4294967295;4294967295;ALL\n"
         "4294902274;4294902274;NEG\n");
    const struct {
        const char* address;
        const char* country;
    } cases[] = {
        {"1.2.3.4", "PLAIN"},   {"1.2.3.4.5", "PLAIN"}, // a fifth part is not looked at
        {"1.2.3.4.x", "PLAIN"}, {" 1 .02. 3.4 ", "PLAIN"},
        {"10.0.300.1", "WIDE"}, // 0A 00 12C 01: the last eight digits are A0012C01
        {"1.2.3.-1", "ALL"},    // FFFFFFFF has eight digits alone
        {"9.-1.1.2", "--"},     // FFFF0102 is left of FFFFFFFF 01 02
        {"256.1.2.3", "--"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(database.GetIPCountry(c.address), c.country) << c.address;
    Load("2\n4294902018;4294902018;NEG\n66051;66051;OVER\n");
    EXPECT_EQ(database.GetIPCountry("9.-1.1.2"), "NEG");
    EXPECT_EQ(database.GetIPCountry("256.1.2.3"), "OVER");
}

} // namespace
} // namespace quarn
