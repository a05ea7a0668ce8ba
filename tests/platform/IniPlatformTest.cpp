// INI files on Wine's real file system, under a Chinese and a Western system code page.
#include <windows.h>

#include <gtest/gtest.h>

#include "platform/FileSystem_win.h"
#include "platform/WinText_win.h"
#include "settings/IniFiles.h"

namespace lumora {
namespace {

const std::string kPath = "D:\\音乐\\周末 歌曲.mp3";
// "[设置]" CR LF "临时=" kPath CR LF, in code page 936.
const std::string kExpectedBytes =
    "[\xC9\xE8\xD6\xC3]\r\n\xC1\xD9\xCA\xB1=D:\\\xD2\xF4\xC0\xD6\\\xD6\xDC\xC4\xA9 \xB8\xE8\xC7\xFA.mp3\r\n";

std::string PlayerIniPath() { return WinFileSystem().UserDataFolder() + "\\tavrinplay.ini"; }

// The scratch value is written by one process under code page 936 ...
TEST(IniCodePage, WriteUnderChineseLocale) {
    ASSERT_EQ(GetACP(), 936u);
    WinFileSystem fs;
    IniFiles ini(fs);
    DeleteFileW(Widen(PlayerIniPath()).c_str());
    ASSERT_TRUE(WriteScratchValue(ini, kPath));
    const FileRead read = fs.ReadFile(PlayerIniPath());
    ASSERT_EQ(read.status, FileRead::Status::Ok);
    EXPECT_EQ(read.bytes, kExpectedBytes);
    // The system's own ANSI reader on a Chinese system sees the same text.
    char value[MAX_PATH] = {};
    GetPrivateProfileStringA("\xC9\xE8\xD6\xC3", "\xC1\xD9\xCA\xB1", "", value, MAX_PATH,
                             Utf8ToCp936(PlayerIniPath()).value().c_str());
    EXPECT_EQ(Cp936ToUtf8(value), kPath);
}

// ... and read back by another under code page 1252: still the same text and the same bytes.
TEST(IniCodePage, ReadUnderWesternLocale) {
    ASSERT_EQ(GetACP(), 1252u);
    WinFileSystem fs;
    IniFiles ini(fs);
    EXPECT_EQ(ReadScratchValue(ini), kPath);
    ASSERT_TRUE(WriteScratchValue(ini, kPath));
    EXPECT_EQ(fs.ReadFile(PlayerIniPath()).bytes, kExpectedBytes);
    ASSERT_TRUE(WriteScratchValue(ini, ""));
}

}  // namespace
}  // namespace lumora
