#include "tools/gamenet/MasterList.h"

#include "tests/tools/gamenet/BrowserReading.h"
#include "tools/gamenet/DemoNetwork.h"
#include "tools/gamenet/MasterReplies.h"
#include "tools/gamenet/Text.h"
#include "tools/gamenet/Wire.h"

#include <gtest/gtest.h>

namespace quarn::gamenet {
namespace {

const Endpoint first{0x7F010203, 0x6D38};
const Endpoint second{0x7F040506, 0x1234};
const Endpoint third{0x7F070809, 0x5C5C};

MasterList listOf(Family family, std::vector<Endpoint> servers) {
    MasterList list;
    list.family = family;
    list.header = masterHeader(family);
    list.servers = std::move(servers);
    return list;
}

std::vector<Endpoint> manyServers(std::size_t count) {
    std::vector<Endpoint> servers;
    for (std::size_t nth = 0; nth < count; ++nth)
        servers.push_back({0x7F100001 + static_cast<std::uint32_t>(nth), 27960});
    return servers;
}

template<std::size_t size>
std::string bytes(const char (&literal)[size]) {
    return {literal, size - 1};
}

TEST(MasterList, quake3Bytes) {
    EXPECT_EQ(cutIntoDatagrams(listOf(Family::Quake3, {first, third})),
              std::vector<std::string>{bytes("\xFF\xFF\xFF\xFFgetserversResponse\\\x7F\1\2\3\x6D\x38"
                                             "\\\x7F\7\x8\x9\\\\\\EOT\0\0\0")});
}

TEST(MasterList, doom3Bytes) {
    EXPECT_EQ(cutIntoDatagrams(listOf(Family::Doom3, {first, second})),
              std::vector<std::string>{bytes("\xFF\xFFservers\0\x7F\1\2\3\x38\x6D\x7F\4\5\6\x34\x12")});
}

TEST(MasterList, halfLifeBytesInBothForms) {
    MasterList list = listOf(Family::HalfLife, {first, second});
    EXPECT_EQ(cutIntoDatagrams(list), std::vector<std::string>{bytes(
                                          "\xFF\xFF\xFF\xFF\x66\n\\\x7F\1\2\3\x6D\x38\\\x7F\4\5\6\x12\x34")});
    list.halfLifeList = HalfLifeList::Packed;
    EXPECT_EQ(cutIntoDatagrams(list),
              std::vector<std::string>{
                  bytes("\xFF\xFF\xFF\xFF\x66\n\x7F\1\2\3\x6D\x38\x7F\4\5\6\x12\x34\0\0\0\0\0\0")});
}

TEST(MasterList, anEmptyListIsStillOneDatagram) {
    EXPECT_EQ(cutIntoDatagrams(listOf(Family::Quake3, {})),
              std::vector<std::string>{bytes("\xFF\xFF\xFF\xFFgetserversResponse\\EOT\0\0\0")});
    EXPECT_EQ(cutIntoDatagrams(listOf(Family::Doom3, {})),
              std::vector<std::string>{bytes("\xFF\xFFservers\0")});
    EXPECT_EQ(cutIntoDatagrams(listOf(Family::HalfLife, {})),
              std::vector<std::string>{bytes("\xFF\xFF\xFF\xFF\x66\n\\")});
}

TEST(MasterList, isCutAtTheUsualDatagramOrAtSoManyEntries) {
    for (const Family family : {Family::Quake3, Family::Doom3, Family::HalfLife}) {
        MasterList list = listOf(family, manyServers(1000));
        for (const int entries : {0, 1, 7, 1000}) {
            list.entriesPerDatagram = entries;
            std::vector<Endpoint> read;
            const std::vector<std::string> datagrams = cutIntoDatagrams(list);
            for (const std::string& datagram : datagrams) {
                const auto part = readMasterList(family, list.header, datagram);
                read.insert(read.end(), part.begin(), part.end());
                if (entries == 0) {
                    EXPECT_LE(datagram.size(), 1400U);
                }
            }
            EXPECT_EQ(read, list.servers);
            if (entries != 0) {
                EXPECT_EQ(datagrams.size(), (1000U + entries - 1) / entries);
            }
        }
    }
}

TEST(MasterList, endMarksStandWhereTheyAreWanted) {
    const std::string mark("\\EOT\0\0\0", 7);
    MasterList list = listOf(Family::Quake3, manyServers(5));
    list.entriesPerDatagram = 2;
    const auto marks = [&](EndMark endMark) {
        list.endMark = endMark;
        std::string pattern;
        for (const std::string& datagram : cutIntoDatagrams(list))
            pattern += datagram.ends_with(mark) ? 'E' : '-';
        return pattern;
    };
    EXPECT_EQ(marks(EndMark::None), "---");
    EXPECT_EQ(marks(EndMark::Last), "--E");
    EXPECT_EQ(marks(EndMark::Every), "EEE");
}

TEST(MasterList, knowsAddressesThatReadAsAnEndMark) {
    for (const Endpoint& endpoint :
         {Endpoint{0x7F454F54, 1}, Endpoint{0x7F00454F, 0x5401}, Endpoint{0x7F000045, 0x4F46}})
        EXPECT_TRUE(looksLikeEndMark(endpoint)) << endpointText(endpoint);
    for (const Endpoint& endpoint : {first, Endpoint{0x7F454F00, 1}, Endpoint{0x7F000000, 0x454F}})
        EXPECT_FALSE(looksLikeEndMark(endpoint)) << endpointText(endpoint);
}

GameSettings gameOf(Family family) {
    return plainGame(family, "x");
}

std::vector<std::string> ask(const GameSettings& game, std::string_view request) {
    return masterReply(game, {first, second}, request, Random{1});
}

TEST(MasterReply, answersTheRequestOfItsGamesIni) {
    for (const Family family : {Family::Quake3, Family::Doom3, Family::HalfLife}) {
        const GameSettings game = gameOf(family);
        const std::vector<std::string> reply = ask(game, masterRequest(game));
        ASSERT_EQ(reply.size(), 1U);
        EXPECT_EQ(readMasterList(family, masterHeader(family), reply[0]),
                  (std::vector<Endpoint>{first, second}));
    }
}

TEST(MasterReply, requestsAreThoseOfTheRealGames) {
    EXPECT_EQ(masterRequest(gameOf(Family::Quake3)), "\xFF\xFF\xFF\xFFgetservers 68 full empty");
    EXPECT_EQ(masterRequest(gameOf(Family::Doom3)), bytes("\xFF\xFFgetServers\0\x29\0\1\0\0\0"));
    EXPECT_EQ(masterRequest(gameOf(Family::HalfLife)), bytes("1\xFF"
                                                             "0.0.0.0:0\0\0"));
}

TEST(MasterReply, takesAnyFilterWords) {
    for (const std::string& request :
         {bytes("\xFF\xFF\xFF\xFFgetservers"), bytes("\xFF\xFF\xFF\xFFgetservers 68 empty\n"),
          bytes("\xFF\xFF\xFF\xFFGETSERVERS x y z"), bytes("\xFF\xFF\xFF\xFFgetserversExt Any 71 ipv4")})
        EXPECT_EQ(ask(gameOf(Family::Quake3), request).size(), 1U) << truthEscaped(request);
    for (const std::string& request :
         {bytes("\xFF\xFFgetServers"), bytes("\xFF\xFFgetservers\0\0\0\0\0\0\0\0\0")})
        EXPECT_EQ(ask(gameOf(Family::Doom3), request).size(), 1U) << truthEscaped(request);
    for (const std::string& request :
         {bytes("1"), bytes("1\xFF"), bytes("c"), bytes("1\0\0\0\0\\gamedir\\cs\0")})
        EXPECT_EQ(ask(gameOf(Family::HalfLife), request).size(), 1U) << truthEscaped(request);
}

TEST(MasterReply, saysNothingToOthers) {
    for (const std::string& request :
         {bytes(""), bytes("\xFF\xFF\xFF\xFF"), bytes("getservers 68"), bytes("\xFF\xFFgetservers 68"),
          bytes("\xFF\xFF\xFF\xFFgetserver"), bytes("\xFF\xFF\xFF\xFFgetstatus"), bytes("1\xFF"),
          bytes("\xFF\xFF\xFF\xFF getservers")})
        EXPECT_TRUE(ask(gameOf(Family::Quake3), request).empty()) << truthEscaped(request);
    for (const std::string& request :
         {bytes(""), bytes("\xFF\xFF"), bytes("\xFF\xFF\xFF\xFFgetServers"), bytes("\xFF\xFFgetInfo\0")})
        EXPECT_TRUE(ask(gameOf(Family::Doom3), request).empty()) << truthEscaped(request);
    for (const std::string& request : {bytes(""), bytes("2\xFF"), bytes("cc"), bytes("\xFF\xFF\xFF\xFFinfo")})
        EXPECT_TRUE(ask(gameOf(Family::HalfLife), request).empty()) << truthEscaped(request);
}

TEST(MasterReply, aPackedListComesBatchByBatch) {
    GameSettings game = gameOf(Family::HalfLife);
    game.halfLifeList = HalfLifeList::Packed;
    game.listEntries = 2;
    const std::vector<Endpoint> servers = manyServers(3);
    const auto batch = [&](const std::string& last) {
        const auto reply = masterReply(game, servers, "1\xFF" + last + bytes("\0\0"), Random{1});
        return reply.size() == 1 ? reply[0].substr(6) : "?";
    };
    const std::string start = batch("0.0.0.0:0");
    EXPECT_EQ(start, bytes("\x7F\x10\0\1\x6D\x38\x7F\x10\0\2\x6D\x38"));
    EXPECT_EQ(batch(endpointText(servers[1])), bytes("\x7F\x10\0\3\x6D\x38\0\0\0\0\0\0"));
    EXPECT_EQ(batch(endpointText(servers[2])), bytes("\0\0\0\0\0\0"));
}

std::vector<Endpoint> readLie(const GameSettings& game, const std::string& datagram) {
    const char delimiter = game.family == Family::Doom3 ? '\0' : '\\';
    const std::size_t end = datagram.find(delimiter, 1);
    // A header that does not end makes readers of the Half-Life family take the header for addresses.
    return end == std::string::npos ? std::vector<Endpoint>{{0, 0}}
                                    : readMasterList(game.family, datagram.substr(0, end), datagram);
}

TEST(LyingMaster, neverNamesAStranger) {
    for (const Family family : {Family::Quake3, Family::Doom3, Family::HalfLife})
        for (const std::string lie : {"truncated", "random", "wrong-header", "oversized", "duplicated"}) {
            GameSettings game = gameOf(family);
            game.masterLie = parseMasterLie(lie);
            game.listEntries = 3;
            for (std::uint64_t nth = 0; nth < 200; ++nth)
                for (const std::string& datagram :
                     masterReply(game, manyServers(nth % 10), masterRequest(game), Random{nth}))
                    for (const Endpoint& server : readLie(game, datagram))
                        ASSERT_TRUE(isLoopback(server.address)) << lie << ": " << truthEscaped(datagram);
        }
}

TEST(LyingMaster, letsNoEndMarkForm) {
    GameSettings game = gameOf(Family::Quake3);
    game.masterLie = MasterLie::Random;
    for (std::uint64_t nth = 0; nth < 50; ++nth)
        for (const std::string& datagram : masterReply(game, {}, masterRequest(game), Random{nth}))
            EXPECT_EQ(datagram.find('E'), std::string::npos);
}

TEST(LyingMaster, liesAsItWasTold) {
    for (const Family family : {Family::Quake3, Family::Doom3, Family::HalfLife}) {
        GameSettings game = gameOf(family);
        const auto reply = [&](const char* lie) {
            game.masterLie = parseMasterLie(lie);
            return ask(game, masterRequest(game));
        };
        const std::vector<std::string> honest = reply("none");
        EXPECT_TRUE(reply("silent").empty());
        EXPECT_LT(reply("truncated").at(0).size(), honest[0].size());
        EXPECT_TRUE(honest[0].starts_with(reply("truncated").at(0)));
        EXPECT_NE(reply("random"), honest);
        EXPECT_FALSE(reply("wrong-header").at(0).starts_with(masterHeader(family)));
        EXPECT_EQ(reply("oversized").at(0).size(), largestDatagram);
        EXPECT_EQ(reply("duplicated"), (std::vector<std::string>{honest[0], honest[0]}));
    }
}

} // namespace
} // namespace quarn::gamenet
