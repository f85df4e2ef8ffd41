#include "tests/fakes/HeadlessBrowser.h"

#include "core/modMain.h"
#include "core/modStringHelper.h"
#include "query/clsIPLocation.h"
#include "support/clsAppLog.h"
#include "tests/fakes/IniText.h"
#include "tests/fakes/LoggedEntries.h"

#include <utility>

namespace quarn {

const char* const HeadlessGamesIni = "[General]\n"
                                     "IniVer=1020050\nIniDesc=Test games\nGameNum=4\nMODNum=4\n"
                                     "[Game1]\n"
                                     "Description=Arena\nExeName=arena.exe\nGameShort=q3\nEngine=q3\n"
                                     "MasterAddress=master.q3.example\nMasterPort=27950\n"
                                     "MasterPacket=$255$255$255$255getservers$3268\n"
                                     "MasterResponse=$255$255$255$255getserversResponse\n"
                                     "[Game2]\n"
                                     "Description=Demons\nExeName=demons.exe\nGameShort=d3\nEngine=d3\n"
                                     "MasterAddress=127.0.0.2\nMasterPort=27650\n"
                                     "MasterPacket=$255$255getServers$0\nMasterResponse=$255$255servers\n"
                                     "[Game3]\n"
                                     "Description=Crowbar\nExeName=crowbar.exe\nGameShort=hl\nEngine=hl\n"
                                     "MasterAddress=127.0.0.3\nMasterPort=27010\n"
                                     "MasterPacket=1\nMasterResponse=$255$255$255$255f$10\n"
                                     "[Game4]\n"
                                     "Description=Hidden\nExeName=hidden.exe\nGameShort=hidden\nEngine=q3\n"
                                     "[MOD1]\nBasedGame=q3\nDescription=OSP$32Tourney\nGameName=osp\n"
                                     "[MOD2]\nBasedGame=q3\nDescription=Rocket Arena\nGameName=ra3\n"
                                     "[MOD3]\nBasedGame=hl\nDescription=Counter\nGameName=cstrike\n"
                                     "[MOD4]\nBasedGame=hidden\nDescription=Of hidden\nGameName=x\n";

const char* const HeadlessQuarnIni = "[Selection]\nLastGame=9\nLastServer=0\nLastSortColumn=2\n"
                                     "LastSortOrder=0\n"
                                     "[Filter]\nLocked=0\nPing=0\n"
                                     "[Favorites]\nNumber=2\nName1=Friends\nName2=Duels\n"
                                     "[Games]\nVisible1=1\nVisible2=1\nVisible3=1\nVisible4=0\n";

namespace {

constexpr const char* SettingsPath = "C:\\Quarn\\Quarn.ini";

} // namespace

HeadlessBrowser::HeadlessBrowser() {
    fake.files.Put("C:\\Quarn\\Games.ini", HeadlessGamesIni);
    fake.files.Put(SettingsPath, HeadlessQuarnIni);
    fake.hosts.addresses["master.q3.example"] = "127.0.0.1";
}

void HeadlessBrowser::Set(const std::string& section, const std::string& key, const std::string& value) {
    fake.files.Put(SettingsPath, WithIniValue(fake.files.Get(SettingsPath), section, key, value));
}

std::string HeadlessBrowser::Setting(const std::string& section, const std::string& key) const {
    return IniValue(fake.files.Get(SettingsPath), section, key).value_or("(missing)");
}

bool HeadlessBrowser::Start() {
    return Main(program, fake.desktop, [this] {
        form_.emplace(program, fake.desktop, window, dialogs, sckMaster, sckServer, engines);
        MainControls& controls = form_->controls;
        for (Timer* const timer : {&controls.tmrTimeout, &controls.tmrMaster, &controls.tmrPorts,
                                   &controls.tmrDeadlines, &controls.tmrTreeRest, &controls.tmrSorting})
            timers_.push_back(std::make_unique<FakeTimerDriver>(fake.events, *timer));
        window.resized = [this] { form_->Form_Resize(); };
        window.dialogIsOpen = [this] { return fake.prompts.IsOpen() || !dialogs.open.empty(); };
        window.whenCancelled = [this] { In(50, [this] { form_->ContinueClosing(); }); };
        form_->Form_Load();
        if (!Ended())
            form_->Form_Activate();
    });
}

void HeadlessBrowser::ClickNode(const std::string& key) {
    Controls().trvGames.Select(key);
    Form().tree.trvGames_NodeClick(key);
}

void HeadlessBrowser::SelectRows(std::initializer_list<std::int32_t> rows) {
    ListView& list = Controls().lvwServers;
    list.NoteSelected(1, list.RowCount(), false);
    for (const std::int32_t row : rows)
        list.NoteSelected(row, row, true);
    list.NoteFocused(rows.size() == 0 ? 0 : *rows.begin());
}

void HeadlessBrowser::ClickRow(std::int32_t row) {
    SelectRows({row});
    Form().servers.lvwServers_Click();
    Form().servers.lvwServers_MouseUp();
}

std::string HeadlessBrowser::ListFile(const std::vector<std::string>& servers) {
    std::string content = " " + std::to_string(servers.size()) + "\r\n";
    std::int32_t number = 0;
    for (const std::string& server : servers) {
        const std::string n = std::to_string(++number);
        const std::size_t colon = server.find(':');
        content += server.substr(0, colon) + ";" + server.substr(colon + 1) + ";--;Server " + n + ";" + n +
                   ";0;16;baseq3;q3dm1;0;;;\r\n";
    }
    return content;
}

void HeadlessBrowser::PutList(const std::string& listName, const std::vector<std::string>& servers) {
    fake.files.Put(PathOf(listName), ListFile(servers));
}

std::vector<std::string> HeadlessBrowser::Block(int block, int count) {
    std::vector<std::string> servers;
    for (int i = 1; i <= count; ++i)
        servers.push_back("127.0." + std::to_string(block) + "." + std::to_string(i) + ":27960");
    return servers;
}

std::vector<std::string> HeadlessBrowser::Addresses(std::int32_t count) {
    std::vector<std::string> addresses;
    for (std::int32_t n = 1; n <= count; ++n)
        addresses.push_back("127.0." + std::to_string(1 + n / 256) + "." + std::to_string(n % 256) +
                            ":27960");
    return addresses;
}

void HeadlessBrowser::PutServers(const std::vector<std::string>& addresses, gamenet::Family family) {
    std::int32_t number = 0;
    for (const std::string& address : addresses)
        network.servers[address] = MakeServer(family, "Live " + std::to_string(++number), "q3dm17", "baseq3");
}

std::int32_t HeadlessBrowser::AnyRow(std::int32_t number) {
    const std::int32_t count = RowCount();
    if (count == 0)
        return 0;
    return (number % count + count) % count + 1;
}

std::string HeadlessBrowser::Cell(std::int32_t row, std::int32_t subItem) {
    const ListView& list = Controls().lvwServers;
    return list.Cell(row, 1 + subItem).text;
}

std::vector<std::string> HeadlessBrowser::Column(std::int32_t subItem) {
    std::vector<std::string> texts;
    for (std::int32_t row = 1; row <= RowCount(); ++row)
        texts.push_back(Cell(row, subItem));
    return texts;
}

std::vector<std::string> HeadlessBrowser::Tags() {
    std::vector<std::string> tags;
    for (std::int32_t row = 1; row <= RowCount(); ++row)
        tags.push_back(std::as_const(Controls().lvwServers).Row(row).main.tag);
    return tags;
}

std::vector<std::string> HeadlessBrowser::TreeKeys() {
    std::vector<std::string> keys;
    for (std::int32_t position = 1; position <= Controls().trvGames.Count(); ++position)
        keys.push_back(Controls().trvGames.At(position).key);
    return keys;
}

std::vector<std::string> HeadlessBrowser::Texts(const ListView& list) {
    std::vector<std::string> texts;
    for (std::int32_t row = 1; row <= list.RowCount(); ++row) {
        std::string text = list.Row(row).main.text;
        for (const ListCell& cell : list.Row(row).subItems)
            text += "|" + cell.text;
        texts.push_back(text);
    }
    return texts;
}

std::vector<std::string> HeadlessBrowser::Errors() const {
    return LoggedErrors(*program.AppLog);
}

std::vector<std::string> HeadlessBrowser::LogFile() const {
    return LoggedEntries(fake.files.Get("C:\\Quarn\\Quarn.log"));
}

} // namespace quarn
