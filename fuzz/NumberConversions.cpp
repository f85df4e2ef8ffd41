// Text to number: all conversions agree on which texts are numbers, and a whole number is the nearest one to
// the text's value, or out of range.

#include "base/Conversions.h"
#include "fuzz/Require.h"
#include "tests/fakes/Errors.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace quarn::fuzz {

namespace {

template<class Target, class Convert>
void RequireRounded(std::string_view text, Convert convert, std::optional<double> value) {
    Target whole = 0;
    const auto error = ErrorOf([&] { whole = convert(text); });
    if (!IsNumber(text)) {
        Require(error == ErrorNumber::TypeMismatch, "text that is no number is error 13");
        return;
    }
    const double nearest = value ? std::nearbyint(*value) : std::numeric_limits<double>::infinity();
    const bool fits =
        nearest >= std::numeric_limits<Target>::min() && nearest <= std::numeric_limits<Target>::max();
    if (fits)
        Require(error == NoError && whole == nearest, "the nearest whole number");
    else
        Require(error == ErrorNumber::Overflow, "a number out of range is error 6");
}

} // namespace

} // namespace quarn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quarn;
    using namespace quarn::fuzz;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    std::optional<double> value;
    const auto error = ErrorOf([&] { value = ToDouble(text); });
    Require((error == ErrorNumber::TypeMismatch) == !IsNumber(text), "IsNumber tells what ToDouble refuses");
    Require(error == NoError || error == ErrorNumber::TypeMismatch || error == ErrorNumber::Overflow,
            "no other error");
    Require(!value || std::isfinite(*value), "a number is finite");

    RequireRounded<std::int32_t>(text, ToLong, value);
    RequireRounded<std::int16_t>(text, ToInteger, value);
    RequireRounded<std::uint8_t>(text, ToByte, value);
    return 0;
}
