#pragma once

// A text that is read field by field from its start, such as a datagram.
//
// Fields are read by the rules of ExtractString and TakeLeft (core/modCommonSubs.h), but the cursor moves
// along the text instead of erasing its start: a text of many fields is read in one pass and no field is
// copied. The text must outlive the cursor and the fields.

#include "core/modCommonSubs.h"

#include <algorithm>
#include <string_view>

namespace quarn {

class TextCursor {
  public:
    TextCursor(clsAppLog& log, std::string_view text) : log_(log), rest_(text) {}

    std::string_view Rest() const noexcept { return rest_; }
    bool StartsWith(std::string_view text) const noexcept { return rest_.substr(0, text.size()) == text; }

    // The text up to the separator, which is searched from the second character on. The separator's first
    // character is consumed with the field, its others remain. Without a separator the call fails: it logs an
    // error, returns "" and consumes nothing.
    std::string_view Extract(std::string_view separator) {
        const std::size_t end = FindSeparator(rest_, separator);
        failed_ = end == std::string_view::npos;
        if (failed_) {
            LogMissingSeparator(log_);
            return {};
        }
        const std::string_view field = rest_.substr(0, end);
        rest_.remove_prefix(end + 1);
        return field;
    }

    // Extract for the items of a list, which all end in the same separator: once it is missing, there is none
    // further on either, so it is neither searched nor logged again. This bounds the cost of a long text
    // without it.
    std::string_view ExtractItem(std::string_view separator) {
        if (missing_) {
            failed_ = true;
            return {};
        }
        const std::string_view field = Extract(separator);
        missing_ = failed_;
        return field;
    }

    // Whether no separator followed the last field.
    bool Failed() const noexcept { return failed_; }

    // The first `count` characters. A text of `count` characters or fewer is deliberately left as it is.
    std::string_view Take(std::size_t count) noexcept {
        const std::string_view field = rest_.substr(0, count);
        if (rest_.size() > count)
            rest_.remove_prefix(count);
        return field;
    }

    // Drops up to `count` characters.
    void Drop(std::size_t count) noexcept { rest_.remove_prefix(std::min(count, rest_.size())); }

  private:
    clsAppLog& log_;
    std::string_view rest_;
    bool failed_ = false;
    bool missing_ = false;
};

} // namespace quarn
