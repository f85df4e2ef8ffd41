#pragma once

// The bytes of an input, read as a script: letters, numbers of one byte, and texts that a mark ends. After
// the end of a script, zeros and empty texts are read.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quarn::fuzz {

class ByteScript {
  public:
    static constexpr char EndOfText = '\x1E';

    ByteScript(const std::uint8_t* data, std::size_t size)
        : rest_(reinterpret_cast<const char*>(data), size) {}

    bool AtEnd() const noexcept { return rest_.empty(); }

    // Whether this letter is next in the script; it is then consumed.
    bool Takes(char letter) noexcept {
        const bool follows = !rest_.empty() && rest_.front() == letter;
        rest_.remove_prefix(follows ? 1 : 0);
        return follows;
    }

    char Letter() noexcept {
        if (rest_.empty())
            return '\0';
        const char letter = rest_.front();
        rest_.remove_prefix(1);
        return letter;
    }

    // Counted from '0', so that scripts can be read: "0" to "9" are these numbers.
    std::int32_t Number() noexcept {
        return static_cast<std::uint8_t>(static_cast<std::uint8_t>(Letter()) - '0');
    }

    std::string Text() {
        const std::string_view text = rest_.substr(0, rest_.find(EndOfText));
        rest_.remove_prefix(text.size() < rest_.size() ? text.size() + 1 : text.size());
        return std::string(text);
    }

  private:
    std::string_view rest_;
};

} // namespace quarn::fuzz
