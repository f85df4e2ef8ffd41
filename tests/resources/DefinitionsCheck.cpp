#include "tests/resources/DefinitionsCheck.h"

#include "core/modStringHelper.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <map>
#include <set>

namespace quarn {

namespace {

using Section = std::map<std::string, std::string>;

constexpr std::size_t LongestText = 254;
constexpr std::string_view FixedNodes[] = {"games",   "favorites", "filters", "fltkey",
                                           "fltping", "png20",     "png50",   "png100"};
constexpr std::string_view Escapes[] = {"$255", "$32", "$10", "$1", "$0"};

class Check {
  public:
    explicit Check(std::string_view text) { Read(text); }

    std::vector<std::string> Faults() {
        const int games = Counted("Game", "GameNum");
        const int mods = Counted("MOD", "MODNum");
        HasKeys("General", {"IniVer", "IniDesc", "GameNum", "MODNum"});
        for (int number = 1; number <= games; ++number)
            CheckGame("Game" + std::to_string(number));
        for (int number = 1; number <= mods; ++number)
            CheckMod("MOD" + std::to_string(number));
        if (sections_.size() != static_cast<std::size_t>(games + mods + 1))
            Fault("", "the numbers of sections are not those of GameNum and MODNum");
        return std::move(faults_);
    }

  private:
    void Fault(const std::string& section, const std::string& sentence) {
        faults_.push_back(section.empty() ? sentence : section + ": " + sentence);
    }
    void Unless(bool holds, const std::string& section, const std::string& sentence) {
        if (!holds)
            Fault(section, sentence);
    }

    void Read(std::string_view text) {
        std::string name;
        for (std::string_view line : Split(text, '\n')) {
            if (line.ends_with('\r'))
                line.remove_suffix(1);
            if (line.empty() || line.starts_with(';'))
                continue;
            const std::size_t equals = line.find('=');
            if (line.starts_with('[') && line.ends_with(']')) {
                name = line.substr(1, line.size() - 2);
                Unless(sections_.emplace(name, Section()).second, name, "stands there twice");
            } else if (name.empty() || equals == std::string_view::npos) {
                Fault(name, "a line that is neither section nor key: " + std::string(line));
            } else {
                ReadKey(name, std::string(line.substr(0, equals)), std::string(line.substr(equals + 1)));
            }
        }
    }

    void ReadKey(const std::string& section, const std::string& key, const std::string& value) {
        Unless(sections_[section].emplace(key, value).second, section, key + " stands there twice");
        Unless(value.size() <= LongestText, section, key + " is too long");
        Unless(!value.starts_with(' ') && !value.ends_with(' '), section, key + " has blanks around it");
        const bool printable =
            std::all_of(value.begin(), value.end(), [](char c) { return c >= ' ' && c <= '~'; });
        Unless(printable, section, key + " has characters beside those of ASCII");
        for (std::size_t dollar = value.find('$'); dollar != std::string::npos;
             dollar = value.find('$', dollar + 1)) {
            const std::string_view rest = std::string_view(value).substr(dollar);
            const bool known = std::any_of(std::begin(Escapes), std::end(Escapes),
                                           [&](std::string_view escape) { return rest.starts_with(escape); });
            Unless(known, section, key + " has an unknown escape");
        }
    }

    bool HasKeys(const std::string& section, const std::set<std::string>& keys) {
        const auto found = sections_.find(section);
        if (found == sections_.end()) {
            Fault(section, "is missing");
            return false;
        }
        std::set<std::string> present;
        for (const auto& [key, value] : found->second)
            present.insert(key);
        Unless(present == keys, section, "does not have exactly its keys");
        return present == keys;
    }

    int Number(const std::string& section, const std::string& key) {
        const std::string& text = sections_[section][key];
        int number = 0;
        const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
        Unless(!text.empty() && end.ptr == text.data() + text.size(), section, key + " is no number");
        return number;
    }

    int Counted(const std::string& prefix, const std::string& key) {
        const int count = Number("General", key);
        const auto numbered = std::count_if(sections_.begin(), sections_.end(), [&](const auto& section) {
            return section.first.starts_with(prefix);
        });
        Unless(count == numbered, "General", key + " does not count the sections");
        return count;
    }

    void CheckGame(const std::string& name) {
        if (!HasKeys(name, {"Description", "ExeName", "GameShort", "Engine", "MasterAddress", "MasterPort",
                            "MasterPacket", "MasterResponse"}))
            return;
        Section& game = sections_[name];
        Unless(!game["Description"].empty(), name, "has no description");
        Unless(game["ExeName"].ends_with(".exe") && game["ExeName"].find_first_of("\\/") == std::string::npos,
               name, "ExeName is no file name of a program");
        CheckShort(name, game["GameShort"]);
        Unless(std::set<std::string>{"q3", "d3", "hl"}.contains(game["Engine"]), name, "Engine is unknown");
        // A name of at least host and domain.
        const std::string& host = game["MasterAddress"];
        Unless(host.find('.') != std::string::npos && host.find_first_of(" :/") == std::string::npos, name,
               "MasterAddress is no host name");
        const int port = Number(name, "MasterPort");
        Unless(port >= 1 && port <= 65535, name, "MasterPort is no port");
        Unless(!game["MasterPacket"].empty(), name, "has no request");
        Unless(!game["MasterResponse"].empty(), name, "has no reply header");
    }

    // It becomes a part of a file's name and the key of a node in the tree.
    void CheckShort(const std::string& name, const std::string& gameShort) {
        const bool plain = !gameShort.empty() && std::all_of(gameShort.begin(), gameShort.end(), [](char c) {
            return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        });
        Unless(plain, name, "GameShort is not made of small letters and digits");
        const bool taken =
            std::find(std::begin(FixedNodes), std::end(FixedNodes), gameShort) != std::end(FixedNodes) ||
            gameShort.starts_with("fav") || gameShort.starts_with("mod");
        Unless(!taken, name, "GameShort is the key of another node");
        Unless(shorts_.insert(gameShort).second, name, "GameShort is another game's");
    }

    void CheckMod(const std::string& name) {
        if (!HasKeys(name, {"BasedGame", "Description", "GameName", "GameVersion"}))
            return;
        Section& mod = sections_[name];
        Unless(shorts_.contains(mod["BasedGame"]), name, "BasedGame is no game's short name");
        Unless(!mod["Description"].empty(), name, "has no description");
        Unless(!mod["GameName"].empty(), name, "has no name that a server could report");
        Unless(mods_.insert(mod["BasedGame"] + ';' + mod["GameName"]).second, name, "is there twice");
    }

    std::map<std::string, Section> sections_;
    std::set<std::string> shorts_;
    std::set<std::string> mods_;
    std::vector<std::string> faults_;
};

} // namespace

std::vector<std::string> DefinitionFaults(std::string_view gamesIni) {
    return Check(gamesIni).Faults();
}

} // namespace quarn
