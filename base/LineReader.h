#pragma once

// A file's text, line by line. A line ends at CR LF, at a lone LF or at a lone CR; code 26 and NUL are
// ordinary characters. The last line needs no end. The text must outlive the reader and its lines.

#include "base/RunTimeError.h"

#include <string_view>

namespace quarn {

class LineReader {
  public:
    explicit LineReader(std::string_view text) : rest_(text) {}

    // The next line without its end; error 62 at the end of the text.
    std::string_view ReadLine() {
        if (rest_.empty())
            throw RunTimeError(ErrorNumber::InputPastEndOfFile);
        std::size_t end = 0;
        while (end < rest_.size() && rest_[end] != '\r' && rest_[end] != '\n')
            ++end;
        const std::string_view line = rest_.substr(0, end);
        const bool pair = rest_.substr(end, 2) == "\r\n";
        rest_.remove_prefix(pair ? end + 2 : end < rest_.size() ? end + 1 : end);
        return line;
    }

    // The rest that has not been read.
    std::string_view Rest() const noexcept { return rest_; }

  private:
    std::string_view rest_;
};

} // namespace quarn
