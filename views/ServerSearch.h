#pragma once

// The search of the search box: finds servers whose name, map, game, address or players' names contain a
// text, ignoring case.

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

    // Only players that the server has now are searched.
    bool Finds(const ServerRecord& server) const;

  private:
    bool IsIn(const std::string& text) const;
    char Folded(char character) const noexcept { return lowerCase_[static_cast<unsigned char>(character)]; }

    std::string text_;   // as typed
    std::string sought_; // in lower case
    std::array<char, 256> lowerCase_{};
};

} // namespace quarn
