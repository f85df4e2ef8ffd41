#include "core/modMain.h"

#include "base/RunTimeError.h"
#include "base/Succeeds.h"

#include <algorithm>
#include <string_view>

namespace quarn {

namespace {

// A number of the settings file. Its default is the value that a fresh ProgramState holds.
struct NumberSetting {
    const char* section;
    const char* key;
    std::int32_t ProgramState::*value;
};

constexpr NumberSetting NumberSettings[] = {
    {"General", "MinToTray", &ProgramState::MinToTray},
    {"General", "KeepOnTop", &ProgramState::KeepOnTop},
    {"General", "RemWinPos", &ProgramState::RemWinPos},
    {"General", "WinTop", &ProgramState::WinTop},
    {"General", "WinLeft", &ProgramState::WinLeft},
    {"General", "WinHeight", &ProgramState::WinHeight},
    {"General", "WinWidth", &ProgramState::WinWidth},
    {"General", "WinState", &ProgramState::WinState},
    {"Selection", "LastGame", &ProgramState::LastGame},
    {"Selection", "LastServer", &ProgramState::LastServer},
    {"Selection", "LastSortColumn", &ProgramState::LastSortColumn},
    {"Selection", "LastSortOrder", &ProgramState::LastSortOrder},
    {"Filter", "Locked", &ProgramState::FilterLocked},
    {"Filter", "Ping", &ProgramState::FilterPing},
    {"Scanning", "PingTimeout", &ProgramState::PingTimeout},
    {"Favorites", "Number", &ProgramState::FavoritesNumber},
};
constexpr NumberSetting LauncherSetting = {"Launcher", "QuitAfterStart", &ProgramState::QuitAfterStart};

// A setting that is in the file only while it differs from its default. Another value counts as the nearest.
struct ExtraSetting {
    const char* key;
    std::int32_t ProgramState::*value;
    std::int32_t lowest;
    std::int32_t highest;
};

constexpr const char* ExtrasSection = "Extras";

constexpr ExtraSetting ExtraSettings[] = {
    {"Simultaneous", &ProgramState::Simultaneous, 1, MostSimultaneous},
    {"SaveListAtExit", &ProgramState::SaveListAtExit, 0, 1},
    {"ListOnce", &ProgramState::ListOnce, 0, 1},
    {"NaturalSort", &ProgramState::NaturalSort, 0, 1},
    {"KeepSorted", &ProgramState::KeepSorted, 0, 1},
    {"ShowAtStart", &ProgramState::ShowAtStart, 0, 1},
    {"SearchBox", &ProgramState::SearchBox, 0, 1},
    {"AskMasterFirst", &ProgramState::AskMasterFirst, 0, 1},
    {"AskPassword", &ProgramState::AskPassword, 0, 1},
};

// Visits every setting that is always in the file, in the order of the file; reading and writing use this one
// list. The visitor is called with section, key, value and, for a number, its default.
template<class Program, class Visitor>
void ForEachSetting(Program& program, Visitor&& visit) {
    const ProgramState firstRun;
    const auto visitNumber = [&](const NumberSetting& setting) {
        visit(setting.section, setting.key, program.*setting.value, firstRun.*setting.value);
    };
    for (const NumberSetting& setting : NumberSettings)
        visitNumber(setting);
    for (std::size_t folder = 1; folder <= MaxFavoritesFolders; ++folder)
        visit("Favorites", "Name" + std::to_string(folder), program.FavoriteNames[folder]);
    visitNumber(LauncherSetting);
    for (std::int32_t game = 1; game <= program.GameNum; ++game) {
        const std::string number = std::to_string(game);
        visit("Games", "Path" + number, program.GamePath[game]);
        visit("Games", "Config" + number, program.GameConfig[game]);
        visit("Games", "Name" + number, program.GamePlayerName[game]);
        visit("Games", "Visible" + number, program.GameVisible[game], 0);
    }
}

// The same for the settings that are in the file only while they differ from their defaults.
template<class Program, class Visitor>
void ForEachExtra(Program& program, Visitor&& visit) {
    const ProgramState firstRun;
    for (const ExtraSetting& setting : ExtraSettings)
        visit(setting, program.*setting.value, firstRun.*setting.value);
}

// In bytes; far more than the settings of a hundred games need.
constexpr std::size_t RoomForSettings = 1 << 16;

std::string SettingsPath(const ProgramState& program) {
    return program.AppPath + "Quarn.ini";
}

struct SettingReader {
    const ProfileFiles& profiles;
    std::string path;

