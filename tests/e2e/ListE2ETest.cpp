// List files, the default list and the music library, worked through the real Lumora under Wine.
#include <shlobj.h>
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "e2e/Driver.h"
#include "platform/Registry_win.h"
#include "ports/TextCodec.h"
#include "platform/WinText_win.h"
#include "support/MpegFrames.h"
#include "ui/ControlIds.h"

namespace lumora::e2e {
namespace {

using namespace ids;
namespace fs = std::filesystem;

constexpr char kSetupKey[] = "SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup";
constexpr char kPlayerKey[] = "SOFTWARE\\Tavrinsoft\\TavrinPlayer";
constexpr char kHeader[] = "这是ZEV-Lumora-正式版-的列表文件请不要修改以下参数，以免造成错误。";

// The three lines of a list file, as Lumora writes them: code page 936, CR LF.
std::string ListBytes(const std::string& header, const std::string& count, const std::string& line3) {
    return Cp936(header) + "\r\n" + count + "\r\n" + Cp936(line3) + "\r\n";
}

fs::path DefaultListPath() {
    wchar_t buf[MAX_PATH] = {};
    SHGetFolderPathW(nullptr, CSIDL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, buf);
    return fs::path(buf) / L"Lumora" / L"zvp3mr.qlb";
}

// The name inside a list line "001-(name)".
std::string NameOf(const std::string& line) { return line.substr(5, line.size() - 6); }

class ListE2E : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(LumoraExe().empty()) << "LUMORA_EXE is not set";
        ForgetSettings();
        // Silent MPEG audio of half a minute: real frames, so the filter keeps them.
        const std::string mp3 = test::MpegFrames(1150);
        for (const wchar_t* name : {L"一.mp3", L"two.mp3", L"three.mp3"}) WriteBytes(media_ / name, mp3);
        fs::remove(DefaultListPath());
    }
    void TearDown() override {
        lumora_.process.Kill();
        fs::remove(DefaultListPath());
    }
    void Start(const std::string& argument) {
        ASSERT_TRUE(lumora_.Start(argument.empty() ? "" : Quoted(argument)));
    }
    std::vector<std::string> Lines() { return lumora_.Lines(); }
    void AnswerOk(const std::string& title, const std::string& textStart = {}) {
        HWND box = WaitForBox(title);
        ASSERT_NE(box, nullptr) << title;
        EXPECT_EQ(BoxText(box).rfind(textStart, 0), 0u) << BoxText(box);
        AnswerBox(box, IDOK);
    }
    // The save command up to the save dialog, answered with `path`.
    HWND SaveListAs(const fs::path& path) {
        PostMessageW(lumora_.main, WM_COMMAND, IDM_SAVE_LIST, 0);
        HWND dialog = WaitForBox("保存Lumora专用列表文件（*.QLB）。请在下面输入文件名（不要输入扩展名）。");
        if (dialog) AnswerFileDialog(dialog, PathText(path));
        return dialog;
    }

    TempFolder media_{L"Lumora 列表 E2E"};
    Session lumora_;
};

TEST_F(ListE2E, ListFileOnTheCommandLineLoadsAndPlays) {
    const fs::path list = media_ / L"歌单.qlb";
    WriteBytes(list, ListBytes(kHeader, "2*1", media_.Text() + "*一.mp3*two.mp3"));
    Start(PathText(list));
    EXPECT_TRUE(lumora_.WaitForLines({"001-(一.mp3)", "002-(two.mp3)"})) << Lines().size();
    EXPECT_TRUE(lumora_.Playing());
    EXPECT_EQ(ControlText(lumora_.main, IDC_MAIN_TITLE), "一.mp3");
}

TEST_F(ListE2E, SavedListHoldsTheFolderAndNamesInCodePage936) {
    Start(media_.Text());
    ASSERT_TRUE(lumora_.WaitForLineCount(3));
    ASSERT_NE(SaveListAs(media_ / L"新列表"), nullptr);
    HWND done = WaitForBox("文件保存完毕");
    ASSERT_NE(done, nullptr);
    // The dialog itself gives the typed name the list extension.
    EXPECT_EQ(BoxText(done), "列表文件已保存完毕，路径为 " + PathText(media_ / L"新列表.qlb"));
    AnswerBox(done, IDOK);
    const std::string bytes = ReadBytes(media_ / L"新列表.qlb");
    const auto lines = Lines();
    std::string line3 = media_.Text();
    for (const auto& l : lines) line3 += "*" + NameOf(l);
    EXPECT_EQ(bytes, ListBytes(kHeader, "3*1", line3));
}

