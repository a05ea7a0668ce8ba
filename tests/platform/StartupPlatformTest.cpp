// Start-up's Windows services against Wine: folders and their files.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/FileSystem_win.h"
#include "platform/Instance_win.h"
#include "platform/WinText_win.h"

namespace lumora {
namespace {

class TempTree : public ::testing::Test {
protected:
    void SetUp() override {
        wchar_t buf[MAX_PATH + 1];
        const DWORD n = GetTempPathW(MAX_PATH, buf);
        root_ = Narrow(std::wstring(buf, n)) + "Lumora Start 测试";
        CreateDirectoryW(Widen(root_).c_str(), nullptr);
        Touch("Song Title.MP3");
        Touch("b.txt");
        CreateDirectoryW(Widen(root_ + "\\Sub Folder").c_str(), nullptr);
    }
    void TearDown() override {
        DeleteFileW(Widen(root_ + "\\Song Title.MP3").c_str());
        DeleteFileW(Widen(root_ + "\\b.txt").c_str());
        RemoveDirectoryW(Widen(root_ + "\\Sub Folder").c_str());
        RemoveDirectoryW(Widen(root_).c_str());
    }
    void Touch(const std::string& name) {
        const HANDLE h = CreateFileW(Widen(root_ + "\\" + name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0,
                                     nullptr);
        CloseHandle(h);
    }
    std::string root_;
};

TEST_F(TempTree, FoldersAndTheirFiles) {
    WinFileSystem fs;
    EXPECT_TRUE(fs.FolderExists(root_));
    EXPECT_TRUE(fs.FolderExists(root_ + "\\"));
    EXPECT_TRUE(fs.FolderExists("C:\\"));
    EXPECT_TRUE(fs.FolderExists("C:"));
    EXPECT_FALSE(fs.FolderExists(root_ + "\\b.txt"));
    auto names = fs.ListFiles(root_);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"Song Title.MP3", "b.txt"}));
}

}  // namespace
}  // namespace lumora
