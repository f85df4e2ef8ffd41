#pragma once

// The whole browser without a window: state, desktop and network in memory, the main form on top of them,
// and what a user does. Three games are set up, one of each engine family: "q3" with the MODs 1 (osp) and
// 2 (ra3), "d3" without, "hl" with MOD 3 (cstrike); two favorites folders are in use. A test changes files
// and state before Start.

#include "core/modDefinitions.h"
#include "tests/support_code/EmulatedServers.h"
#include "tests/support_code/FakeDesktop.h"
#include "tests/support_code/FakeFormWindow.h"
#include "tests/support_code/FakeModalForms.h"
#include "tests/support_code/FakeTimerDriver.h"
#include "tests/support_code/FakeUdpSocket.h"
#include "views/frmMain.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quarn {

class HeadlessBrowser {
  public:
    HeadlessBrowser();
    HeadlessBrowser(const HeadlessBrowser&) = delete;
    HeadlessBrowser& operator=(const HeadlessBrowser&) = delete;

    // Positions of the tree's nodes.
    enum Position { GamesFolder = 1, FavoritesFolder, FiltersFolder, Q3 = 9, D3, HL };

    // Changes a setting before the start.
    void Set(const std::string& section, const std::string& key, const std::string& value);
    void Set(const std::string& section, const std::string& key, std::int32_t value) {
        Set(section, key, std::to_string(value));
    }
    std::string Setting(const std::string& section, const std::string& key) const;

    // Starts the program as its entry does, loads the form and activates it. False: it ended at once.
    bool Start();

    frmMain& Form() { return *form_; }
    MainControls& Controls() { return form_->controls; }
    bool Ended() const { return window.destroyCalls > 0; }

    // The user.
    void ClickNode(const std::string& key);
    void SelectRows(std::initializer_list<std::int32_t> rows); // the first one gets the focus
    void ClickRow(std::int32_t row);
    void RefreshAll() { Form().tbMain_ButtonClick("refreshall"); }
    void RefreshSelected() { Form().tbMain_ButtonClick("refresh"); }
    void Stop() { Form().tbMain_ButtonClick("stop"); }

    // Something that happens in so many milliseconds.
    void In(std::int32_t milliseconds, std::function<void()> action) {
        fake.events.PostIn(milliseconds, std::move(action));
    }

    // A list file of these servers, "address:port" each, with name "Server n", ping n and the MOD baseq3.
    static std::string ListFile(const std::vector<std::string>& servers);
    void PutList(const std::string& listName, const std::vector<std::string>& servers);
    static std::string PathOf(const std::string& listName) {
        return "C:\\Quarn\\servers-" + listName + ".dat";
    }

    // "127.0.1.n:27960" for n from 1; with a server that answers under the name "Live n" when asked for.
    static std::vector<std::string> Addresses(std::int32_t count);
    void PutServers(const std::vector<std::string>& addresses,
                    gamenet::Family family = gamenet::Family::Quake3);

    // What the user sees.
    std::string Status(std::int32_t panel) { return Controls().sbMain.panels[panel].text; }
    std::string Message() { return Status(MessagePanel); }
    std::string Count() { return Status(CountPanel); }
    std::int32_t RowCount() { return Controls().lvwServers.RowCount(); }
    std::string Cell(std::int32_t row, std::int32_t subItem);
    std::vector<std::string> Column(std::int32_t subItem);
    std::vector<std::string> Tags();
    std::vector<std::string> TreeKeys();
    std::vector<std::string> Texts(const ListView& list); // "main text|cell|..." of every row

    std::vector<std::string> Errors() const; // "Module;Routine;ErrNumber" of all errors logged
    std::vector<std::string> LogFile() const;

    FakeDesktop fake;
    ProgramState program;
    EngineTable engines = StandardEngines(); // read by Start
    FakeFormWindow window;
    FakeModalForms dialogs;
    FakeUdpSocket sckMaster{fake.clock, fake.events, fake.hosts};
    FakeUdpSocket sckServer{fake.clock, fake.events, fake.hosts};
    EmulatedServers network{sckServer};

  private:
    std::optional<frmMain> form_;
    std::optional<FakeTimerDriver> timer_;
    std::optional<FakeTimerDriver> treeTimer_;
};

// The settings and definitions that HeadlessBrowser starts from.
extern const char* const HeadlessGamesIni;
extern const char* const HeadlessQuarnIni;

} // namespace quarn
