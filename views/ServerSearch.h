#pragma once

// What the search box looks for: a text that a server's name, map, game, address or the name of one of its
// players contains, without case.

#include "core/modDefinitions.h"
#include "desktop/LocaleText.h"

#include <array>
#include <string>
#include <string_view>

namespace quarn {

class ServerSearch {
  public:
    // Finds every server.
    ServerSearch() = default;

    // An empty text finds every server.
    ServerSearch(std::string text, const LocaleText& locale);

    const std::string& Text() const noexcept { return text_; }

    // Players that the server does not have now are not looked at.
    bool Finds(const ServerRecord& server) const;

  private:
    bool IsIn(std::string_view text) const;
    char Folded(char character) const noexcept { return lowerCase_[static_cast<unsigned char>(character)]; }

    std::string text_;   // as typed
    std::string sought_; // in lower case
    std::array<char, 256> lowerCase_{};
};

} // namespace quarn
