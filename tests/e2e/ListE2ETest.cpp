// List files, the default list and the music library, worked through the real Lumora under Wine.
#include <shlobj.h>
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>

#include "e2e/Driver.h"
#include "platform/Registry_win.h"
#include "support/MpegFrames.h"
#include "ui/ControlIds.h"

namespace lumora::e2e {
namespace {

using namespace ids;
namespace fs = std::filesystem;

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

constexpr char kLibraryHeader[] = "这是ZEV-Lumora-正式版-的“我的音乐库”列表文件请不要修改以下参数，以免造成错误。";

class ListE2E : public SessionTest {
protected:
    void SetUp() override {
        SessionTest::SetUp();
        // Silent MPEG audio of half a minute: real frames, so the filter keeps them.
        const std::string mp3 = test::MpegFrames(1150);
        for (const wchar_t* name : {L"一.mp3", L"two.mp3", L"three.mp3"}) WriteBytes(media_ / name, mp3);
        fs::remove(DefaultListPath());
    }
    void TearDown() override {
        SessionTest::TearDown();
        fs::remove(DefaultListPath());
    }
    // The save command up to the save dialog, answered with `path`.
    HWND SaveListAs(const fs::path& path) {
        Command(lumora_.main, IDM_SAVE_LIST);
        HWND dialog = WaitForBox("保存Lumora专用列表文件（*.QLB）。请在下面输入文件名（不要输入扩展名）。");
        if (dialog) AnswerFileDialog(dialog, PathText(path));
        return dialog;
    }

    TempFolder media_{L"Lumora 列表 E2E"};
};

// One list file through its life: loaded from the command line, saved again, its playing entry added
// to the music library.
TEST_F(ListE2E, ListFileLoadsAndIsSavedAndItsEntryGoesToTheLibrary) {
    const fs::path library = media_ / L"我的音乐库";
    fs::create_directories(library);
    WinRegistry reg;
    reg.CreateKey(RegistryRoot::LocalMachine, kPlayerKey);
    reg.WriteText(RegistryRoot::LocalMachine, kPlayerKey, "我的音乐库", PathText(library) + "\\");
    const std::string line3 = media_.Text() + "*一.mp3*two.mp3";
    WriteBytes(media_ / L"歌单.qlb", ListBytes(kHeader, "2*1", line3));
    ASSERT_TRUE(lumora_.Start(Quoted(PathText(media_ / L"歌单.qlb"))));
    {
        SCOPED_TRACE("the list on the command line loads and plays");
        EXPECT_TRUE(lumora_.WaitForLines({"001-(一.mp3)", "002-(two.mp3)"})) << lumora_.Lines().size();
        ASSERT_TRUE(lumora_.Playing());
        EXPECT_EQ(lumora_.Title(), "一.mp3");
    }
    {
        SCOPED_TRACE("saved, it holds the folder and the names in code page 936");
        ASSERT_NE(SaveListAs(media_ / L"新列表"), nullptr);
        // The dialog itself gives the typed name the list extension.
        EXPECT_EQ(CloseBox("文件保存完毕"), "列表文件已保存完毕，路径为 " + PathText(media_ / L"新列表.qlb"));
        EXPECT_EQ(ReadBytes(media_ / L"新列表.qlb"), ListBytes(kHeader, "2*1", line3));
    }
    {
        SCOPED_TRACE("the playing file, renamed, goes to the library and its list");
        Command(lumora_.main, IDM_LIBRARY_ADD_CURRENT);
        // "L32" is on by default: the rename box offers the file name.
        HWND rename = WaitForBox("文件重新命名框");
        ASSERT_NE(rename, nullptr);
        EXPECT_EQ(BoxText(rename),
                  "请重新为 一.mp3 命名。(请不要加后缀名)\r\n提示：单击“取消”停止加入该文件。\r\n注意：文件名不能有以下字符："
                  "\r\n    \\ / : * ? < > | \r\n     否则添加会失败！！");
        TypeAndConfirm(rename, "第二首");
        EXPECT_EQ(CloseBox("文件加入成功").rfind("文件已成功的加入“我的音乐库”。", 0), 0u);
        EXPECT_TRUE(WaitFor([&] { return fs::exists(library / L"第二首.mp3"); }));
        EXPECT_EQ(ReadBytes(library / L"我的音乐库.qlb"),
                  ListBytes(kLibraryHeader, "1*1", PathText(library) + "\\*第二首.mp3"));
    }
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
    ASSERT_TRUE(lumora_.Start(Quoted(PathText(many))));
    ASSERT_TRUE(lumora_.WaitForLineCount(999));
    HWND dialog = SaveListAs(list);
    ASSERT_NE(dialog, nullptr);
    // Saving over a list asks first (the system's own question, owned by the dialog); yes goes on.
    HWND progress = nullptr;
    WaitFor([&] {
        for (HWND w : AllWindows(L"#32770")) {
            if (GetWindow(w, GW_OWNER) == dialog) PostMessageW(w, WM_COMMAND, MAKEWPARAM(IDYES, BN_CLICKED), 0);
        }
        progress = FindWindowOf(lumora_.process.Id(), kProgressClass);
        return progress != nullptr;
    });
    ASSERT_NE(progress, nullptr);
    lumora_.process.Kill();
    EXPECT_EQ(ReadBytes(list), old);
    for (const auto& entry : fs::directory_iterator(media_.Path())) {
        EXPECT_EQ(entry.path().wstring().find(L"lumora-tmp"), std::wstring::npos) << PathText(entry.path());
    }
}

// "L15" says whether the default list plays at start or waits; a damaged one is reported and deleted.
TEST_F(ListE2E, DefaultListAtStart) {
    fs::create_directories(DefaultListPath().parent_path());
    WriteBytes(DefaultListPath(), ListBytes("这是ZEV-Lumora-正式版-的默认列表文件请不要修改以下参数，以免造成错误。",
                                            "2*1", media_.Text() + "*two.mp3*three.mp3"));
    for (const auto& [option, playCaption] : {std::pair{"1", "暂停"}, {"0", "播放"}}) {
        StoreOption("L15", option);
        ASSERT_TRUE(lumora_.Start(""));
        EXPECT_TRUE(lumora_.WaitForLines({"001-(two.mp3)", "002-(three.mp3)"}));
        Sleep(500);  // a list that waits must still be waiting a moment later
        EXPECT_EQ(WaitForControlText(lumora_.main, IDC_MAIN_PLAY, playCaption), playCaption) << option;
        lumora_.process.Kill();
    }
    WriteBytes(DefaultListPath(), "\x01\x02 not a list");
    ASSERT_TRUE(lumora_.Start(""));
    EXPECT_EQ(CloseBox("默认列表文件错误")
                  .rfind("默认列表文件已损坏或默认列表文件里的媒体文件不存在。单击“确定”删除默认列表文件。", 0),
              0u);
    EXPECT_TRUE(WaitFor([] { return !fs::exists(DefaultListPath()); }));
}

}  // namespace
}  // namespace lumora::e2e
