#pragma once

// Text to number and back, without a locale: the conversions for datagrams and files.
//
// A number may have blanks around it, a sign, digits with an optional decimal point, and an exponent.
// Whole-number conversions round halves to even. Text that is not a number is run-time error 13, a value
// outside the target type is error 6.

#include <cstdint>
#include <string>
#include <string_view>

namespace quarn {

constexpr bool IsDigit(char character) noexcept {
    return character >= '0' && character <= '9';
}

bool IsNumber(std::string_view text) noexcept;
double ToDouble(std::string_view text);

std::int32_t ToLong(std::string_view text);
std::int16_t ToInteger(std::string_view text);
std::uint8_t ToByte(std::string_view text);

// Rounds to the nearest whole number, halves to even; error 6 outside 32 bits.
std::int32_t RoundToLong(double value);

// number / divisor, rounded to the nearest whole number, halves to even. The number is not negative, the
// divisor is positive.
std::int32_t DivideRounded(std::int32_t number, std::int32_t divisor) noexcept;

} // namespace quarn
