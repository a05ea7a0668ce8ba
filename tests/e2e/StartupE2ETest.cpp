// Lumora started for real under Wine and driven through its windows: how it starts, meets a second
// start, and closes.
#include <commctrl.h>
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "e2e/Driver.h"
#include "platform/Registry_win.h"
#include "support/MpegFrames.h"
#include "ui/ControlIds.h"

namespace lumora::e2e {
namespace {

using namespace ids;
namespace fs = std::filesystem;

using LumoraE2E = SessionTest;

// A copy of Lumora without its balloon-tip component still answers "/?"; started plainly it
// refuses with the start-up error box. Neither opens the main window.
TEST_F(LumoraE2E, StartsThatEndInABox) {
    const TempFolder folder(L"Lumora without tooltip");
    fs::copy_file(LumoraExe(), folder / L"Lumora.exe", fs::copy_options::overwrite_existing);
    const struct {
        const char* tail;
        const char* title;
        const char* start;
        const char* holds;
    } starts[] = {
        {"/?", "Lumora （参数帮助）", "版本：", "3、播放文件夹/驱动器下所有媒体文件"},
        {"", "Lumora 启动错误", "对不起，找不到本软件的配置文件（TOOLTIP），请重新安装或与作者联系。",
         "\n程序运行到：操作系统识别"},
    };
    for (const auto& s : starts) {
        LumoraProcess p = LumoraProcess::Start((folder / L"Lumora.exe").wstring(), s.tail);
        HWND box = WaitForBox(s.title);
        ASSERT_NE(box, nullptr) << s.title;
        const std::string text = BoxText(box);
        EXPECT_EQ(text.rfind(s.start, 0), 0u) << text;
        EXPECT_NE(text.find(s.holds), std::string::npos) << text;
        EXPECT_EQ(FindWindowOf(p.Id(), kMainClass), nullptr);
        AnswerBox(box, IDOK);
        EXPECT_TRUE(p.WaitForExit(kTimeoutMs)) << s.title;
    }
}

BOOL CALLBACK CollectChild(HWND child, LPARAM all) {
    reinterpret_cast<std::vector<HWND>*>(all)->push_back(child);
    return TRUE;
}

// One Lumora started empty: its tips, two second starts and its close, in that order.
TEST_F(LumoraE2E, StartedEmptyItShowsTipsTakesSecondStartsAndKeepsItsPlace) {
    const TempFolder media(L"Lumora E2E 音乐");
    const std::string mp3 = test::MpegFrames(1150), wave = SilentWave(30);  // half a minute each
    for (const wchar_t* name : {L"一 Song.mp3", L"two.MP3"}) WriteBytes(media / name, mp3);
    for (const wchar_t* name : {L"three.wav", L"readme.txt", L"clip.mpeg"}) WriteBytes(media / name, wave);
    ASSERT_TRUE(lumora_.Start(""));
    HWND main = lumora_.main, list = lumora_.list;
    {
        SCOPED_TRACE("every control has a tip, and the tips follow the player");
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
        // The start shows the volume with the slider's ends.
        EXPECT_EQ(ControlText(main, IDC_MAIN_STATUS_LINE), "当前音量为：100%");
        EXPECT_EQ(ControlText(main, IDC_MAIN_VOLUME_MIN) + ControlText(main, IDC_MAIN_VOLUME_MAX), "MINMAX");
        const auto tipOf = [&](int id) { return ToolTipText(tips, GetDlgItem(main, id)); };
        const std::string modeTip = tipOf(IDC_MAIN_MODE_NORMAL), timeTip = tipOf(IDC_MAIN_TIME);
        ASSERT_FALSE(modeTip.empty());
        Click(main, IDC_MAIN_MODE_RANDOM);
        Click(main, IDC_MAIN_TIME_MODE);
        EXPECT_TRUE(WaitFor([&] { return tipOf(IDC_MAIN_MODE_NORMAL) != modeTip && tipOf(IDC_MAIN_TIME) != timeTip; }));
        Click(main, IDC_MAIN_MODE_NORMAL);
    }
    {
        SCOPED_TRACE("a second start without argument brings the first back and ends");
        ShowWindow(main, SW_MINIMIZE);
        LumoraProcess second = LumoraProcess::Start(LumoraExe(), "");
        DWORD code = 1;
        ASSERT_TRUE(second.WaitForExit(kTimeoutMs, &code));
        EXPECT_EQ(code, 0u);
        EXPECT_TRUE(WaitFor([&] { return !IsIconic(main); }));
        EXPECT_TRUE(IsWindowVisible(main));
    }
    {
        SCOPED_TRACE("a second start hands its quoted folder to the first, which plays its media files");
        LumoraProcess second = LumoraProcess::Start(LumoraExe(), Quoted(media.Text()));
        ASSERT_TRUE(second.WaitForExit(kTimeoutMs));
        EXPECT_EQ(WaitForControlText(main, IDC_MAIN_COMBINED, "正在播放第 1个文件-----共 3个文件"),
                  "正在播放第 1个文件-----共 3个文件");
        EXPECT_EQ(AllWindows(kMainClass).size(), 1u);
    }
    const auto before = lumora_.Lines();
    {
        SCOPED_TRACE("the queue: numbered, the first playing, shown in the status bar");
        ASSERT_EQ(before.size(), 3u);
        std::set<std::string> names;  // numbered in order; the names in the order the folder lists them
        for (size_t i = 0; i < before.size(); ++i) {
            EXPECT_EQ(before[i].substr(0, 5), "00" + std::to_string(i + 1) + "-(");
            names.insert(before[i].substr(5));
        }
        EXPECT_EQ(names, (std::set<std::string>{"three.wav)", "two.MP3)", "一 Song.mp3)"}));
        EXPECT_EQ(lumora_.Title(), before[0].substr(5, before[0].size() - 6));
        EXPECT_EQ(StatusText(main, IDC_MAIN_STATUS, 1), "正在播放第 1个文件");
        EXPECT_EQ(StatusText(main, IDC_MAIN_STATUS, 2), "共 3个文件");
        EXPECT_EQ(StatusText(main, IDC_MAIN_STATUS, 0), "正在播放" + before[0]);
        EXPECT_EQ(Text(list), "《Lumora》文件列表");
    }
    {
        SCOPED_TRACE("the list refuses to remove the playing entry and moves another through its input box");
        SendDlgItemMessageW(list, IDC_PLAYLIST_LINES, LB_SETCURSEL, 0, 0);
        Command(list, IDM_PLAYLIST_REMOVE);
        EXPECT_EQ(CloseBox("错误"), "正在播放的媒体文件不能删除。");
        SendDlgItemMessageW(list, IDC_PLAYLIST_LINES, LB_SETCURSEL, 2, 0);
        Command(list, IDM_PLAYLIST_MOVE);
        HWND ask = WaitForBox("移动位置");
        ASSERT_NE(ask, nullptr);
        EXPECT_EQ(BoxText(ask), "你想把" + before[2] + " 的位置移动到哪里？\r\n范围:1～3");
        TypeAndConfirm(ask, "2");
        const std::string moved = "002-(" + before[2].substr(5);
        EXPECT_TRUE(WaitFor([&] { return lumora_.Lines()[1] == moved; }));
    }
    {
        SCOPED_TRACE("closing stores the window's place as binary decimal text in twips");
        SetWindowPos(main, nullptr, 120, 90, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        PostMessageW(main, WM_CLOSE, 0, 0);
        ASSERT_TRUE(lumora_.process.WaitForExit(kTimeoutMs));
        for (const char* name : {"TOP", "LEFT"}) {
            const auto v = ReadOption(name);
            ASSERT_TRUE(v.has_value());
            EXPECT_EQ(v->kind, RegistryValue::Kind::Binary);
            EXPECT_TRUE(!v->data.empty() && v->data.find_first_not_of("0123456789") == std::string::npos) << v->data;
        }
        EXPECT_EQ(ReadOption("LEFT")->data, std::to_string(120 * 1440 / 96));
    }
}

}  // namespace
}  // namespace lumora::e2e
