#include "query/modGamQuery.h"

#include "tests/fakes/FakeUdpSocket.h"
#include "tests/query/ParserTest.h"

namespace quarn {
namespace {

using namespace std::string_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ServerQuery : public ProgramTest {
  protected:
    std::vector<std::string> SentTo(const std::string& engine) {
        FakeUdpSocket socket(fake.clock, fake.events, fake.hosts);
        socket.RemoteHost = "127.0.0.1";
        socket.RemotePort = 27960;
        SendServerQuery(*program.AppLog, FindEngine(StandardEngines(), engine), socket);
        std::vector<std::string> datagrams;
        for (const SentDatagram& datagram : socket.sent)
            datagrams.push_back(datagram.bytes);
        return datagrams;
    }
};

TEST_F(ServerQuery, AsksEachEngineInItsOwnWords) {
    EXPECT_THAT(SentTo("q3"), ElementsAre("\xFF\xFF\xFF\xFFgetstatus"s));
    EXPECT_THAT(SentTo("d3"), ElementsAre("\xFF\xFFgetinfo\0\0\0\0"s));
    EXPECT_THAT(SentTo("hl"),
                ElementsAre("\xFF\xFF\xFF\xFFinfo"s, "\xFF\xFF\xFF\xFFplayers"s, "\xFF\xFF\xFF\xFFrules"s));
}

TEST_F(ServerQuery, AsksNothingOfAnEngineThatItDoesNotKnow) {
    for (const char* engine : {"", "Q3", "q3 ", "d", "hl2"})
        EXPECT_THAT(SentTo(engine), IsEmpty()) << engine;
}

class BrokenSocket : public FakeUdpSocket {
  public:
    using FakeUdpSocket::FakeUdpSocket;
    void SendData(std::string_view) override { throw RunTimeError(ErrorNumber::DeviceIOError); }
};

TEST_F(ServerQuery, ASocketThatFailsIsLoggedAndNotShown) {
    BrokenSocket socket(fake.clock, fake.events, fake.hosts);
    SendServerQuery(*program.AppLog, &StandardEngines().front(), socket);
    EXPECT_THAT(Logged(), ElementsAre("modGamQuery;SendServerQuery;57"));
    EXPECT_THAT(fake.prompts.shown, IsEmpty());
}

TEST(ClearServerStatus, ResetsWhatAReplyFillsAndLeavesTheRest) {
    ServerRecord server;
    server.Address = "10.0.0.1";
    server.Port = 27960;
    server.Locked = 1;
    server.Country = "XX";
    server.Ping = 50;
    server.MaxPlayers = 16;
    server.Name = "Name";
    server.Map = "q3dm17";
    server.ModName = "osp";
    server.Players = 3;
    server.PlayerList.Reset(3);
    server.Variables = "\\a\\b";
    server.Password = "secret";
    server.LastVisit = {1};

    ClearServerStatus(server);
    EXPECT_EQ(server.MaxPlayers, 0);
    EXPECT_EQ(server.Name, "");
    EXPECT_EQ(server.Map, "");
    EXPECT_EQ(server.ModName, "0");
    EXPECT_EQ(server.Players, 0);
    EXPECT_EQ(server.PlayerList.HighestIndex(), 0);

    EXPECT_EQ(server.Address, "10.0.0.1");
    EXPECT_EQ(server.Port, 27960);
    EXPECT_EQ(server.Locked, 1);
    EXPECT_EQ(server.Country, "XX");
    EXPECT_EQ(server.Ping, 50);
    EXPECT_EQ(server.Variables, "\\a\\b");
    EXPECT_EQ(server.Password, "secret");
    EXPECT_EQ(server.LastVisit, DateTime{1});
}

class Names : public ProgramTest {};

TEST_F(Names, LoseTheirColourCodesAndQuotes) {
    const struct {
        const char* text;
        const char* name;
    } cases[] = {
        {"", ""},
        {"Plain name", "Plain name"},
        {"^1Big^7 \"Boss\"", "Big Boss"},
        {"^0^9digits", "digits"},
        {"^Nx", "x"},
        {"^n^b^Bx", "x"},
        {"^xFF00FFPink", "Pink"},
        {"^XFF00FFPink", "Pink"},
        {"^x\"\"^^^^Pink", "Pink"}, // the seven characters go whatever they are
        {"^xFF00F", ""},            // also when fewer are left
        {"^x", ""},
        {"^", "^"},
        {"name^", "name^"},
        {"^Zed", "^Zed"},
        {"^^1a", "^a"},
        {"^\"1", "^1"},
        {"^ 1", "^ 1"},
        {"\"", ""},
        {"\"\"\"\"", ""},
        {"^1^2^3^", "^"},
        {"^:a^/b", "^:a^/b"}, // neighbours of the digits
        {"%n%s\r\t\x7F", "%n%s\r\t\x7F"},
        {"\xC4\xFF^\xB2", "\xC4\xFF^\xB2"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ClearName(*program.AppLog, c.text), c.name) << c.text;
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(Names, KeepNulsAndAnyLength) {
    EXPECT_EQ(ClearName(*program.AppLog, "a\0b"s), "a\0b"s);
    EXPECT_EQ(ClearName(*program.AppLog, Repeated("^1x", 20000)), std::string(20000, 'x'));
}

} // namespace
} // namespace quarn
