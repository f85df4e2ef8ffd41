// Reads replies as the browser does, its oddities included: values of variables without a column are read
// as keys, a field is searched from its second character on, Doom 3 pings come out byte-swapped. Written
// for these tests alone, so that an honest reply that a browser could not use in full is found here.
#pragma once

#include "tools/gamenet/Settings.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace quarn::gamenet {

// A reply that an honest server must not send: a field without an end, a number that is none.
class ReadingFailed : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct ReadPlayer {
    int score = 0;
    int ping = 0;
    std::string name;

    bool operator==(const ReadPlayer&) const = default;
};

struct Reading {
    std::string name;
    std::string map;
    std::string mod;
    int maxPlayers = 0;
    int locked = 0;
    std::string variables;
    std::vector<ReadPlayer> players;
};

Reading readQuake3Status(std::string reply);
Reading readDoom3Status(const std::string& reply);
// The three replies go into one reading, in any order.
void readHalfLife(std::string reply, Reading& reading);

// The addresses of a list, a short last one left out; none where the header is another.
std::vector<Endpoint> readMasterList(Family family, const std::string& header, const std::string& reply);

} // namespace quarn::gamenet
