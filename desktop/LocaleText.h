#pragma once

// Text as the user's locale has it: numbers, dates and alphabetical order; and the bytes of its characters.

#include "base/DateTime.h"

#include <cstdint>
#include <string>

namespace quarn {

class LocaleText {
  public:
    virtual ~LocaleText() = default;

    virtual bool IsNumeric(const std::string& text) const = 0;

    // Error 13 for text that is no number, 6 for one out of range.
    virtual double ToDouble(const std::string& text) const = 0;
    virtual std::int32_t ToLong(const std::string& text) const = 0;

    // The general date form: short date and time; no time at midnight; the zero date as its time alone.
    virtual std::string FromDate(DateTime date) const = 0;

    // Error 13 for text that holds no date.
    virtual DateTime ToDate(const std::string& text) const = 0;

    // Bytes that compare as the texts do in the alphabetical order of the locale, without case.
    virtual std::string SortKey(const std::string& text) const = 0;

    // The character in lower case; what is no letter of one byte stays as it is.
    virtual char LowerCase(char character) const = 0;

    // In code pages of East Asian scripts: whether the byte begins a character of two. The second byte can
    // have the code of a letter, a bracket or a backslash.
    virtual bool IsLeadByte(char byte) const = 0;
};

} // namespace quarn
