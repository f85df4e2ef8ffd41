#pragma once

// Small text routines of the emulated network. Texts are bytes (codes 0 to 255), never UTF-8.

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace quarn::gamenet {

// A setting, file or argument that cannot be used; what() is an error message for the user.
class BadSetting : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Runs `step`; a BadSetting it throws is rethrown with `prefix` in front of its text.
template<class Step>
auto ComplainingAs(const std::string& prefix, Step step) {
    try {
        return step();
    } catch (const BadSetting& error) {
        throw BadSetting(prefix + ": " + error.what());
    }
}

std::string Trimmed(std::string_view text);
std::string LowerCase(std::string_view text);
bool StartsWithIgnoringCase(std::string_view text, std::string_view start);

// Every part, empty ones included.
std::vector<std::string> SplitText(std::string_view text, char separator);

// The trimmed parts of a comma-separated list. Throws BadSetting for an empty part or an empty list.
std::vector<std::string> ParseList(std::string_view text);

// A whole decimal number from low to high, and a number that may have a fraction. Throw BadSetting.
long long ParseWhole(std::string_view text, long long low, long long high);
double ParseNumber(std::string_view text, double low, double high);

// A name as a player sees it: without colour codes (^ and a digit; ^n, ^b; ^x and six characters) and
// without double quotes.
std::string WithoutColours(std::string_view text);

// Codes below 32 and above 126, the backslash and '|' become \xNN, so that a line of tab-separated
// fields stays one line of plain ASCII.
std::string TruthEscaped(std::string_view text);

// The escapes of Games.ini: $255 $32 $10 $1 $0 for the bytes that an INI value cannot hold. Throws
// BadSetting for bytes that the escapes cannot express (code 1 before "0", a "$" that would be read as
// an escape).
std::string IniEscaped(std::string_view bytes);
std::string IniUnescaped(std::string_view text);

} // namespace quarn::gamenet
