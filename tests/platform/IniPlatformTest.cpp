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

std::string PlayerIniPath() {
    WinFileSystem fs;
    return fs.WindowsDirectory() + "\\tavrinplay.ini";
}

std::string TempFolder() {
    wchar_t buf[MAX_PATH + 1];
    const DWORD n = GetTempPathW(MAX_PATH, buf);
    return Narrow(std::wstring(buf, n));
}

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
    GetPrivateProfileStringA("\xC9\xE8\xD6\xC3", "\xC1\xD9\xCA\xB1", "", value, MAX_PATH, "tavrinplay.ini");
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

TEST(IniPlatform, ReadsWhatTheSystemsAnsiFunctionsWrote) {
    const std::string file = TempFolder() + "lumora-ansi.ini";
    DeleteFileW(Widen(file).c_str());
    const auto name = Utf8ToCp936(file);
    ASSERT_TRUE(name.has_value());
    ASSERT_TRUE(WritePrivateProfileStringA("Window", "FromX", "1200", name->c_str()));
    WinFileSystem fs;
    IniFiles ini(fs);
    EXPECT_EQ(ini.Read(file, "window", "fromx"), "1200");
    ASSERT_TRUE(ini.Write(file, "Window", "FromY", "900"));
    char value[32] = {};
    GetPrivateProfileStringA("Window", "FromY", "", value, sizeof value, name->c_str());
    EXPECT_STREQ(value, "900");
    DeleteFileW(Widen(file).c_str());
}

TEST(IniPlatform, FileLockedByAnotherProgramIsLeftIntact) {
    const std::string file = TempFolder() + "lumora-locked.ini";
    WinFileSystem fs;
    IniFiles ini(fs);
    ASSERT_TRUE(ini.Write(file, "s", "k", "before"));
    const HANDLE lock = CreateFileW(Widen(file).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(lock, INVALID_HANDLE_VALUE);
    EXPECT_FALSE(ini.Write(file, "s", "k", "after"));
    CloseHandle(lock);
    EXPECT_EQ(ini.Read(file, "s", "k"), "before");
    DeleteFileW(Widen(file).c_str());
}

}  // namespace
}  // namespace lumora
