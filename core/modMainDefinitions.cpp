#include "core/modMain.h"

#include "base/Succeeds.h"
#include "core/modStringHelper.h"

namespace quarn {

namespace {

class DefinitionsFile {
  public:
    DefinitionsFile(const ProgramState& program, const Desktop& desktop)
        : profiles_(desktop.profiles), path_(program.AppPath + "Games.ini") {
        // Waits if another program holds the file: its keys would seem to be missing.
        Succeeds([&] { desktop.files.ReadIfThere(path_); });
    }

    std::int32_t Number(const std::string& section, const char* key, std::int32_t missing = 0) const {
        return profiles_.ReadInteger(path_, section, key, missing);
    }
    std::string Text(const std::string& section, const char* key) const {
        return profiles_.ReadText(path_, section, key, ProfileTextSize);
    }
    std::string DecodedText(const std::string& section, const char* key) const {
        std::string text = Text(section, key);
        return DecodeIniEscapes(text);
    }

  private:
    const ProfileFiles& profiles_;
    std::string path_;
};

GameDefinition ReadGame(const DefinitionsFile& file, const std::string& section) {
    GameDefinition game;
    game.Description = file.Text(section, "Description");
    game.ExeName = file.Text(section, "ExeName");
    game.GameShort = file.Text(section, "GameShort");
    game.Engine = file.Text(section, "Engine");
    game.MasterAddress = file.Text(section, "MasterAddress");
    game.MasterPort = file.Number(section, "MasterPort", 1);
    game.MasterPacket = file.DecodedText(section, "MasterPacket");
    game.MasterResponse = file.DecodedText(section, "MasterResponse");
    return game;
}

ModDefinition ReadMod(const DefinitionsFile& file, const std::string& section) {
    ModDefinition mod;
    mod.BasedGame = file.Text(section, "BasedGame");
    mod.Description = file.DecodedText(section, "Description");
    mod.GameName = file.DecodedText(section, "GameName");
    mod.GameVersion = file.DecodedText(section, "GameVersion");
    return mod;
}

void RequireReasonable(std::int32_t count) {
    if (count > MaxDefinitions)
        throw RunTimeError(ErrorNumber::OutOfMemory);
}

} // namespace

void LoadGamesIniGeneral(ProgramState& program, const Desktop& desktop) {
    const DefinitionsFile file(program, desktop);
    program.IniVer = file.Number("General", "IniVer");
    program.IniDesc = file.Text("General", "IniDesc");
    program.GameNum = file.Number("General", "GameNum");
    program.MODNum = file.Number("General", "MODNum");

    RequireReasonable(program.GameNum);
    program.Games.Reset(program.GameNum);
    program.GamePath.Reset(program.GameNum);
    program.GameConfig.Reset(program.GameNum);
    program.GamePlayerName.Reset(program.GameNum);
    program.GameVisible.Reset(program.GameNum);
}

void LoadGamesIniSections(ProgramState& program, const Desktop& desktop) {
    const DefinitionsFile file(program, desktop);
    for (std::int32_t game = 1; game <= program.GameNum; ++game)
        program.Games[game] = ReadGame(file, "Game" + std::to_string(game));

    RequireReasonable(program.MODNum);
    program.Mods.Reset(program.MODNum);
    for (std::int32_t mod = 1; mod <= program.MODNum; ++mod)
        program.Mods[mod] = ReadMod(file, "MOD" + std::to_string(mod));
}

std::string DecodeIniEscapes(std::string& text) {
    // "$10" must be replaced before "$1", which is its prefix.
    ReplaceAll(text, "$255", "\xFF");
    ReplaceAll(text, "$32", " ");
    ReplaceAll(text, "$10", "\n");
    ReplaceAll(text, "$1", "\x01");
    ReplaceAll(text, "$0", std::string_view("\0", 1));
    return text;
}

} // namespace quarn
