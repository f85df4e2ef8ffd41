#include "win32/AnsiText.h"

#include "tests/fakes/Errors.h"
#include "tests/win32/harness/ReplacedImport.h"
#include "tests/win32/harness/TemporaryFolder.h"
#include "win32/desktop/FilesWin.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

TEST(AnsiTextTest, EveryTextSurvivesARoundTrip) {
    std::string all;
    for (int code = 0; code < 256; ++code)
        all.push_back(static_cast<char>(code));
    EXPECT_EQ(Narrowed(Widened(all)), all);
    EXPECT_EQ(Narrowed(Widened("")), "");
    EXPECT_EQ(Widened(std::string_view("a\0b", 3)), std::wstring(L"a\0b", 3));
}

TEST(AnsiTextTest, EveryCharacterHasAFormInUtf8) {
    EXPECT_EQ(Utf8Of(""), "");
    EXPECT_EQ(Utf8Of(std::string_view("a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(Utf8Of("\xE4\x80\xFF"), "\xC3\xA4\xE2\x82\xAC\xC3\xBF");
    for (int code = 0; code < 256; ++code) {
        const std::string text(1, static_cast<char>(code));
        const std::string utf8 = Utf8Of(text);
        EXPECT_GE(utf8.size(), 1U) << code;
        EXPECT_EQ(utf8.size() == 1, code < 0x80) << code;
    }
}

TEST(AnsiTextTest, CharactersOutsideTheCodePageAreReplaced) {
    EXPECT_EQ(Narrowed(L"a\x4E2D"
                       L"b"),
              "a?b");
}

class ExpressiblePathTest : public ::testing::Test {
  protected:
    ExpressiblePathTest() { EXPECT_TRUE(CreateDirectoryW(foreign.c_str(), nullptr)); }

    TemporaryFolder folder;
    // Letters that no code page of one or two bytes has together.
    const std::wstring foreign = Widened(folder / "") + L"\x0418\x0433\x0440\x0430 \x03A9\x05D0\x0E01";
};

TEST_F(ExpressiblePathTest, KeepsAPathThatTheCodePageHas) {
    EXPECT_EQ(ExpressiblePath(L"C:\\windows\\"), "C:\\windows\\");
    EXPECT_EQ(ExpressiblePath(Widened(folder.Path())), folder.Path());
    EXPECT_EQ(ExpressiblePath(L"no such file"), "no such file");
}

TEST_F(ExpressiblePathTest, TakesTheShortNameOfAnyOther) {
    const std::string path = ExpressiblePath(foreign + L"\\");
    EXPECT_EQ(path.find('?'), std::string::npos) << path;
    EXPECT_EQ(path.back(), '\\');
    FilesWin files;
    files.Write(path + "file", "content");
    EXPECT_NE(GetFileAttributesW((foreign + L"\\file").c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(files.Read(path + "file"), "content");
}

TEST_F(ExpressiblePathTest, FailsWhereThereIsNoShortName) {
    EXPECT_EQ(ErrorOf([&] { ExpressiblePath(foreign + L"\x05D1\\"); }), ErrorNumber::BadFileName);
    // A file system without short names returns the long ones.
    const ReplacedImport none(
        &GetShortPathNameW, +[](const wchar_t* path, wchar_t* buffer, DWORD size) WINAPI -> DWORD {
            const std::wstring name = path;
            if (size <= name.size())
                return static_cast<DWORD>(name.size()) + 1;
            name.copy(buffer, name.size());
            return static_cast<DWORD>(name.size());
        });
    EXPECT_EQ(ErrorOf([&] { ExpressiblePath(foreign); }), ErrorNumber::BadFileName);
}

} // namespace
} // namespace quarn
