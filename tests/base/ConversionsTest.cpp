#include "base/Conversions.h"

#include "tests/fakes/Errors.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace quarn {
namespace {

constexpr const char* NoNumbers[] = {
    "",     " ",    "\t\r\n", "+",    "-",     ".",    "-.",  "+-1",  "--1",  "1-",    "1+",
    "1 2",  "- 1",  "1,000",  "1,5",  "1.2.3", "1..2", "e5",  ".e5",  "1e",   "1e+",   "1e5.5",
    "1e5e", "0x10", "&H10",   "10h",  "inf",   "nan",  "(1)", "$1",   "1%",   "\xB2",  "\2401",
    "abc",  "12a",  "a12",    "1\\n", "\"1\"", "1;",   "1d5", "true", "\xFF", "1\x01", "12:30",
};

TEST(Conversions, TakeTheNumberOutOfItsBlanks) {
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"0", 0},       {"-0", 0},         {"42", 42},
        {" 42", 42},    {"42 \t\r\n", 42}, {"+42", 42},
        {"-42", -42},   {"1.5", 1.5},      {"5.", 5},
        {".5", 0.5},    {"-.5", -0.5},     {"1e3", 1000},
        {"1E+3", 1000}, {"25e-1", 2.5},    {"007", 7},
        {"1e-999", 0},  {"0e999", 0},      {"4294967295", 4294967295.0},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(IsNumber(c.text)) << c.text;
        EXPECT_DOUBLE_EQ(ToDouble(c.text), c.value) << c.text;
    }
}

TEST(Conversions, RefuseTextThatIsNoNumber) {
    for (const char* text : NoNumbers) {
        EXPECT_FALSE(IsNumber(text)) << text;
        EXPECT_EQ(ErrorOf([&] { ToDouble(text); }), ErrorNumber::TypeMismatch) << text;
        EXPECT_EQ(ErrorOf([&] { ToLong(text); }), ErrorNumber::TypeMismatch) << text;
        EXPECT_EQ(ErrorOf([&] { ToInteger(text); }), ErrorNumber::TypeMismatch) << text;
        EXPECT_EQ(ErrorOf([&] { ToByte(text); }), ErrorNumber::TypeMismatch) << text;
    }
    using namespace std::string_view_literals;
    for (const std::string_view text : {"\0"sv, "1\0"sv, "\0001"sv, "1\0002"sv})
        EXPECT_EQ(ErrorOf([&] { ToLong(text); }), ErrorNumber::TypeMismatch);
}

TEST(Conversions, RoundHalvesToEven) {
    const struct {
        const char* text;
        std::int32_t value;
    } cases[] = {{"0.5", 0},       {"1.5", 2},       {"2.5", 2},   {"3.5", 4},
                 {"2.5000001", 3}, {"2.4999999", 2}, {"-0.5", 0},  {"-1.5", -2},
                 {"-2.5", -2},     {"-2.51", -3},    {"25e-1", 2}, {"1e-9", 0},
                 {"0.9", 1},       {"-0.4", 0},      {"12.0", 12}, {"2147483646.5", 2147483646}};
    for (const auto& c : cases) {
        EXPECT_EQ(ToLong(c.text), c.value) << c.text;
        EXPECT_EQ(RoundToLong(ToDouble(c.text)), c.value) << c.text;
    }
}

TEST(Conversions, HoldTheRangeOfTheirTarget) {
    EXPECT_EQ(ToLong("2147483647"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(ToLong("2147483647.49"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(ToLong("-2147483648.5"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ToInteger("32767"), 32767);
    EXPECT_EQ(ToInteger("-32768"), -32768);
    EXPECT_EQ(ToByte("255"), 255);
    EXPECT_EQ(ToByte("-0.5"), 0);

    for (const char* text : {"2147483648", "2147483647.5", "-2147483649", "-2147483648.6", "4294967296",
                             "1e10", "99999999999999999999999999", "1e308"})
        EXPECT_EQ(ErrorOf([&] { ToLong(text); }), ErrorNumber::Overflow) << text;
    for (const char* text : {"32768", "32767.5", "-32769", "65535", "1e5", "2147483648"})
        EXPECT_EQ(ErrorOf([&] { ToInteger(text); }), ErrorNumber::Overflow) << text;
    for (const char* text : {"256", "255.5", "-1", "-0.6", "1e3", "4294967296"})
        EXPECT_EQ(ErrorOf([&] { ToByte(text); }), ErrorNumber::Overflow) << text;
    for (const char* text : {"1e309", "-1e309", "1e99999999999999999999"})
        EXPECT_EQ(ErrorOf([&] { ToDouble(text); }), ErrorNumber::Overflow) << text;
    EXPECT_EQ(ErrorOf([] { ToDouble(std::string(100'000, '9')); }), ErrorNumber::Overflow);
}

TEST(Conversions, RoundANumberOnlyWithinItsRange) {
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    for (const double value : {2147483647.5, -2147483649.0, 1e300, Infinity, -Infinity, std::nan("")})
        EXPECT_EQ(ErrorOf([&] { RoundToLong(value); }), ErrorNumber::Overflow) << value;
}

TEST(Conversions, DivideToTheNearestWholeNumber) {
    const struct {
        std::int32_t number;
        std::int32_t divisor;
        std::int32_t quotient;
    } cases[] = {{0, 7, 0},
                 {3, 7, 0},
                 {4, 7, 1},
                 {7, 7, 1},
                 {10, 7, 1},
                 {11, 7, 2},
                 {3, 6, 0},
                 {9, 6, 2},
                 {15, 6, 2},
                 {21, 6, 4},
                 {12, 6, 2},
                 {1, 2, 0},
                 {3, 2, 2},
                 {2147483647, 1, 2147483647},
                 {2147483647, 2, 1073741824},
                 {1073741824, 2147483647, 1},
                 {1073741823, 2147483647, 0}};
    for (const auto& c : cases)
        EXPECT_EQ(DivideRounded(c.number, c.divisor), c.quotient) << c.number << " / " << c.divisor;
}

} // namespace
} // namespace quarn
