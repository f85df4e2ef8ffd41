#pragma once

// Reads replies as the browser does, its oddities included: values of variables without a column are read
// as keys, a field is searched from its second character on, Doom 3 pings come out byte-swapped. Written
// for these tests alone, so that an honest reply that a browser could not use in full is found here.

#include "tools/gamenet/world/Settings.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace quarn::gamenet {

// A reply that an honest server must not send: a field without an end, text in place of a number.
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

// The replies to one look at a server. The three of the Half-Life family may come in any order.
Reading ReadReplies(Family family, const std::vector<std::string>& replies);

// The addresses of a list, without a truncated last one. Empty if the header differs.
std::vector<Endpoint> ReadMasterList(Family family, const std::string& header, const std::string& reply);

} // namespace quarn::gamenet
