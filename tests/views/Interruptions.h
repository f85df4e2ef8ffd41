#pragma once

// What can happen in the middle of something else: commands, and the places where events run between the
// steps of another command.

#include "tests/fakes/HeadlessBrowser.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quarn {

// Each list has addresses of its own, so that a server tells where it belongs.
enum BlockNumber {
    Q3Block = 11,
    D3Block,
    HLBlock,
    Favorites1Block,
    Favorites2Block,
    MasterBlock,
    TypedBlock
};
std::vector<std::string> Block(int block, int count);

// A browser that shows the list of q3, five servers of which the fourth is silent; every question finds an
// answer.
struct BusyBrowser : HeadlessBrowser {
    BusyBrowser();
};

struct Command {
    const char* name;
    std::function<void(BusyBrowser&)> run;
    bool replacesRecords = false; // afterwards rows may show what is not in the list any more
};
const std::vector<Command>& Commands();

// Starts something and runs `meanwhile` once in the middle of it.
struct Place {
    const char* name;
    std::function<void(BusyBrowser&, const std::function<void()>&)> run;
    bool replacesRecords = false;
};
const std::vector<Place>& Places();

// What takes the window's mouse and keyboard away while events go on: boxes and dialogs.
const std::vector<Place>& ModalPlaces();

// Lets it happen at this one of the yields that come, counted from 1.
void AtYield(BusyBrowser& browser, std::int32_t number, const std::function<void()>& meanwhile);

} // namespace quarn
