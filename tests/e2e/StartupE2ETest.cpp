// Lumora started for real under Wine and driven through its windows.
#include <commctrl.h>
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <set>

#include "e2e/Driver.h"
#include "platform/Registry_win.h"
#include "platform/WinText_win.h"
#include "ui/ControlIds.h"

namespace lumora::e2e {
namespace {

using namespace ids;
namespace fs = std::filesystem;

class LumoraE2E : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(LumoraExe().empty()) << "LUMORA_EXE is not set";
        ForgetSettings();
        // Half a minute of silence in each: they play (so the first entry stays the current one while a
        // test looks) without a sound to disturb the tests that record one.
        const std::string wave = SilentWave(30);
        for (const wchar_t* name : {L"一 Song.mp3", L"two.MP3", L"three.wav", L"readme.txt", L"clip.mpeg"}) {
            WriteBytes(media_ / name, wave);
        }
    }
    void TearDown() override {
        for (auto& p : processes_) p.Kill();
    }
    LumoraProcess& Start(const std::string& tail, const std::wstring& exe = LumoraExe()) {
        processes_.push_back(LumoraProcess::Start(exe, tail));
        return processes_.back();
    }
    std::string MediaFolder() const { return media_.Text(); }

    TempFolder media_{L"Lumora E2E 音乐"};
    std::vector<LumoraProcess> processes_;
};

TEST_F(LumoraE2E, HelpShowsItsBoxAndNoMainWindow) {
    LumoraProcess& p = Start("/?");
    HWND box = WaitForBox("Lumora （参数帮助）");
    ASSERT_NE(box, nullptr);
    const std::string text = BoxText(box);
    EXPECT_EQ(text.rfind("版本：", 0), 0u) << text;
    EXPECT_NE(text.find("3、播放文件夹/驱动器下所有媒体文件"), std::string::npos);
    AnswerBox(box, IDOK);
    EXPECT_TRUE(p.WaitForExit(kTimeoutMs));
    EXPECT_EQ(FindWindowOf(p.Id(), kMainClass), nullptr);
}

TEST_F(LumoraE2E, SecondStartWithoutArgumentStartsNoSecondWindow) {
    LumoraProcess& first = Start("");
    HWND main = WaitForWindow(first.Id(), kMainClass);
    ASSERT_NE(main, nullptr);
    ShowWindow(main, SW_MINIMIZE);
    LumoraProcess& second = Start("");
    DWORD code = 1;
    ASSERT_TRUE(second.WaitForExit(kTimeoutMs, &code));
    EXPECT_EQ(code, 0u);
    EXPECT_EQ(AllWindows(kMainClass).size(), 1u);
    // The running window comes back to its normal state at the front.
    EXPECT_TRUE(WaitFor([&] { return !IsIconic(main); }));
    EXPECT_TRUE(IsWindowVisible(main));
}

BOOL CALLBACK CollectChild(HWND child, LPARAM all) {
    reinterpret_cast<std::vector<HWND>*>(all)->push_back(child);
    return TRUE;
}

TEST_F(LumoraE2E, EveryControlOfTheMainWindowHasBalloonHelp) {
    LumoraProcess& p = Start("");
    HWND main = WaitForWindow(p.Id(), kMainClass);
    ASSERT_NE(main, nullptr);
    // The component's tip window is the one the main window owns (the playlist has its own).
    HWND tips = nullptr;
    WaitFor([&] {
        for (HWND w : AllWindows(L"tooltips_class32")) {
            if (GetWindow(w, GW_OWNER) == main) tips = w;
        }
        return tips != nullptr;
    });
    ASSERT_NE(tips, nullptr) << "the balloon-tip component made no tip window";
    std::vector<HWND> children;
    EnumChildWindows(main, CollectChild, reinterpret_cast<LPARAM>(&children));
    size_t controls = 0;
    for (HWND child : children) {
        wchar_t cls[64] = {};
        GetClassNameW(child, cls, 64);
        if (lstrcmpiW(cls, L"msctls_statusbar32") != 0) ++controls;
    }
    EXPECT_GT(controls, 20u);
    EXPECT_EQ(static_cast<size_t>(SendMessageW(tips, TTM_GETTOOLCOUNT, 0, 0)), controls);

    // The texts follow the player, and the start shows the volume with the slider's ends.
    EXPECT_EQ(ControlText(main, IDC_MAIN_STATUS_LINE), "当前音量为：100%");
    EXPECT_EQ(ControlText(main, IDC_MAIN_VOLUME_MIN) + ControlText(main, IDC_MAIN_VOLUME_MAX), "MINMAX");
    const auto tipOf = [&](int id) { return ToolTipText(tips, GetDlgItem(main, id)); };
    const std::string modeTip = tipOf(IDC_MAIN_MODE_NORMAL), timeTip = tipOf(IDC_MAIN_TIME);
    ASSERT_FALSE(modeTip.empty());
    Click(main, IDC_MAIN_MODE_RANDOM);
    Click(main, IDC_MAIN_TIME_MODE);
    EXPECT_TRUE(WaitFor([&] { return tipOf(IDC_MAIN_MODE_NORMAL) != modeTip && tipOf(IDC_MAIN_TIME) != timeTip; }));
}

