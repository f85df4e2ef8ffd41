#pragma once

// A program state with its log, on a desktop in memory.

#include "core/modDefinitions.h"
#include "core/modStringHelper.h"
#include "support/clsAppLog.h"
#include "tests/fakes/FakeDesktop.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
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

class QueryTest : public ::testing::Test {
  protected:
    QueryTest() {
        program.AppPath = "C:\\Quarn\\";
        program.AppLog = std::make_unique<clsAppLog>(fake.desktop, program.AppPath);
    }

    // "Module;Routine;ErrNumber" of every entry so far.
    std::vector<std::string> Logged() const {
        std::vector<std::string> entries;
        std::string history = program.AppLog->HistoryLog();
        ReplaceAll(history, "\r\n", "\n");
        for (const std::string_view line : Split(history, '\n')) {
            const std::vector<std::string_view> fields = Split(line, ';');
            if (fields.size() >= 4)
                entries.push_back(std::string(fields[0]) + ';' + std::string(fields[1]) + ';' +
                                  std::string(fields[3]));
        }
        return entries;
    }

    FakeDesktop fake;
    ProgramState program;
};

// One server to parse replies into, at index 1.
class StatusTest : public QueryTest {
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
