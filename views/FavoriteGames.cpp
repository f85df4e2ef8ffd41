#include "views/FavoriteGames.h"

#include "base/Conversions.h"
#include "core/modCommonSubs.h"
#include "core/modStringHelper.h"

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace quarn {

namespace {

constexpr const char* LineEnd = "\r\n";

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view Blanks = " \t";
    const std::size_t first = text.find_first_not_of(Blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(Blanks) - first + 1);
}

// Other texts are not keys: a list file may contain anything.
bool IsAddress(std::string_view key) {
    return !key.empty() && IsDigit(key.front()) && key.find(':') != std::string_view::npos &&
           key.find_first_not_of("0123456789.:-") == std::string_view::npos;
}

// The name in a section's line; nothing for all other lines.
std::optional<std::string_view> SectionOf(std::string_view line) {
    line = Trimmed(line);
    if (line.empty() || line.front() != '[')
        return std::nullopt;
    return Trimmed(line.substr(1, line.find(']') - 1)); // the closing bracket may be missing
}

struct FileLine {
    std::string_view whole; // including its end
    bool isInSection = false;
    bool isBlank = false;
    std::string_view address; // empty: the line is not an entry of the section
    std::string_view game;
};

// The lines of a file, and which of them are entries of a section.
class SectionReader {
  public:
    SectionReader(std::string_view content, const std::string& section)
        : rest_(content), section_(LowerCase(section)) {}

    std::optional<FileLine> Next() {
        if (rest_.empty())
            return std::nullopt;
        const std::size_t end = std::min(rest_.find_first_of("\r\n"), rest_.size());
        const std::string_view text = rest_.substr(0, end);
        const std::size_t size = end + (rest_.substr(end, 2) == LineEnd ? 2 : end < rest_.size() ? 1 : 0);
        FileLine line{.whole = rest_.substr(0, size)};
        rest_.remove_prefix(size);
        Read(text, line);
        return line;
    }

  private:
    void Read(std::string_view text, FileLine& line) {
        if (const auto name = SectionOf(text))
            isInSection_ = LowerCase(*name) == section_;
        line.isInSection = isInSection_;
        line.isBlank = Trimmed(text).empty();
        const std::size_t sign = text.find('=');
        const std::string_view key = Trimmed(text.substr(0, sign));
        if (!isInSection_ || sign == std::string_view::npos || !IsAddress(key))
            return;
        line.address = key;
        line.game = Trimmed(text.substr(sign + 1));
    }

    std::string_view rest_;
    std::string section_;
    bool isInSection_ = false;
};

std::string EntryLine(const std::pair<const std::string, std::string>& entry) {
    return entry.first + "=" + entry.second + LineEnd;
}

void AppendLineEnd(std::string& content) {
    if (!content.empty() && content.back() != '\n' && content.back() != '\r')
        content += LineEnd;
}

// Games by address, in an order that does not depend on the order in which they were added.
using Games = std::map<std::string, std::string, std::less<>>;

// The file with these entries in the section: existing ones are changed, new ones follow its last line.
std::string WithEntries(std::string_view content, const std::string& section, const Games& games) {
    Games missing = games;
    std::string written;
    std::size_t sectionEnd = 0; // 0: there is no such section
    SectionReader lines(content, section);
    while (const auto line = lines.Next()) {
        const auto entry = games.find(line->address);
        if (entry == games.end())
            written += line->whole;
        else if (missing.erase(entry->first) != 0) // otherwise it is a duplicate
            written += line->game == entry->second ? std::string(line->whole) : EntryLine(*entry);
        if (line->isInSection && !line->isBlank)
            sectionEnd = written.size();
    }
    std::string added;
    for (const auto& entry : missing)
        added += EntryLine(entry);
    if (added.empty())
        return written;
    if (sectionEnd == 0) {
        AppendLineEnd(written);
        return written + "[" + section + "]" + LineEnd + added;
    }
    std::string before = written.substr(0, sectionEnd);
    AppendLineEnd(before);
    return before + added + written.substr(sectionEnd);
}

using Addresses = std::unordered_set<std::string>;

std::string WithoutOthers(std::string_view content, const std::string& section, const Addresses& kept) {
    std::string written;
    SectionReader lines(content, section);
    while (const auto line = lines.Next())
        if (line->address.empty() || kept.contains(std::string(line->address)))
            written += line->whole;
    return written;
}

} // namespace

bool FavoriteGames::IsFavoritesList(std::string_view listName) noexcept {
    return listName.size() == 4 && listName.substr(0, 3) == "fav" && IsDigit(listName[3]) &&
           listName[3] != '0';
}

void FavoriteGames::Read(const std::string& listName, OneBased<ServerRecord>& servers) const {
    const std::optional<std::string> content = files_.ReadIfThere(Path());
    if (!content)
        return;
    std::unordered_map<std::string, std::int32_t> games;
    SectionReader lines(*content, listName);
    while (const auto line = lines.Next())
        if (!line->address.empty())
            games.try_emplace(std::string(line->address), GameIndexOfShort(program_, line->game));
    for (std::int32_t i = 1; i <= servers.HighestIndex() && !games.empty(); ++i)
        if (const auto game = games.find(AddressText(servers[i])); game != games.end())
            servers[i].Game = game->second;
}

void FavoriteGames::Add(const std::string& listName, const std::vector<ServerRecord>& servers) {
    Games games;
    for (const ServerRecord& server : servers)
        if (const std::string address = AddressText(server); server.Game != 0 && IsAddress(address))
            games[address] = program_.Games[server.Game].GameShort;
    if (games.empty() || !IsFavoritesList(listName))
        return;
    const std::string content = files_.ReadIfThere(Path()).value_or(std::string());
    if (std::string changed = WithEntries(content, listName, games); changed != content)
        files_.Replace(Path(), changed);
}

void FavoriteGames::RemoveOthers(const std::string& listName, const OneBased<ServerRecord>& servers) {
    const std::optional<std::string> content = files_.ReadIfThere(Path());
    if (!content)
        return;
    Addresses kept;
    for (std::int32_t i = 1; i <= servers.HighestIndex(); ++i)
        kept.insert(AddressText(servers[i]));
    if (const std::string changed = WithoutOthers(*content, listName, kept); changed != *content)
        files_.Replace(Path(), changed);
}

} // namespace quarn