TEST_F(LumoraE2E, SecondStartHandsAQuotedPathToTheFirst) {
    LumoraProcess& first = Start("");
    HWND main = WaitForWindow(first.Id(), kMainClass);
    ASSERT_NE(main, nullptr);
    const std::string song = MediaFolder() + "\\two.MP3";
    LumoraProcess& second = Start("\"" + song + "\"");
    ASSERT_TRUE(second.WaitForExit(kTimeoutMs));
    HWND list = WaitForWindow(first.Id(), kPlaylistClass);
    EXPECT_EQ(WaitForControlText(main, IDC_MAIN_TITLE, "two.MP3"), "two.MP3");
    EXPECT_EQ(ListLines(list, IDC_PLAYLIST_LINES), (std::vector<std::string>{"001-(two.MP3)"}));
    EXPECT_EQ(AllWindows(kMainClass).size(), 1u);
}

TEST_F(LumoraE2E, ClosingStoresThePositionAsBinaryDecimalText) {
    LumoraProcess& p = Start("");
    HWND main = WaitForWindow(p.Id(), kMainClass);
    ASSERT_NE(main, nullptr);
    SetWindowPos(main, nullptr, 120, 90, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    PostMessageW(main, WM_CLOSE, 0, 0);
    ASSERT_TRUE(p.WaitForExit(kTimeoutMs));
    for (const char* name : {"TOP", "LEFT"}) {
        const auto v = ReadOption(name);
        ASSERT_TRUE(v.has_value());
        EXPECT_EQ(v->kind, RegistryValue::Kind::Binary);
        ASSERT_FALSE(v->data.empty());
        for (char c : v->data) EXPECT_TRUE(c >= '0' && c <= '9') << v->data;
    }
    EXPECT_EQ(ReadOption("LEFT")->data, std::to_string(120 * 1440 / 96));
}

TEST_F(LumoraE2E, MissingTooltipComponentShowsTheStartupErrorBox) {
    const TempFolder folder(L"Lumora without tooltip");
    fs::copy_file(LumoraExe(), folder / L"Lumora.exe", fs::copy_options::overwrite_existing);
    LumoraProcess& p = Start("", (folder / L"Lumora.exe").wstring());
    HWND box = WaitForBox("Lumora 启动错误");
    ASSERT_NE(box, nullptr);
    const std::string text = BoxText(box);
    EXPECT_EQ(text.rfind("对不起，找不到本软件的配置文件（TOOLTIP），请重新安装或与作者联系。", 0), 0u);
    EXPECT_EQ(text.substr(text.rfind('\n') + 1), "程序运行到：操作系统识别");
    EXPECT_EQ(FindWindowOf(p.Id(), kMainClass), nullptr);
    AnswerBox(box, IDOK);
    EXPECT_TRUE(p.WaitForExit(kTimeoutMs));
}

// The folder's media files, numbered, the first one playing; the list refuses to remove it and moves
// another through its input box.
TEST_F(LumoraE2E, FolderArgumentFillsTheQueueAndTheListEditsIt) {
    LumoraProcess& p = Start("\"" + MediaFolder() + "\"");
    HWND main = WaitForWindow(p.Id(), kMainClass);
    ASSERT_NE(main, nullptr);
    HWND list = WaitForWindow(p.Id(), kPlaylistClass);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(WaitForControlText(main, IDC_MAIN_COMBINED, "正在播放第 1个文件-----共 3个文件"),
              "正在播放第 1个文件-----共 3个文件");
    const auto before = ListLines(list, IDC_PLAYLIST_LINES);
    ASSERT_EQ(before.size(), 3u);
    std::set<std::string> names;  // numbered in order; the names in the order the folder lists them
    for (size_t i = 0; i < before.size(); ++i) {
        EXPECT_EQ(before[i].substr(0, 5), "00" + std::to_string(i + 1) + "-(");
        names.insert(before[i].substr(5));
    }
    EXPECT_EQ(names, (std::set<std::string>{"three.wav)", "two.MP3)", "一 Song.mp3)"}));
    EXPECT_EQ(StatusText(main, IDC_MAIN_STATUS, 1), "正在播放第 1个文件");
    EXPECT_EQ(StatusText(main, IDC_MAIN_STATUS, 2), "共 3个文件");
    EXPECT_EQ(StatusText(main, IDC_MAIN_STATUS, 0), "正在播放" + before[0]);
    EXPECT_EQ(Text(list), "《Lumora》文件列表");

    SendDlgItemMessageW(list, IDC_PLAYLIST_LINES, LB_SETCURSEL, 0, 0);
    Command(list, IDM_PLAYLIST_REMOVE);
    HWND refusal = WaitForBox("错误");
    ASSERT_NE(refusal, nullptr);
    EXPECT_EQ(BoxText(refusal), "正在播放的媒体文件不能删除。");
    AnswerBox(refusal, IDOK);

    SendDlgItemMessageW(list, IDC_PLAYLIST_LINES, LB_SETCURSEL, 2, 0);
    Command(list, IDM_PLAYLIST_MOVE);
    HWND ask = WaitForBox("移动位置");
    ASSERT_NE(ask, nullptr);
    EXPECT_EQ(BoxText(ask), "你想把" + before[2] + " 的位置移动到哪里？\r\n范围:1～3");
    TypeAndConfirm(ask, "2");
    const std::string moved = "002-(" + before[2].substr(5);
    EXPECT_TRUE(WaitFor([&] { return ListLines(list, IDC_PLAYLIST_LINES)[1] == moved; }));
}

}  // namespace
}  // namespace lumora::e2e
