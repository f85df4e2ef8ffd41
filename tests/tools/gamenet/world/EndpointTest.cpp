#include "tools/gamenet/world/Endpoint.h"

#include "tools/gamenet/world/Text.h"

#include <gtest/gtest.h>

namespace quarn::gamenet {
namespace {

TEST(Endpoint, ReadsLoopbackAddresses) {
    EXPECT_EQ(ParseLoopbackEndpoint("127.1.2.3:27960"), (Endpoint{0x7F010203, 27960}));
    EXPECT_EQ(EndpointText({0x7F010203, 27960}), "127.1.2.3:27960");
}

TEST(Endpoint, RefusesEverythingElse) {
    for (const std::string text : {"",
                                   "127.0.0.1",
                                   "127.0.0.1:",
                                   "127.0.0.1:0",
                                   "127.0.0.1:65536",
                                   "127.0.0.1:x",
                                   "127.0.0:1",
                                   "127.0.0.0.1:1",
                                   "127.0.0.256:1",
                                   "127.0.0.-1:1",
                                   "127.0.0. 1:1",
                                   "localhost:1",
                                   "10.0.0.1:27960",
                                   "128.0.0.1:27960",
                                   "126.255.255.255:27960",
                                   "0.0.0.0:27960",
                                   "255.255.255.255:1",
                                   "::1:27960",
                                   "1270.0.0.1:1",
                                   "127.0.0.1:27960 "})
        EXPECT_THROW(ParseLoopbackEndpoint(text), BadSetting) << text;
}

TEST(Endpoint, KnowsAddressesThatReadAsAnEndMark) {
    for (const Endpoint& endpoint :
         {Endpoint{0x7F454F54, 1}, Endpoint{0x7F00454F, 0x5401}, Endpoint{0x7F000045, 0x4F46}})
        EXPECT_TRUE(LooksLikeEndMark(endpoint)) << EndpointText(endpoint);
    for (const Endpoint& endpoint :
         {Endpoint{0x7F010203, 0x6D38}, Endpoint{0x7F454F00, 1}, Endpoint{0x7F000000, 0x454F}})
        EXPECT_FALSE(LooksLikeEndMark(endpoint)) << EndpointText(endpoint);
}

} // namespace
} // namespace quarn::gamenet
