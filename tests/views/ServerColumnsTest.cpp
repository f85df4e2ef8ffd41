#include "views/ServerColumns.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

using ::testing::ElementsAre;

TEST(ServerColumnsTest, NameEachColumnAndHowItSorts) {
    ListView list;
    AddServerColumns(list);
    std::vector<std::string> columns;
    for (std::int32_t i = 1; i <= list.columns.HighestIndex(); ++i)
        columns.push_back(list.columns[i].text + "/" + list.columns[i].tag);
    EXPECT_THAT(columns,
                ElementsAre("/PICTURE", "IP Address/STRING", "Location/STRING", "Name/STRING",
                            "Players/NUMBER", "Ping/NUMBER", "Game/STRING", "Map/STRING", "Last Visit/DATE"));
}

} // namespace
} // namespace quarn
