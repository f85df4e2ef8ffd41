#include "tools/gamenet/protocol/ServerReplies.h"

#include "tests/tools/gamenet/Samples.h"
#include "tools/gamenet/world/Text.h"

#include <gtest/gtest.h>

namespace quarn::gamenet {
namespace {

ServerStatus Sample() {
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

std::string Reply(Family family, const std::string& request) {
    ServerStatus status = Sample();
    if (family != Family::Doom3)
        status.protocol = "46";
    return ServerReply(family, status, request).value_or("no reply");
}

TEST(ServerReplies, Quake3Status) {
    EXPECT_EQ(
        Reply(Family::Quake3, Bytes("\xFF\xFF\xFF\xFFgetstatus")),
        Bytes("\xFF\xFF\xFF\xFFstatusResponse\n\\key\\value\\empty\\\n-3 48 \"^2A \"b\"\"\n258 300 \"C\"\n"));
}

TEST(ServerReplies, Quake3StatusWithChallenge) {
    EXPECT_EQ(Reply(Family::Quake3, Bytes("\xFF\xFF\xFF\xFFgetStatus abc\n")),
              Bytes("\xFF\xFF\xFF\xFFstatusResponse\n\\key\\value\\empty\\\\challenge\\abc\n"
                    "-3 48 \"^2A \"b\"\"\n258 300 \"C\"\n"));
}

TEST(ServerReplies, Quake3Info) {
    EXPECT_EQ(
        Reply(Family::Quake3, Bytes("\xFF\xFF\xFF\xFFgetinfo xxx")),
        Bytes("\xFF\xFF\xFF\xFFinfoResponse\n\\challenge\\xxx\\gamename\\mod\\protocol\\46\\hostname\\^1Name"
              "\\mapname\\map\\clients\\2\\sv_maxclients\\16\\g_needpass\\1\\game\\mod"));
}

const std::string Doom3Body = Bytes("\x29\0\1\0key\0value\0empty\0\0\0\0"
                                    "\0\x30\0\x80\x3E\0\0^2A \"b\"\0"
                                    "\1\x2C\1\x80\x3E\0\0C\0"
                                    "\x20\7\0\0\0");

TEST(ServerReplies, Doom3InfoForARequestWithFourNuls) {
    EXPECT_EQ(Reply(Family::Doom3, Bytes("\xFF\xFFgetinfo\0\0\0\0")),
              Bytes("\xFF\xFFinfoResponse\0\0\0\0\0") + Doom3Body);
}

TEST(ServerReplies, Doom3InfoEchoesFourBytesOfAChallenge) {
    EXPECT_EQ(Reply(Family::Doom3, Bytes("\xFF\xFFgetInfo\0ABCDEF")),
              Bytes("\xFF\xFFinfoResponse\0ABCD") + Doom3Body);
    EXPECT_EQ(Reply(Family::Doom3, Bytes("\xFF\xFFgetInfo\0AB")),
              Bytes("\xFF\xFFinfoResponse\0AB\0\0") + Doom3Body);
    EXPECT_EQ(Reply(Family::Doom3, Bytes("\xFF\xFFgetInfo")),
              Bytes("\xFF\xFFinfoResponse\0\0\0\0\0") + Doom3Body);
}

TEST(ServerReplies, HalfLifeInfoWithoutAndWithDescription) {
    EXPECT_EQ(Reply(Family::HalfLife, Bytes("\xFF\xFF\xFF\xFFinfo")),
              Bytes("\xFF\xFF\xFF\xFF\x43"
                    "127.1.2.3:27015\0^1Name\0map\0mod\0\2\x10\x2E"));
    ServerStatus status = Sample();
    status.protocol = "48";
    status.info = "About";
    EXPECT_EQ(*ServerReply(Family::HalfLife, status, Bytes("\xFF\xFF\xFF\xFFinfo\0")),
              Bytes("\xFF\xFF\xFF\xFF\x43"
                    "127.1.2.3:27015\0^1Name\0map\0mod\0About\0\2\x10\x30"));
}

TEST(ServerReplies, HalfLifePlayersRulesAndPing) {
    EXPECT_EQ(Reply(Family::HalfLife, Bytes("\xFF\xFF\xFF\xFFplayers")),
              Bytes("\xFF\xFF\xFF\xFF\x44\2\1^2A \"b\"\0\xFD\xFF\xFF\xFF\0\0\xC0\x3F"
                    "\2C\0\2\1\0\0\0\0\0\0"));
    EXPECT_EQ(Reply(Family::HalfLife, Bytes("\xFF\xFF\xFF\xFFrules")),
              Bytes("\xFF\xFF\xFF\xFF\x45\2\0key\0value\0empty\0\0"));
    EXPECT_EQ(Reply(Family::HalfLife, Bytes("\xFF\xFF\xFF\xFFping")), Bytes("\xFF\xFF\xFF\xFF\x6A"));
}

struct Foreign {
    Family family;
    std::string request;
};

void PrintTo(const Foreign& foreign, std::ostream* out) {
    *out << TruthEscaped(foreign.request);
}

class ServerRepliesForeignRequest : public testing::TestWithParam<Foreign> {};

TEST_P(ServerRepliesForeignRequest, IsNotAnswered) {
    EXPECT_FALSE(ServerReply(GetParam().family, Sample(), GetParam().request));
}

INSTANTIATE_TEST_SUITE_P(All, ServerRepliesForeignRequest,
                         testing::Values(Foreign{Family::Quake3, ""}, Foreign{Family::Quake3, "getstatus"},
                                         Foreign{Family::Quake3, Bytes("\xFF\xFF\xFF\xFF")},
                                         Foreign{Family::Quake3, Bytes("\xFF\xFF\xFFgetstatus")},
                                         Foreign{Family::Quake3, Bytes("\xFF\xFF\xFF\xFFgetstatu")},
                                         Foreign{Family::Quake3, Bytes("\xFF\xFF\xFF\xFF getstatus")},
                                         Foreign{Family::Quake3, Bytes("\xFF\xFFgetinfo\0\0\0\0")},
                                         Foreign{Family::Quake3, Bytes("\xFF\xFF\xFF\xFFrules")},
                                         Foreign{Family::Doom3, ""},
                                         Foreign{Family::Doom3, Bytes("\xFF\xFFgetinf")},
                                         Foreign{Family::Doom3, Bytes("\xFF\xFF\xFF\xFFgetstatus")},
                                         Foreign{Family::Doom3, Bytes("\xFF\xFF\xFF\xFFgetinfo\0\0\0\0")},
                                         Foreign{Family::HalfLife, ""}, Foreign{Family::HalfLife, "info"},
                                         Foreign{Family::HalfLife, Bytes("\xFF\xFF\xFF\xFFinf")},
                                         Foreign{Family::HalfLife, Bytes("\xFF\xFFinfo")},
                                         Foreign{Family::HalfLife, Bytes("\xFF\xFF\xFF\xFFgetstatus")},
                                         Foreign{Family::HalfLife, Bytes("\xFF\xFF\xFF\xFF\0info")}));

} // namespace
} // namespace quarn::gamenet
