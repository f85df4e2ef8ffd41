#include "core/modMain.h"

#include "base/RunTimeError.h"
#include "base/Succeeds.h"

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

// Visits every setting in the order of the file: the one list of them, for reading and writing alike. The
// visitor is called with section, key, value and, for a number, its default.
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
};

} // namespace

void LoadSettings(ProgramState& program, const Desktop& desktop) {
    ForEachSetting(program, SettingReader{desktop.profiles, SettingsPath(program)});
}

void SaveSettings(const ProgramState& program, Desktop& desktop) {
    const std::string path = SettingsPath(program);
    const std::string copy = path + ".new";
    const bool saved = Succeeds([&] {
        desktop.files.Write(copy, desktop.files.ReadIfThere(path).value_or(std::string()));
        ForEachSetting(program, SettingWriter{desktop.profiles, copy});
        desktop.files.Move(copy, path);
    });
    if (!saved)
        Succeeds([&] { desktop.files.Remove(copy); });
}

} // namespace quarn
