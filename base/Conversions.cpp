#include "base/Conversions.h"

#include "base/RunTimeError.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <system_error>

namespace quarn {

namespace {

constexpr std::string_view Blanks = " \t\n\v\f\r";

std::string_view WithoutBlanks(std::string_view text) noexcept {
    const std::size_t first = text.find_first_not_of(Blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

void SkipSign(std::string_view& text) noexcept {
    if (!text.empty() && (text.front() == '+' || text.front() == '-'))
        text.remove_prefix(1);
}

// Removes the leading digits from the text and returns their number.
std::size_t SkipDigits(std::string_view& text) noexcept {
    std::size_t count = 0;
    while (count < text.size() && IsDigit(text[count]))
        ++count;
    text.remove_prefix(count);
    return count;
}

bool IsNumberWithoutBlanks(std::string_view text) noexcept {
    SkipSign(text);
    std::size_t digits = SkipDigits(text);
    if (!text.empty() && text.front() == '.') {
        text.remove_prefix(1);
        digits += SkipDigits(text);
    }
    if (digits == 0)
        return false;
    if (!text.empty() && (text.front() == 'e' || text.front() == 'E')) {
        text.remove_prefix(1);
        SkipSign(text);
        if (SkipDigits(text) == 0)
            return false;
    }
    return text.empty();
}

template<class Target>
Target Rounded(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<Target>::min() && rounded <= std::numeric_limits<Target>::max()))
        throw RunTimeError(ErrorNumber::Overflow);
    return static_cast<Target>(rounded);
}

// Fast path: nearly every number of a datagram or file consists of digits only.
template<class Target>
Target ToWhole(std::string_view text) {
    Target value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end ? value : Rounded<Target>(ToDouble(text));
}

} // namespace

bool IsNumber(std::string_view text) noexcept {
    return IsNumberWithoutBlanks(WithoutBlanks(text));
}

double ToDouble(std::string_view text) {
    const std::string number(WithoutBlanks(text));
    if (!IsNumberWithoutBlanks(number))
        throw RunTimeError(ErrorNumber::TypeMismatch);
    // The program never leaves the C locale, in which strtod reads exactly what was just checked.
    const double value = std::strtod(number.c_str(), nullptr);
    if (!std::isfinite(value))
        throw RunTimeError(ErrorNumber::Overflow);
    return value;
}

std::int32_t ToLong(std::string_view text) {
    return ToWhole<std::int32_t>(text);
}
std::int16_t ToInteger(std::string_view text) {
    return ToWhole<std::int16_t>(text);
}
std::uint8_t ToByte(std::string_view text) {
    return ToWhole<std::uint8_t>(text);
}

std::int32_t RoundToLong(double value) {
    return Rounded<std::int32_t>(value);
}

std::int32_t DivideRounded(std::int32_t number, std::int32_t divisor) noexcept {
    const std::int32_t quotient = number / divisor;
    const std::int64_t twiceRest = std::int64_t{number % divisor} * 2;
    const bool up = twiceRest > divisor || (twiceRest == divisor && quotient % 2 != 0);
    return quotient + (up ? 1 : 0);
}

} // namespace quarn
