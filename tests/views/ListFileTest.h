#pragma once

// Loads and saves the file of one server list.

#include "tests/fakes/ProgramTest.h"
#include "tests/fakes/Samples.h"
#include "views/ServerListFiles.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {

constexpr const char* ListPath = "C:\\Quarn\\servers-q3.dat";
constexpr const char* BackupPath = "C:\\Quarn\\servers-q3.bak";

// A complete line of an entry, without its line end.
inline const std::string Entry = "192.0.2.7;27960;DE;My server;50;3;16;baseq3;q3dm17;0;;\\g_gametype\\4;";

// A server with every field of an entry.
inline ServerRecord FullRecord() {
    ServerRecord server = SampleServer();
    server.Password = "abc";
    server.Variables = "\\sv_hostname\\x";
    server.LastVisit = DateTime::From({2000, 1, 1, 0, 0, 0});
    return server;
}

class ListFileTest : public ProgramTest {
  protected:
    ListFileTest() {
        // The current list, which a load replaces.
        program.Servers.Reset(2);
        program.Servers[1].Address = "192.0.2.1";
        program.Servers[2].Address = "192.0.2.2";
        program.ServerCount = 2;
    }

    void Load(const std::string& content) {
        fake.files.Put(ListPath, content);
        files.LoadServerList("q3");
    }
    ServerRecord& LoadOne(const std::string& line) {
        Load(" 1\r\n" + line + "\r\n");
        EXPECT_EQ(program.Servers.HighestIndex(), 1) << line;
        return program.Servers[program.Servers.HighestIndex()];
    }
    std::string Saved() {
        files.SaveServerList("q3");
        return fake.files.Get(ListPath);
    }
    std::string SavedAlone(const ServerRecord& server) {
        program.Servers.Reset(1);
        program.Servers[1] = server;
        return Saved();
    }
    std::vector<std::string> Addresses() const {
        std::vector<std::string> addresses;
        for (std::int32_t i = 1; i <= program.Servers.HighestIndex(); ++i)
            addresses.push_back(program.Servers[i].Address);
        return addresses;
    }

    CommandGate gate{fake.events};
    ServerListFiles files{program, fake.files, gate};
};

} // namespace quarn
