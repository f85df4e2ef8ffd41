#include "views/ToolbarButtons.h"

#include "views/frmMain.h"

#include <iterator>

namespace quarn {

namespace {

struct ButtonRow {
    const char* key = ""; // empty: a separator
    const char* label = "";
    const char* toolTip = "";
    void (*click)(frmMain& form) = nullptr;
};

constexpr ButtonRow Separator;

constexpr ButtonRow Buttons[] = {
    {"querymaster", "Renew", "Get new server list from Master",
     [](frmMain& form) { form.master.mnuServerListGet_Click(); }},
    Separator,
    {"refreshall", "Refresh all", "Refresh all servers in list",
     [](frmMain& form) { form.scan.mnuServRefreshAll_Click(); }},
    {"refresh", "Refresh", "Refresh selected server(s)",
     [](frmMain& form) { form.scan.mnuServRefresh_Click(); }},
    {"stop", "Stop", "Stop current operation", [](frmMain& form) { form.scan.Stop(); }},
    Separator,
    {"join", "Join", "Join server as player", [](frmMain& form) { form.game.mnuServConnectPlay_Click(); }},
    {"monitor", "Monitor", "Monitor server with Velmar",
     [](frmMain& form) { form.game.mnuServMonitor_Click(); }},
    Separator,
    {FavoritesButton, "Favorites", "Add server to favorites",
     [](frmMain& form) { form.ShowFavoritesMenu(); }},
};

} // namespace

void AddToolbarButtons(Toolbar& toolbar) {
    toolbar.buttons.Reset(static_cast<std::int32_t>(std::size(Buttons)));
    std::int32_t position = 0;
    for (const ButtonRow& row : Buttons)
        toolbar.buttons[++position] = {.key = row.key, .label = row.label, .toolTip = row.toolTip};
}

void RunToolbarButton(std::string_view key, frmMain& form) {
    for (const ButtonRow& row : Buttons)
        if (row.click != nullptr && key == row.key)
            row.click(form);
}

} // namespace quarn
