#include "tools/gamenet/protocol/MasterList.h"

#include "tests/tools/gamenet/BrowserReading.h"
#include "tests/tools/gamenet/Samples.h"

#include <gtest/gtest.h>

namespace quarn::gamenet {
namespace {

MasterList ListOf(Family family, std::vector<Endpoint> servers) {
    MasterList list;
    list.family = family;
    list.header = MasterHeader(family);
    list.servers = std::move(servers);
    return list;
}

TEST(MasterList, Quake3Bytes) {
    EXPECT_EQ(CutIntoDatagrams(ListOf(Family::Quake3, {FirstServer, ThirdServer})),
              std::vector<std::string>{Bytes("\xFF\xFF\xFF\xFFgetserversResponse\\\x7F\1\2\3\x6D\x38"
                                             "\\\x7F\7\x8\x9\\\\\\EOT\0\0\0")});
}

TEST(MasterList, Doom3Bytes) {
    EXPECT_EQ(CutIntoDatagrams(ListOf(Family::Doom3, {FirstServer, SecondServer})),
              std::vector<std::string>{Bytes("\xFF\xFFservers\0\x7F\1\2\3\x38\x6D\x7F\4\5\6\x34\x12")});
}

TEST(MasterList, HalfLifeBytesInBothForms) {
    MasterList list = ListOf(Family::HalfLife, {FirstServer, SecondServer});
    EXPECT_EQ(CutIntoDatagrams(list), std::vector<std::string>{Bytes(
                                          "\xFF\xFF\xFF\xFF\x66\n\\\x7F\1\2\3\x6D\x38\\\x7F\4\5\6\x12\x34")});
    list.halfLifeList = HalfLifeList::Packed;
    EXPECT_EQ(CutIntoDatagrams(list),
              std::vector<std::string>{
                  Bytes("\xFF\xFF\xFF\xFF\x66\n\x7F\1\2\3\x6D\x38\x7F\4\5\6\x12\x34\0\0\0\0\0\0")});
}

TEST(MasterList, AnEmptyListIsStillOneDatagram) {
    EXPECT_EQ(CutIntoDatagrams(ListOf(Family::Quake3, {})),
              std::vector<std::string>{Bytes("\xFF\xFF\xFF\xFFgetserversResponse\\EOT\0\0\0")});
    EXPECT_EQ(CutIntoDatagrams(ListOf(Family::Doom3, {})),
              std::vector<std::string>{Bytes("\xFF\xFFservers\0")});
    EXPECT_EQ(CutIntoDatagrams(ListOf(Family::HalfLife, {})),
              std::vector<std::string>{Bytes("\xFF\xFF\xFF\xFF\x66\n\\")});
}

TEST(MasterList, IsCutAtTheUsualDatagramOrAtSoManyEntries) {
    for (const Family family : {Family::Quake3, Family::Doom3, Family::HalfLife}) {
        MasterList list = ListOf(family, ManyServers(1000));
        for (const int entries : {0, 1, 7, 1000}) {
            list.entriesPerDatagram = entries;
            std::vector<Endpoint> read;
            const std::vector<std::string> datagrams = CutIntoDatagrams(list);
            for (const std::string& datagram : datagrams) {
                const auto part = ReadMasterList(family, list.header, datagram);
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

TEST(MasterList, EndMarksStandWhereTheyAreWanted) {
    const std::string mark("\\EOT\0\0\0", 7);
    MasterList list = ListOf(Family::Quake3, ManyServers(5));
    list.entriesPerDatagram = 2;
    const auto marks = [&](EndMark endMark) {
        list.endMark = endMark;
        std::string pattern;
        for (const std::string& datagram : CutIntoDatagrams(list))
            pattern += datagram.ends_with(mark) ? 'E' : '-';
        return pattern;
    };
    EXPECT_EQ(marks(EndMark::None), "---");
    EXPECT_EQ(marks(EndMark::Last), "--E");
    EXPECT_EQ(marks(EndMark::Every), "EEE");
}

} // namespace
} // namespace quarn::gamenet
