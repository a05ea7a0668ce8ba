// The file port on Wine's real file system: drive kinds as the mount manager reports them,
// writes into a file's tail, copies that never overwrite, a file of 2 GB, and
// information block saves killed half-way.
#include <windows.h>

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "mediainfo/Id3v1.h"
#include "mediainfo/InfoBlock.h"
#include "platform/FileSystem_win.h"
#include "platform/Mci_win.h"
#include "platform/WinText_win.h"
#include "playback/StreamPanelFeed.h"
#include "support/Fakes.h"
#include "support/MpegFrames.h"

namespace lumora {
namespace {

std::string TempFile(const char* name) {
    wchar_t buf[MAX_PATH + 1];
    const DWORD n = GetTempPathW(MAX_PATH, buf);
    return Narrow(std::wstring(buf, n)) + name;
}

// tests run inside scripts/wine-env.sh, which maps R: as removable, S: as a network drive and
// T: as a CD-ROM; C: is the prefix's fixed disk.
TEST(FileSystemPlatform, DriveKindsAsWineReportsThem) {
    WinFileSystem fs;
    const std::pair<const char*, DriveKind> cases[] = {
        {"C:\\windows", DriveKind::Fixed},         {"c:", DriveKind::Fixed},
        {"R:\\歌曲\\a.mp3", DriveKind::Removable}, {"S:\\", DriveKind::Network},
        {"T:\\track.mp3", DriveKind::CdRom},       {"Q:\\nothing", DriveKind::Unknown},
        {"\\\\server\\share", DriveKind::Unknown}, {"", DriveKind::Unknown},
    };
    for (const auto& [path, kind] : cases) EXPECT_EQ(fs.DriveType(path), kind) << path;
}

TEST(FileSystemPlatform, TailWritesKeepTheBytesBeforeAndGrowTheFile) {
    WinFileSystem fs;
    const std::string path = TempFile("尾部 写入.bin");
    ASSERT_TRUE(fs.WriteFileAtomic(path, "0123456789"));
    ASSERT_TRUE(fs.WriteFilePart(path, 8, "abcd"));
    EXPECT_EQ(fs.ReadFile(path).bytes, "01234567abcd");
    ASSERT_TRUE(fs.WriteFilePart(path, 2, "X"));
    EXPECT_EQ(fs.ReadFile(path).bytes, "01X34567abcd");  // never shortened
    EXPECT_EQ(fs.ReadFilePart(path, 9, 100).bytes + fs.ReadFilePart(path, 50, 10).bytes, "bcd");

    // A file another program holds open without sharing refuses the write and keeps its bytes.
    // (Wine run as root writes read-only files anyway, so the lock stands in for them here.)
    HANDLE held = CreateFileW(Widen(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_FALSE(fs.CanOpenForWriting(path));
    EXPECT_FALSE(fs.WriteFilePart(path, 0, "zz"));
    EXPECT_EQ(fs.ReadFile(path).status, FileRead::Status::Failed);  // not missing: an INI file there is not replaced
    CloseHandle(held);
    EXPECT_EQ(fs.ReadFile(path).bytes, "01X34567abcd");
    SetFileAttributesW(Widen(path).c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    ASSERT_TRUE(fs.ClearAttributes(path));
    EXPECT_EQ(GetFileAttributesW(Widen(path).c_str()) & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN), 0u);
    EXPECT_TRUE(fs.CanOpenForWriting(path));
    EXPECT_TRUE(fs.RemoveFile(path) && !fs.FileExists(path));
    EXPECT_FALSE(fs.WriteFilePart(path, 0, "new"));  // a missing file is not created
}

// Folders are made with their parents; a folder is found with or without its final backslash, a drive by its
// letter, and never a file of that name. A copy never overwrites.
TEST(FileSystemPlatform, FoldersAreMadeAndFoundAndCopiesNeverOverwrite) {
    WinFileSystem fs;
    const std::string deep = TempFile("乐库\\一\\二");
    ASSERT_TRUE(fs.CreateFolder(deep + "\\"));
    for (const std::string& folder : {deep, deep + "\\", std::string("C:\\"), std::string("C:")}) {
        EXPECT_TRUE(fs.FolderExists(folder)) << folder;
    }
    const std::string song = deep + "\\Song Title.MP3", copy = deep + "\\Sub Folder\\副本.mp3";
    ASSERT_TRUE(fs.WriteFileAtomic(song, "new bytes"));
    ASSERT_TRUE(fs.CreateFolder(deep + "\\Sub Folder"));
    EXPECT_FALSE(fs.FolderExists(song));
    fs.RemoveFile(copy);  // left by a run that failed
    ASSERT_TRUE(fs.CopyNewFile(song, copy));
    ASSERT_TRUE(fs.WriteFileAtomic(song, "other"));
    EXPECT_FALSE(fs.CopyNewFile(song, copy));
    EXPECT_EQ(fs.ReadFile(copy).bytes, "new bytes");
    EXPECT_TRUE(fs.RemoveFile(song) && fs.RemoveFile(copy));
}

// A sparse file of 2 GB with a tag at its end: the tag line and the stream panel come from its ends.
TEST(FileSystemPlatform, AFileOfTwoGigabytesShowsItsTag) {
    WinFileSystem fs;
    const std::string path = TempFile("大文件.mp3");
    ASSERT_TRUE(fs.WriteFileAtomic(path, test::MpegFrames(4)));
    const long long tagAt = (2LL << 30) - 128;
    ASSERT_TRUE(fs.WriteFilePart(path, tagAt, "TAGBig" + std::string(122, '\0')));
    ASSERT_EQ(fs.FileSize(path), tagAt + 128);
    StreamPanelFeed feed(fs);
    feed.Opened(path, -1);
    EXPECT_NE(feed.Texts().title.find("Big"), std::string::npos) << feed.Texts().title;
    EXPECT_TRUE(fs.RemoveFile(path));
}

// Two records saved in turn; the first replaces another program's lyrics block, longer than both.
const Id3v1Tag kSavedTags[] = {{"long", "", "", "2024", ""}, {"short", "", "", "", ""}};
const std::string kSavedFields[] = {BuildLyricsField("[00:01]" + std::string(3000, 'l')), ""};
const std::string kAudio = test::MpegFrames(100);
const std::string kStartTail = "LYRICSBEGININD0000210LYR04956" + std::string(4956, 'l') + "004985LYRICS200";

// Saves in turn until killed. Run by the test below in a process of its own.
TEST(InfoBlockKill, DISABLED_SaveUntilKilled) {
    WinFileSystem fs;
    wchar_t wide[MAX_PATH] = {};
    ASSERT_NE(GetEnvironmentVariableW(L"LUMORA_KILL_TARGET", wide, MAX_PATH), 0u);
    const std::string path = Narrow(wide);
    for (unsigned i = 0;; ++i) WriteInfoBlock(fs, path, kSavedTags[i % 2], kSavedFields[i % 2]);
}

// Killed at random points of its saves, the file is always a whole file some sequence of saves makes, with
// its audio as it was.
TEST(InfoBlockKill, KilledAtRandomPointsTheFileIsOldOrNewWhole) {
    // The files the saves make in turn from the start. A run restarts with the first record, which leaves a
    // file it made itself as it was and turns one the second record made into the next of this list.
    test::FakeFileSystem fake;
    fake.files["a"] = kAudio + kStartTail;
    std::set<std::string> whole{fake.files["a"]};
    for (int i = 0; i < 6; ++i) {
        ASSERT_EQ(WriteInfoBlock(fake, "a", kSavedTags[i % 2], kSavedFields[i % 2]), InfoWriteResult::Written);
        whole.insert(fake.files["a"]);
    }
    WinFileSystem fs;
    const std::string path = TempFile("中断 保存.mp3");
    ASSERT_TRUE(fs.WriteFileAtomic(path, kAudio + kStartTail));
    SetEnvironmentVariableW(L"LUMORA_KILL_TARGET", Widen(path).c_str());
    wchar_t self[MAX_PATH];
    GetModuleFileNameW(nullptr, self, MAX_PATH);
    std::wstring command = L"\"" + std::wstring(self) +
                           L"\" --gtest_filter=InfoBlockKill.DISABLED_SaveUntilKilled --gtest_also_run_disabled_tests";
    std::mt19937 random(7);
    int saves = 0;
    for (int round = 0; round < 8; ++round) {
        STARTUPINFOW si{};
        si.cb = sizeof si;
        PROCESS_INFORMATION pi{};
        ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr,
                                   &si, &pi));
        // Past the process's start-up, somewhere in its saves.
        Sleep(std::uniform_int_distribution<DWORD>(600, 1500)(random));
        TerminateProcess(pi.hProcess, 1);
        WaitForSingleObject(pi.hProcess, INFINITE);
        CloseHandle(pi.hThread);
        CloseHandle(pi.hProcess);
        const FileRead read = fs.ReadFile(path);
        ASSERT_EQ(read.status, FileRead::Status::Ok);
        EXPECT_EQ(whole.count(read.bytes), 1u) << "round " << round << ", size " << read.bytes.size();
        saves += read.bytes != kAudio + kStartTail;
    }
    EXPECT_GT(saves, 0);  // the saves did run
    fs.RemoveFile(path);
}

// A path past MAX_PATH is never cut: its folders are made, its file written, found, read and named short.
TEST(FileSystemPlatform, PathsLongerThanMaxPathWork) {
    WinFileSystem fs;
    std::string folder = TempFile("长路径");
    while (folder.size() < 300) folder += "\\albums";  // 8.3 names: the short path is as long
    ASSERT_TRUE(fs.CreateFolder(folder));
    const std::string song = folder + "\\歌.mp3";
    ASSERT_GT(Widen(song).size(), static_cast<size_t>(MAX_PATH));
    ASSERT_TRUE(fs.WriteFileAtomic(song, "ID3"));
    EXPECT_TRUE(fs.FileExists(song));
    EXPECT_EQ(fs.ReadFile(song).bytes, "ID3");
    EXPECT_EQ(fs.ListFiles(folder), std::vector<std::string>{"歌.mp3"});
    const auto shortPath = WinMci().ShortPath(song);
    ASSERT_TRUE(shortPath.has_value());
    EXPECT_EQ(fs.ReadFile(*shortPath).bytes, "ID3");
    EXPECT_TRUE(fs.RemoveFile(song));
}

}  // namespace
}  // namespace lumora
