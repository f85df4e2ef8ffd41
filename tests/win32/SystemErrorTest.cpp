#include "win32/SystemError.h"

#include <gtest/gtest.h>

namespace quarn {
namespace {

TEST(SystemErrorTest, FileErrorsHaveTheirNumbers) {
    const struct {
        DWORD systemError;
        int number;
    } table[] = {
        {ERROR_FILE_NOT_FOUND, 53},
        {ERROR_PATH_NOT_FOUND, 76},
        {ERROR_BAD_NETPATH, 76},
        {ERROR_ACCESS_DENIED, 75},
        {ERROR_SHARING_VIOLATION, 70},
        {ERROR_LOCK_VIOLATION, 70},
        {ERROR_WRITE_PROTECT, 70},
        {ERROR_DISK_FULL, 61},
        {ERROR_HANDLE_DISK_FULL, 61},
        {ERROR_DEV_NOT_EXIST, 68},
        {ERROR_INVALID_DRIVE, 68},
        {ERROR_NOT_READY, 71},
        {ERROR_CRC, 57},
        {ERROR_GEN_FAILURE, 57},
        {ERROR_SUCCESS, 57},
        {ERROR_NOT_ENOUGH_MEMORY, 57},
        {0xFFFFFFFF, 57},
    };
    for (const auto& line : table)
        EXPECT_EQ(static_cast<int>(ErrorNumberOf(line.systemError)), line.number) << line.systemError;
}

TEST(SystemErrorTest, TheTextEndsWithTheCode) {
    const std::string text = SystemErrorText(ERROR_FILE_NOT_FOUND);
    EXPECT_GT(text.size(), 4U);
    EXPECT_TRUE(text.ends_with(" (2)")) << text;
    EXPECT_EQ(text.find_first_of("\r\n"), std::string::npos) << text;
}

TEST(SystemErrorTest, TheTextIsTheSystems) {
    EXPECT_FALSE(SystemErrorText(ERROR_FILE_NOT_FOUND).starts_with("Unknown error"));
    const std::string ofAFile = SystemErrorText(ERROR_BAD_EXE_FORMAT); // the name of the file is not known
    EXPECT_NE(ofAFile.find("%1"), std::string::npos) << ofAFile;
}

TEST(SystemErrorTest, AnUnknownCodeHasATextToo) {
    EXPECT_EQ(SystemErrorText(0x2FFFFFFF), "Unknown error (805306367)");
}

TEST(SystemErrorTest, NoMessageOfTheSystemAsksForTheMediumOfADrive) {
    const UINT ofTheProcess = GetErrorMode();
    SuppressDriveMessages();
    EXPECT_EQ(GetThreadErrorMode(), DWORD{SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX});
    EXPECT_EQ(GetErrorMode(), ofTheProcess);
    SetThreadErrorMode(0, nullptr);
}

} // namespace
} // namespace quarn