// A save is written beside the old list and put in its place only when whole: killed while it
// filters a long queue, Lumora leaves the old list as it was and no half file anywhere.
TEST_F(ListE2E, SaveKilledHalfWayLeavesTheOldListWhole) {
    const fs::path many = media_ / L"many";
    fs::create_directories(many);
    const std::string mp3 = test::MpegFrames(40);
    for (int i = 0; i < 999; ++i) WriteBytes(many / (std::to_wstring(1000 + i) + L".mp3"), mp3);
    const fs::path list = media_ / L"旧列表.qlb";
    const std::string old = ListBytes(kHeader, "2*1", media_.Text() + "*一.mp3*two.mp3");
    WriteBytes(list, old);
    Start(PathText(many));
    ASSERT_TRUE(lumora_.WaitForLineCount(999));
    HWND dialog = SaveListAs(list);
    ASSERT_NE(dialog, nullptr);
    // Saving over a list asks first (the system's own question, owned by the dialog); yes goes on.
    HWND progress = nullptr;
    const DWORD asked = GetTickCount();
    while (!progress && GetTickCount() - asked < kTimeoutMs) {
        for (HWND w : AllWindows(L"#32770")) {
            if (GetWindow(w, GW_OWNER) == dialog) PostMessageW(w, WM_COMMAND, MAKEWPARAM(IDYES, BN_CLICKED), 0);
        }
        progress = FindWindowOf(lumora_.process.Id(), kProgressClass);
        Sleep(20);
    }
    ASSERT_NE(progress, nullptr);
    lumora_.process.Kill();
    EXPECT_EQ(ReadBytes(list), old);
    for (const auto& entry : fs::directory_iterator(media_.Path())) {
        EXPECT_EQ(entry.path().wstring().find(L"lumora-tmp"), std::wstring::npos) << Narrow(entry.path().wstring());
    }
}

TEST_F(ListE2E, DefaultListPlaysAtStartOrWaitsAsTheOptionSays) {
    fs::create_directories(DefaultListPath().parent_path());
    WriteBytes(DefaultListPath(), ListBytes("这是ZEV-Lumora-正式版-的默认列表文件请不要修改以下参数，以免造成错误。",
                                            "2*1", media_.Text() + "*two.mp3*three.mp3"));
    for (const auto& [option, playCaption] : {std::pair{"1", "暂停"}, {"0", "播放"}}) {
        StoreOption("L15", option);
        Start("");
        EXPECT_TRUE(lumora_.WaitForLines({"001-(two.mp3)", "002-(three.mp3)"}));
        Sleep(500);  // a list that waits must still be waiting a moment later
        EXPECT_EQ(WaitForControlText(lumora_.main, IDC_MAIN_PLAY, playCaption), playCaption) << option;
        lumora_.process.Kill();
    }
}

TEST_F(ListE2E, DamagedDefaultListIsReportedAndDeleted) {
    fs::create_directories(DefaultListPath().parent_path());
    WriteBytes(DefaultListPath(), "\x01\x02 not a list");
    Start("");
    AnswerOk("默认列表文件错误", "默认列表文件已损坏或默认列表文件里的媒体文件不存在。单击“确定”删除默认列表文件。");
    EXPECT_TRUE(WaitFor([] { return !fs::exists(DefaultListPath()); }));
}

class LibraryE2E : public ListE2E {
protected:
    void SetUp() override {
        ListE2E::SetUp();
        library_ = media_ / L"我的音乐库";
        fs::create_directories(library_);
        WinRegistry reg;
        reg.CreateKey(RegistryRoot::LocalMachine, kPlayerKey);
        reg.WriteText(RegistryRoot::LocalMachine, kPlayerKey, "我的音乐库", PathText(library_) + "\\");
    }
    std::string LibraryList() { return ReadBytes(library_ / L"我的音乐库.qlb"); }
    fs::path library_;
};

constexpr char kLibraryHeader[] = "这是ZEV-Lumora-正式版-的“我的音乐库”列表文件请不要修改以下参数，以免造成错误。";

TEST_F(LibraryE2E, AddingThePlayingFileCreatesTheLibraryList) {
    Start(PathText(media_ / L"two.mp3"));
    ASSERT_TRUE(lumora_.Playing());
    PostMessageW(lumora_.main, WM_COMMAND, IDM_LIBRARY_ADD_CURRENT, 0);
    // "L32" is on by default: the rename box offers the file name.
    HWND rename = WaitForBox("文件重新命名框");
    ASSERT_NE(rename, nullptr);
    EXPECT_EQ(
        BoxText(rename),
        "请重新为 two.mp3 命名。(请不要加后缀名)\r\n提示：单击“取消”停止加入该文件。\r\n注意：文件名不能有以下字符："
        "\r\n    \\ / : * ? < > | \r\n     否则添加会失败！！");
    TypeAndConfirm(rename, "第二首");
    AnswerOk("文件加入成功", "文件已成功的加入“我的音乐库”。");
    EXPECT_TRUE(fs::exists(library_ / L"第二首.mp3"));
    EXPECT_EQ(LibraryList(), ListBytes(kLibraryHeader, "1*1", PathText(library_) + "\\*第二首.mp3"));
}

}  // namespace
}  // namespace lumora::e2e
