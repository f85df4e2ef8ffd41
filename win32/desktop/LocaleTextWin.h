#pragma once

#include "desktop/LocaleText.h"

namespace quarn {

// The platform's automation conversions in the user's locale. Stateless.
class LocaleTextWin final : public LocaleText {
  public:
    bool IsNumeric(const std::string& text) const override;
    double ToDouble(const std::string& text) const override;
    std::int32_t ToLong(const std::string& text) const override;
    std::string FromDate(DateTime date) const override;
    DateTime ToDate(const std::string& text) const override;
    std::string SortKey(const std::string& text) const override;
    std::string ToUtf8(const std::string& text) const override;
    char LowerCase(char character) const override;
    bool IsLeadByte(char byte) const override;
};

} // namespace quarn
