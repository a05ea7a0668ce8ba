// The file port on Wine's real file system: drive kinds as the mount manager reports them,
// writes into a file's tail, copies that never overwrite, and the per-user data folder.
#include <windows.h>

#include <gtest/gtest.h>

#include "platform/FileSystem_win.h"
#include "platform/Mci_win.h"
#include "platform/WinText_win.h"

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
    struct Case {
        const char* path;
        DriveKind kind;
    };
    const Case cases[] = {
        {"C:\\windows", DriveKind::Fixed},         {"c:", DriveKind::Fixed},
        {"R:\\歌曲\\a.mp3", DriveKind::Removable}, {"S:\\", DriveKind::Network},
        {"T:\\track.mp3", DriveKind::CdRom},       {"Q:\\nothing", DriveKind::Unknown},
        {"\\\\server\\share", DriveKind::Unknown}, {"", DriveKind::Unknown},
    };
    for (const auto& c : cases) EXPECT_EQ(fs.DriveType(c.path), c.kind) << c.path;
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
    CloseHandle(held);
    EXPECT_EQ(fs.ReadFile(path).bytes, "01X34567abcd");
    SetFileAttributesW(Widen(path).c_str(), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN);
    ASSERT_TRUE(fs.ClearAttributes(path));
    EXPECT_EQ(GetFileAttributesW(Widen(path).c_str()) & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN), 0u);
    EXPECT_TRUE(fs.CanOpenForWriting(path));
    EXPECT_TRUE(fs.RemoveFile(path) && !fs.FileExists(path));
    EXPECT_FALSE(fs.WriteFilePart(path, 0, "new"));  // a missing file is not created
}

TEST(FileSystemPlatform, CopiesNeverOverwrite) {
    WinFileSystem fs;
    const std::string from = TempFile("源.mp3");
    const std::string to = TempFile("目标.mp3");
    fs.RemoveFile(to);
    ASSERT_TRUE(fs.WriteFileAtomic(from, "new bytes"));
    ASSERT_TRUE(fs.CopyNewFile(from, to));
    EXPECT_EQ(fs.ReadFile(to).bytes, "new bytes");
    ASSERT_TRUE(fs.WriteFileAtomic(from, "other"));
    EXPECT_FALSE(fs.CopyNewFile(from, to));
    EXPECT_EQ(fs.ReadFile(to).bytes, "new bytes");
    fs.RemoveFile(from);
    fs.RemoveFile(to);
}

TEST(FileSystemPlatform, FoldersAreMadeWithTheirParents) {
    WinFileSystem fs;
    const std::string deep = TempFile("乐库\\一\\二");
    ASSERT_TRUE(fs.CreateFolder(deep + "\\"));
    EXPECT_TRUE(fs.FolderExists(deep));
    const std::string data = fs.UserDataFolder();
    ASSERT_FALSE(data.empty());
    EXPECT_TRUE(fs.FolderExists(data));
    EXPECT_NE(data.back(), '\\');
}

// A path past MAX_PATH is never cut: its folders are made, its file written, found, read and named short.
TEST(FileSystemPlatform, PathsLongerThanMaxPathWork) {
    WinFileSystem fs;
    std::string folder = TempFile("长路径");
    while (folder.size() < 300) folder += "\\folder with a long name";
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
