#include "tools/gamenet/ServerReplies.h"

#include "tools/gamenet/Text.h"

#include <gtest/gtest.h>

namespace quarn::gamenet {
namespace {

template<std::size_t size>
std::string bytes(const char (&literal)[size]) {
    return {literal, size - 1};
}

ServerStatus sample() {
    ServerStatus status;
    status.endpoint = {0x7F010203, 27015};
    status.name = "^1Name";
    status.map = "map";
    status.mod = "mod";
    status.protocol = "1.41";
    status.maxPlayers = 16;
    status.locked = true;
    status.variables = {{"key", "value"}, {"empty", ""}};
    status.players = {{"^2A \"b\"", -3, 48, 1.5F}, {"C", 258, 300, 0.0F}};
    return status;
}

std::string reply(Family family, const std::string& request) {
    ServerStatus status = sample();
    if (family != Family::Doom3)
        status.protocol = "46";
    return serverReply(family, status, request).value_or("no reply");
}

TEST(Quake3Reply, status) {
    EXPECT_EQ(
        reply(Family::Quake3, bytes("\xFF\xFF\xFF\xFFgetstatus")),
        bytes("\xFF\xFF\xFF\xFFstatusResponse\n\\key\\value\\empty\\\n-3 48 \"^2A \"b\"\"\n258 300 \"C\"\n"));
}

TEST(Quake3Reply, statusWithChallenge) {
    EXPECT_EQ(reply(Family::Quake3, bytes("\xFF\xFF\xFF\xFFgetStatus abc\n")),
              bytes("\xFF\xFF\xFF\xFFstatusResponse\n\\key\\value\\empty\\\\challenge\\abc\n"
                    "-3 48 \"^2A \"b\"\"\n258 300 \"C\"\n"));
}

TEST(Quake3Reply, info) {
    EXPECT_EQ(
        reply(Family::Quake3, bytes("\xFF\xFF\xFF\xFFgetinfo xxx")),
        bytes("\xFF\xFF\xFF\xFFinfoResponse\n\\challenge\\xxx\\gamename\\mod\\protocol\\46\\hostname\\^1Name"
              "\\mapname\\map\\clients\\2\\sv_maxclients\\16\\g_needpass\\1\\game\\mod"));
}

const std::string doom3Body = bytes("\x29\0\1\0key\0value\0empty\0\0\0\0"
                                    "\0\x30\0\x80\x3E\0\0^2A \"b\"\0"
                                    "\1\x2C\1\x80\x3E\0\0C\0"
                                    "\x20\7\0\0\0");

TEST(Doom3Reply, toTheRequestWithFourNuls) {
    EXPECT_EQ(reply(Family::Doom3, bytes("\xFF\xFFgetinfo\0\0\0\0")),
              bytes("\xFF\xFFinfoResponse\0\0\0\0\0") + doom3Body);
}

TEST(Doom3Reply, echoesFourBytesOfAChallenge) {
    EXPECT_EQ(reply(Family::Doom3, bytes("\xFF\xFFgetInfo\0ABCDEF")),
              bytes("\xFF\xFFinfoResponse\0ABCD") + doom3Body);
    EXPECT_EQ(reply(Family::Doom3, bytes("\xFF\xFFgetInfo\0AB")),
              bytes("\xFF\xFFinfoResponse\0AB\0\0") + doom3Body);
    EXPECT_EQ(reply(Family::Doom3, bytes("\xFF\xFFgetInfo")),
              bytes("\xFF\xFFinfoResponse\0\0\0\0\0") + doom3Body);
}

TEST(HalfLifeReply, infoWithoutAndWithDescription) {
    EXPECT_EQ(reply(Family::HalfLife, bytes("\xFF\xFF\xFF\xFFinfo")),
              bytes("\xFF\xFF\xFF\xFF\x43"
                    "127.1.2.3:27015\0^1Name\0map\0mod\0\2\x10\x2E"));
    ServerStatus status = sample();
    status.protocol = "48";
    status.info = "About";
    EXPECT_EQ(*serverReply(Family::HalfLife, status, bytes("\xFF\xFF\xFF\xFFinfo\0")),
              bytes("\xFF\xFF\xFF\xFF\x43"
                    "127.1.2.3:27015\0^1Name\0map\0mod\0About\0\2\x10\x30"));
}

TEST(HalfLifeReply, playersRulesAndPing) {
    EXPECT_EQ(reply(Family::HalfLife, bytes("\xFF\xFF\xFF\xFFplayers")),
              bytes("\xFF\xFF\xFF\xFF\x44\2\1^2A \"b\"\0\xFD\xFF\xFF\xFF\0\0\xC0\x3F"
                    "\2C\0\2\1\0\0\0\0\0\0"));
    EXPECT_EQ(reply(Family::HalfLife, bytes("\xFF\xFF\xFF\xFFrules")),
              bytes("\xFF\xFF\xFF\xFF\x45\2\0key\0value\0empty\0\0"));
    EXPECT_EQ(reply(Family::HalfLife, bytes("\xFF\xFF\xFF\xFFping")), bytes("\xFF\xFF\xFF\xFF\x6A"));
}

struct Foreign {
    Family family;
    std::string request;
};

void PrintTo(const Foreign& foreign, std::ostream* out) {
    *out << truthEscaped(foreign.request);
}

class ForeignRequest : public testing::TestWithParam<Foreign> {};

TEST_P(ForeignRequest, isNotAnswered) {
    EXPECT_FALSE(serverReply(GetParam().family, sample(), GetParam().request));
}

INSTANTIATE_TEST_SUITE_P(All, ForeignRequest,
                         testing::Values(Foreign{Family::Quake3, ""}, Foreign{Family::Quake3, "getstatus"},
                                         Foreign{Family::Quake3, bytes("\xFF\xFF\xFF\xFF")},
                                         Foreign{Family::Quake3, bytes("\xFF\xFF\xFFgetstatus")},
                                         Foreign{Family::Quake3, bytes("\xFF\xFF\xFF\xFFgetstatu")},
                                         Foreign{Family::Quake3, bytes("\xFF\xFF\xFF\xFF getstatus")},
                                         Foreign{Family::Quake3, bytes("\xFF\xFFgetinfo\0\0\0\0")},
                                         Foreign{Family::Quake3, bytes("\xFF\xFF\xFF\xFFrules")},
                                         Foreign{Family::Doom3, ""},
                                         Foreign{Family::Doom3, bytes("\xFF\xFFgetinf")},
                                         Foreign{Family::Doom3, bytes("\xFF\xFF\xFF\xFFgetstatus")},
                                         Foreign{Family::Doom3, bytes("\xFF\xFF\xFF\xFFgetinfo\0\0\0\0")},
                                         Foreign{Family::HalfLife, ""}, Foreign{Family::HalfLife, "info"},
                                         Foreign{Family::HalfLife, bytes("\xFF\xFF\xFF\xFFinf")},
                                         Foreign{Family::HalfLife, bytes("\xFF\xFFinfo")},
                                         Foreign{Family::HalfLife, bytes("\xFF\xFF\xFF\xFFgetstatus")},
                                         Foreign{Family::HalfLife, bytes("\xFF\xFF\xFF\xFF\0info")}));

} // namespace
} // namespace quarn::gamenet
