#pragma once

// Text in the user's locale: numbers, dates and alphabetical order; and the bytes of its characters.

#include "base/DateTime.h"

#include <cstdint>
#include <string>

namespace quarn {

class LocaleText {
  public:
    virtual ~LocaleText() = default;

    virtual bool IsNumeric(const std::string& text) const = 0;

    // Error 13 for text that is not a number, 6 for one out of range.
    virtual double ToDouble(const std::string& text) const = 0;
    virtual std::int32_t ToLong(const std::string& text) const = 0;

    // The general date format: short date and time; no time at midnight; only the time for the zero date.
    virtual std::string FromDate(DateTime date) const = 0;

    // Error 13 for text that is not a date.
    virtual DateTime ToDate(const std::string& text) const = 0;

    // A sort key: bytes that compare like the texts in the locale's alphabetical order, ignoring case.
    virtual std::string SortKey(const std::string& text) const = 0;

    // The same characters in UTF-8. A byte that is no character becomes a substitute character.
    virtual std::string ToUtf8(const std::string& text) const = 0;

    // The character in lower case; anything but a letter of one byte stays as it is.
    virtual char LowerCase(char character) const = 0;

    // In code pages of East Asian scripts: whether the byte is the first of a two-byte character. The second
    // byte can have the code of a letter, a bracket or a backslash.
    virtual bool IsLeadByte(char byte) const = 0;
};

} // namespace quarn