    void operator()(const char* section, const std::string& key, std::int32_t& value,
                    std::int32_t missing) const {
        value = profiles.ReadInteger(path, section, key, missing);
    }
    void operator()(const char* section, const std::string& key, std::string& value) const {
        value = profiles.ReadText(path, section, key, ProfileTextSize);
    }
    void operator()(const ExtraSetting& setting, std::int32_t& value, std::int32_t missing) const {
        (*this)(ExtrasSection, setting.key, value, missing);
        value = std::clamp(value, setting.lowest, setting.highest);
    }
};

struct SettingWriter {
    ProfileFiles& profiles;
    std::string path;

    void operator()(const char* section, const std::string& key, std::int32_t value,
                    std::int32_t /*missing*/) const {
        (*this)(section, key, std::to_string(value));
    }
    void operator()(const char* section, const std::string& key, const std::string& value) const {
        if (!profiles.WriteText(path, section, key, value))
            throw RunTimeError(ErrorNumber::PathFileAccessError);
    }
    void operator()(const ExtraSetting& setting, std::int32_t value, std::int32_t missing) const {
        if (value != missing)
            return (*this)(ExtrasSection, setting.key, value, missing);
        // After the first line of a key is removed, a second one would count.
        constexpr int MostLines = 100;
        const auto isThere = [&] {
            return !profiles.ReadText(path, ExtrasSection, setting.key, ProfileTextSize).empty();
        };
        for (int line = 0; line < MostLines && isThere(); ++line)
            if (!profiles.RemoveKey(path, ExtrasSection, setting.key))
                throw RunTimeError(ErrorNumber::PathFileAccessError);
    }
};

// The part of a text that can be read back from an INI file: the profile calls stop at a line end and strip
// blanks and quotes.
std::string_view Kept(std::string_view text) {
    constexpr std::string_view Taken = " \t\v\f\"'";
    text = text.substr(0, text.find_first_of(std::string_view("\0\r\n", 3)));
    const std::size_t begin = std::min(text.find_first_not_of(Taken), text.size());
    return text.substr(begin, text.find_last_not_of(Taken) + 1 - begin);
}

// Fails unless a file holds the settings that were written into it.
struct SettingCheck {
    const ProfileFiles& profiles;
    std::string path;

    void operator()(const char* section, const std::string& key, std::int32_t value,
                    std::int32_t /*missing*/) const {
        (*this)(section, key, std::to_string(value));
    }
    void operator()(const char* section, const std::string& key, const std::string& value) const {
        const std::size_t enough = value.size() + ProfileTextSize;
        if (Kept(profiles.ReadText(path, section, key, enough)) != Kept(value))
            throw RunTimeError(ErrorNumber::DiskFull);
    }
    void operator()(const ExtraSetting& setting, std::int32_t value, std::int32_t missing) const {
        (*this)(ExtrasSection, setting.key, value == missing ? std::string() : std::to_string(value));
    }
};

} // namespace

void LoadSettings(ProgramState& program, const Desktop& desktop) {
    const std::string path = SettingsPath(program);
    program.SettingsUnreadable = !Succeeds([&] { desktop.files.ReadIfThere(path); });
    ForEachSetting(program, SettingReader{desktop.profiles, path});
    ForEachExtra(program, SettingReader{desktop.profiles, path});
}

void SaveSettings(const ProgramState& program, Desktop& desktop) {
    if (program.SettingsUnreadable)
        return;
    Files& files = desktop.files;
    ProfileFiles& profiles = desktop.profiles;
    const std::string path = SettingsPath(program);
    const std::string copy = path + ".new";
    const auto removeCopy = [&] { Succeeds([&] { files.Remove(copy); }); };

    removeCopy(); // of a run that crashed; it may be write-protected
    const bool saved = Succeeds([&] {
        const std::string before = files.ReadIfThere(path).value_or(std::string());
        // On a full disk the profile calls truncate the file without an error: keys at its end that are not
        // settings would be lost. So the disk must have more space than the settings need.
        files.Write(copy, before + std::string(before.size() + RoomForSettings, ' '));
        files.Write(copy, before);
        ForEachSetting(program, SettingWriter{profiles, copy});
        ForEachExtra(program, SettingWriter{profiles, copy});
        profiles.Forget(copy);
        files.Read(copy); // waits for a virus scanner; the settings would seem to be missing
        ForEachSetting(program, SettingCheck{profiles, copy});
        ForEachExtra(program, SettingCheck{profiles, copy});
        files.Move(copy, path);
    });
    if (!saved)
        removeCopy();
}

} // namespace quarn
