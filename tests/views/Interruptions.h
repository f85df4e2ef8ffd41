#pragma once

// Commands, and the places where events run in the middle of another command.

#include "tests/fakes/HeadlessBrowser.h"
#include "tests/fakes/UserActions.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quarn {

// Each list has addresses of its own, so that a server's address tells which list it belongs to.
enum BlockNumber {
    Q3Block = 11,
    D3Block,
    HLBlock,
    Favorites1Block,
    Favorites2Block,
    MasterBlock,
    TypedBlock
};

// A browser that shows the list of q3, five servers of which the fourth is silent. Every prompt is answered.
struct BusyBrowser : HeadlessBrowser {
    BusyBrowser();
};

struct Command {
    const char* name;
    std::function<void(BusyBrowser&)> run;
    bool replacesRecords = false; // afterwards rows may show records that have left the list
};
const std::vector<Command>& Commands();

// Starts something and runs `meanwhile` once in the middle of it.
struct Place {
    const char* name;
    std::function<void(BusyBrowser&, const std::function<void()>&)> run;
    bool replacesRecords = false;
};
const std::vector<Place>& Places();

// Prompts and dialogs: they disable the window's mouse and keyboard while events run.
const std::vector<Place>& ModalPlaces();

// Runs it at the given one of the next yields, counted from 1.
void AtYield(BusyBrowser& browser, std::int32_t number, const std::function<void()>& meanwhile);

} // namespace quarn
