#include "views/ServerSearch.h"

#include <algorithm>
#include <utility>

namespace quarn {

ServerSearch::ServerSearch(std::string text, const LocaleText& locale) : text_(std::move(text)) {
    for (std::size_t code = 0; code < lowerCase_.size(); ++code)
        lowerCase_[code] = locale.LowerCase(static_cast<char>(code));
    sought_ = text_;
    std::transform(sought_.begin(), sought_.end(), sought_.begin(), [this](char c) { return Folded(c); });
}

bool ServerSearch::Finds(const ServerRecord& server) const {
    if (sought_.empty() || IsIn(server.Name) || IsIn(server.Map) || IsIn(server.ModName) ||
        IsIn(AddressText(server)))
        return true;
    const std::int32_t players = std::min(server.Players, server.PlayerList.HighestIndex());
    for (std::int32_t player = 1; player <= players; ++player)
        if (IsIn(server.PlayerList[player].Name))
            return true;
    return false;
}

bool ServerSearch::IsIn(const std::string& text) const {
    const auto isSame = [this](char character, char sought) { return Folded(character) == sought; };
    return std::search(text.begin(), text.end(), sought_.begin(), sought_.end(), isSame) != text.end();
}

} // namespace quarn
