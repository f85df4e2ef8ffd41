#pragma once

// What the tests of the parsers share.

#include "tests/fakes/ProgramTest.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace quarn {

inline std::string Bytes(std::initializer_list<int> codes) {
    std::string bytes;
    for (const int code : codes)
        bytes += static_cast<char>(code);
    return bytes;
}

inline std::string Repeated(std::string_view text, std::size_t times) {
    std::string result;
    for (std::size_t i = 0; i < times; ++i)
        result += text;
    return result;
}

// One server to parse replies into, at index 1.
class StatusTest : public ProgramTest {
  protected:
    StatusTest() {
        program.Servers.Reset(1);
        program.ServerCount = 1;
    }

    ServerRecord& Server() { return program.Servers[1]; }

    // "Score/Ping/Name" of each player in the list, whether counted or not.
    std::vector<std::string> PlayerList() {
        std::vector<std::string> players;
        for (std::int32_t i = 1; i <= Server().PlayerList.HighestIndex(); ++i) {
            const PlayerRecord& player = Server().PlayerList[i];
            players.push_back(std::to_string(player.Score) + '/' + std::to_string(player.Ping) + '/' +
                              player.Name);
        }
        return players;
    }
};

} // namespace quarn
