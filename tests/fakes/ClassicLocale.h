#pragma once

// The English (United States) locale, or the German one, as far as the program needs it.

#include "desktop/LocaleText.h"

#include <cstdint>
#include <string>

namespace quarn {

class ClassicLocale : public LocaleText {
  public:
    // German: "." groups digits and "," is the decimal sign, dates read "21.11.2026 08:05:00". A group may
    // have any number of digits, so that "1.2.3" is a number there.
    bool german = false;

    bool IsNumeric(const std::string& text) const override;
    double ToDouble(const std::string& text) const override;
    std::int32_t ToLong(const std::string& text) const override;

    // "11/21/2026 8:05:00 AM"; "11/21/2026" at midnight; "12:00:00 AM" for the zero date.
    std::string FromDate(DateTime date) const override;

    // Reads what FromDate writes, the seconds being optional.
    DateTime ToDate(const std::string& text) const override;

    // The text with A to Z in lower case.
    std::string SortKey(const std::string& text) const override;

    // From the Western code page.
    std::string ToUtf8(const std::string& text) const override;

    // Letters of the Western code page.
    char LowerCase(char character) const override;

    // The Japanese code page 932 instead of the Western one.
    bool japaneseCodePage = false;
    bool IsLeadByte(char byte) const override;
};

} // namespace quarn
