#pragma once

// The main window, shown with its own folder and one game.

#include "query/clsIPLocation.h"
#include "support/clsAppLog.h"
#include "tests/fakes/Samples.h"
#include "tests/win32/harness/Pumping.h"
#include "tests/win32/harness/TemporaryFolder.h"
#include "win32/MainWindow.h"
#include "win32/resources/ids.h"

#include <commctrl.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace quarn {

// The real window with its own folder and one game.
class ShownWindowTest : public testing::Test {
  protected:
    ShownWindowTest() {
        program.AppPath = folder.Path() + "\\";
        program.AppLog = std::make_unique<clsAppLog>(desktop.Interfaces(), program.AppPath);
        program.IPLocation =
            std::make_unique<clsIPLocation>(desktop.Interfaces().files, program.AppPath + "countryip.dat");

        ResetGames(program, 1);
        program.Games[1].GameShort = "q3";
        program.Games[1].Description = "Quake III Arena";
        program.Games[1].Engine = "q3";
        program.GameVisible[1] = 1;
        program.LastGame = 9; // the game's node
        program.MinToTray = 0;
        program.FavoriteNames[1] = "Friends & Foes";
        program.FavoriteNames[2] = "-";

        window = std::make_unique<MainWindow>(program, desktop);
        window->Show();
        RunPendingEvents();
    }

    void RunPendingEvents() {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) && message.message != WM_QUIT) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        quit = quit || message.message == WM_QUIT;
        window->FlushModels();
    }

    bool IsGoneSoon();

    // Lists servers of 10.0.0.0/8; row and record n is 10.0.0.n, port n.
    void ListServers(std::int32_t count) {
        for (std::int32_t n = 1; n <= count; ++n)
            window->Form().servers.AddServer("10.0.0." + std::to_string(n), std::to_string(n));
        window->FlushModels();
    }
    std::vector<std::string> Addresses() {
        std::vector<std::string> addresses;
        const ListView& list = Models().lvwServers;
        for (std::int32_t row = 1; row <= list.RowCount(); ++row)
            addresses.push_back(list.Cell(row, AddressColumn + 1).text);
        return addresses;
    }

    // A key in a control, through the program's own message loop.
    void PressKey(int control, WPARAM key, LPARAM flags = 1) {
        PostMessageA(Control(control), WM_KEYDOWN, key, flags);
        for (MSG pending; PeekMessageA(&pending, nullptr, 0, 0, PM_NOREMOVE);)
            desktop.Events().WaitForEvent();
        window->FlushModels();
    }
    static constexpr LPARAM Repeated = 1 | LPARAM{1} << 30;

    HWND Control(int id) const { return GetDlgItem(window->Handle(), id); }
    MainControls& Models() { return window->Form().controls; }

    RECT BoundsOf(int id) const {
        RECT bounds{};
        GetWindowRect(Control(id), &bounds);
        MapWindowPoints(nullptr, window->Handle(), reinterpret_cast<POINT*>(&bounds), 2);
        return bounds;
    }

    std::string CaptionOf(UINT id) const {
        char caption[100] = "";
        GetMenuStringA(GetMenu(window->Handle()), id, caption, sizeof caption, MF_BYCOMMAND);
        return caption;
    }

    bool IsEnabled(UINT id) const {
        return (GetMenuState(GetMenu(window->Handle()), id, MF_BYCOMMAND) & (MF_GRAYED | MF_DISABLED)) == 0;
    }

    TemporaryFolder folder;
    ProgramState program;
    WindowsDesktop desktop;
    std::unique_ptr<MainWindow> window;
    bool quit = false;
};

// Runs events until the window is gone; the end of the program is noted.
inline bool ShownWindowTest::IsGoneSoon() {
    const bool isGone = PumpUntil([this] {
        MSG end;
        quit = quit || PeekMessageA(&end, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE);
        return window->Handle() == nullptr;
    });
    RunPendingEvents();
    return isGone;
}

} // namespace quarn
