#include "views/CsvText.h"

#include "tests/fakes/ClassicLocale.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace quarn {
namespace {

using namespace std::string_literals;

constexpr const char* Mark = "\xEF\xBB\xBF";

class CsvTextTest : public ::testing::Test {
  protected:
    CsvTextTest() { SetHeaders({"", "Name"}); }

    void SetHeaders(const std::vector<std::string>& headers) {
        list.columns.Reset(static_cast<std::int32_t>(headers.size()));
        for (std::size_t i = 0; i < headers.size(); ++i)
            list.columns[static_cast<std::int32_t>(i) + 1].text = headers[i];
    }
    void Add(const std::vector<std::string>& cells) {
        const std::int32_t row = list.Add();
        for (std::size_t i = 0; i < cells.size(); ++i)
            list.Cell(row, static_cast<std::int32_t>(i) + 1).text = cells[i];
    }
    // What becomes of one cell.
    std::string Csv(const std::string& cell) {
        list.Clear();
        Add({"", cell});
        const std::string csv = CsvOf(list, locale);
        const std::string start = Mark + ",Name\r\n,"s;
        EXPECT_EQ(csv.substr(0, start.size()), start);
        EXPECT_TRUE(csv.ends_with("\r\n"));
        return csv.substr(start.size(), csv.size() - start.size() - 2);
    }

    ClassicLocale locale;
    ListView list;
};

TEST_F(CsvTextTest, IsForNamesThatEndSo) {
    for (const char* name : {"list.csv", "C:\\a b\\LIST.CSV", ".csv", "list.txt.Csv", "\xe4.csv"})
        EXPECT_TRUE(IsCsvName(name)) << name;
    for (const char* name :
         {"", "csv", "list.txt", "list.csv.txt", "list.csv ", "list_csv", "list.csvx", "C:\\list.csv\\a"})
        EXPECT_FALSE(IsCsvName(name)) << name;
}

TEST_F(CsvTextTest, HasTheHeadersFirstAndARowALine) {
    SetHeaders({"", "IP Address", "Players", "Last Visit"});
    EXPECT_EQ(CsvOf(list, locale), Mark + ",IP Address,Players,Last Visit\r\n"s);
    Add({"", "1.2.3.4:5", "3 / 16", ""});
    Add({"", "1.2.3.4:6", "0 / 8", "11/21/2026 8:05:00 AM"});
    list.Edit(2).smallIcon = "locked";
    EXPECT_EQ(CsvOf(list, locale), Mark + ",IP Address,Players,Last Visit\r\n"
                                          ",1.2.3.4:5,3 / 16,\r\n"
                                          "locked,1.2.3.4:6,0 / 8,11/21/2026 8:05:00 AM\r\n"s);
}

TEST_F(CsvTextTest, HasTheRowsInTheOrderShown) {
    Add({"", "b"});
    Add({"", "a"});
    list.Sort(1, SortOrder::Ascending);
    EXPECT_EQ(CsvOf(list, locale), Mark + ",Name\r\n,a\r\n,b\r\n"s);
}

TEST_F(CsvTextTest, QuotesWhatWouldEndACell) {
    const struct {
        std::string cell;
        std::string csv;
    } cases[] = {
        {"", ""},
        {"plain", "plain"},
        {" blanks ", " blanks "},
        {"a;b", "a;b"},
        {"a,b", "\"a,b\""},
        {",", "\",\""},
        {"\"", "\"\"\"\""},
        {"\"a\"", "\"\"\"a\"\"\""},
        {"a\"\"b", "\"a\"\"\"\"b\""},
        {"a\r\nb", "\"a\r\nb\""},
        {"\r", "\"\r\""},
        {"\n", "\"\n\""},
        {"a\",\"b", "\"a\"\",\"\"b\""},
        {"a\0b"s, "a"}, // the list shows no more of it
        {"\0"s, ""},
        {"'", "'"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Csv(c.cell), c.csv) << ::testing::PrintToString(c.cell);
}

TEST_F(CsvTextTest, NoCellIsAFormula) {
    const struct {
        std::string cell;
        std::string csv;
    } cases[] = {
        {"=cmd|'/c calc'!A1", " =cmd|'/c calc'!A1"},
        {"=1+1", " =1+1"},
        {"=", " ="},
        {"+49", " +49"},
        {"-1", " -1"},
        {"@SUM(A1)", " @SUM(A1)"},
        {"\t=1", " \t=1"},
        {"=\"a\",b", "\" =\"\"a\"\",b\""},
        {"-\r\n=", "\" -\r\n=\""},
        {" =1", " =1"},
        {"1=1", "1=1"},
        {"a+b-c@d", "a+b-c@d"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Csv(c.cell), c.csv);
    SetHeaders({"=1", "@"});
    list.Clear();
    EXPECT_EQ(CsvOf(list, locale), Mark + " =1, @\r\n"s);
}

TEST_F(CsvTextTest, HasEveryCharacterInUtf8) {
    EXPECT_EQ(Csv("\xe4\xdf\x80\xff"), "\xC3\xA4\xC3\x9F\xE2\x82\xAC\xC3\xBF");
    for (int code = 1; code < 256; ++code) {
        const char character = static_cast<char>(code);
        const std::string cell = "a"s + character + "b";
        const std::string utf8 = locale.ToUtf8(cell);
        const bool quoted = character == ',' || character == '\r' || character == '\n';
        EXPECT_EQ(Csv(cell), character == '"' ? "\"a\"\"b\"" : quoted ? '"' + utf8 + '"' : utf8) << code;
    }
}

TEST_F(CsvTextTest, HoldsLongTextsWhole) {
    const std::string text(100'000, '"');
    EXPECT_EQ(Csv(text), '"' + text + text + '"');
}

} // namespace
} // namespace quarn
