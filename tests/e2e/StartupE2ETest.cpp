// Lumora started for real under Wine and driven through its windows: how it starts, meets a second
// start, works its lists and closes.
#include <commctrl.h>

#include <set>
#include <tuple>

#include "e2e/Driver.h"
#include "platform/Registry_win.h"
#include "support/MpegFrames.h"

namespace lumora::e2e {
namespace {

using namespace ids;
namespace fs = std::filesystem;

constexpr char kHeader[] = "这是ZEV-Lumora-正式版-的列表文件请不要修改以下参数，以免造成错误。";

// The three lines of a list file, as Lumora writes them: code page 936, CR LF.
std::string ListBytes(const std::string& header, const std::string& count, const std::string& line3) {
    return Cp936(header) + "\r\n" + count + "\r\n" + Cp936(line3) + "\r\n";
}

class LumoraE2E : public SessionTest {
protected:
    // The save command up to the save dialog, answered with `path`.
    HWND SaveListAs(const fs::path& path) {
        return AnswerFileDialog(lumora_.main, IDM_SAVE_LIST,
                                "保存Lumora专用列表文件（*.QLB）。请在下面输入文件名（不要输入扩展名）。",
                                PathText(path));
    }
    // Starts Lumora again with `tail`: it hands the tail to the running one and ends with code 0.
    void StartSecond(const std::string& tail) {
        LumoraProcess second;
        second.Start(LumoraExe(), tail);
        EXPECT_EQ(second.ExitCode(), 0u);
        EXPECT_EQ(AllWindows(kMainClass).size(), 1u);
    }
};

// A copy of Lumora without its balloon-tip component still answers "/?"; started plainly it
// refuses with the start-up error box. Neither opens the main window.
TEST_F(LumoraE2E, StartsThatEndInABox) {
    fs::copy_file(LumoraExe(), media_ / L"Lumora.exe");
    // The command tail, the box's title, how its text starts and what it holds further on.
    for (const auto& [tail, title, start, holds] :
         {std::tuple{"/?", "Lumora （参数帮助）", "版本：", "3、播放文件夹/驱动器下所有媒体文件"},
          {"", "Lumora 启动错误", "对不起，找不到本软件的配置文件（TOOLTIP），请重新安装或与作者联系。",
           "\n程序运行到：操作系统识别"}}) {
        LumoraProcess p;
        p.Start((media_ / L"Lumora.exe").wstring(), tail);
        HWND box = WaitForBox(title);
        ASSERT_NE(box, nullptr) << title;
        const std::string text = BoxText(box);
        EXPECT_EQ(text.rfind(start, 0), 0u) << text;
        EXPECT_NE(text.find(holds), std::string::npos) << text;
        EXPECT_EQ(FindWindowOf(p.Id(), kMainClass), nullptr);
        Click(box, IDOK);
        EXPECT_TRUE(p.ExitCode()) << title;
    }
}

// One Lumora started empty, worked as a user would in a first session, step by step; then the
// starts after it on a default list.
TEST_F(LumoraE2E, OneSessionFromAnEmptyStartToItsCloseThenTheDefaultList) {
    const std::string mp3 = test::MpegFrames(1150), wave = SilentWave(30);  // half a minute each
    for (const wchar_t* name : {L"一 Song.mp3", L"two.MP3"}) WriteBytes(media_ / name, mp3);
    for (const wchar_t* name : {L"three.wav", L"readme.txt", L"clip.mpeg"}) WriteBytes(media_ / name, wave);
    const TempFolder library(L"Lumora 我的音乐库");
    // Left machine-wide, as an installer would: the user's key has no such value, and it still counts.
    WinRegistry().CreateKey(RegistryRoot::LocalMachine, "SOFTWARE\\Tavrinsoft\\TavrinPlayer");
    WinRegistry().WriteText(RegistryRoot::LocalMachine, "SOFTWARE\\Tavrinsoft\\TavrinPlayer", "我的音乐库",
                            library.Text() + "\\");
    ASSERT_TRUE(lumora_.Start(""));
    HWND main = lumora_.main, list = lumora_.list;

    // Every control has a tip, and the tips follow the player.
    // The component's help window (the playlist has its own, the component's balloon one of its own too).
    HWND tips = nullptr;
    WaitFor([&] { return (tips = HelpTips(main)) != nullptr; });
    ASSERT_NE(tips, nullptr) << "the balloon-tip component made no tip window";
    size_t children = 0;  // the controls, and the status bar, which has no tip
    for (HWND child = nullptr; (child = FindWindowExW(main, child, nullptr, nullptr)) != nullptr;) ++children;
    EXPECT_GT(children, 21u);
    EXPECT_EQ(static_cast<size_t>(SendMessageW(tips, TTM_GETTOOLCOUNT, 0, 0)) + 1, children);
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

    // A second start without argument brings the first back and ends.
    ShowWindow(main, SW_MINIMIZE);
    StartSecond("");
    EXPECT_TRUE(WaitFor([&] { return !IsIconic(main) && IsWindowVisible(main); }));

    // A second start hands its quoted folder to the first, which plays its media files.
    StartSecond(Quoted(media_.Text()));
    EXPECT_TRUE(Shows(main, IDC_MAIN_COMBINED, "正在播放第 1个文件-----共 3个文件"));
    const auto before = lumora_.Lines();
    ASSERT_EQ(before.size(), 3u);
    const std::string playing = lumora_.Name(0);

    // The queue holds the media files only, under the names they have; the first plays, and the status
    // bar says so. (The numbering is the queue's, unit tested.)
    std::set<std::string> names;  // in the order the folder lists them
    for (size_t i = 0; i < before.size(); ++i) names.insert(lumora_.Name(i));
    EXPECT_EQ(names, (std::set<std::string>{"three.wav", "two.MP3", "一 Song.mp3"}));
    EXPECT_EQ(lumora_.Title(), playing);
    EXPECT_EQ(ControlText(main, IDC_MAIN_STATUS), "正在播放" + before[0]);
    EXPECT_EQ(Text(list), "《Lumora》文件列表");

    // The list refuses to remove the playing entry. (Removing and moving are the queue controller's,
    // unit tested; here its box is real.)
    SendDlgItemMessageW(list, IDC_PLAYLIST_LINES, LB_SETCURSEL, 0, 0);
    Command(list, IDM_PLAYLIST_REMOVE);
    EXPECT_EQ(CloseBox("错误"), "正在播放的媒体文件不能删除。");

    // The saved list holds the folder and the names in code page 936.
    const fs::path saved = media_ / L"新列表.qlb";
    ASSERT_NE(SaveListAs(media_ / L"新列表"), nullptr);
    // The dialog itself gives the typed name the list extension.
    EXPECT_EQ(CloseBox("文件保存完毕"), "列表文件已保存完毕，路径为 " + PathText(saved));
    std::string line3 = media_.Text();
    for (size_t i = 0; i < before.size(); ++i) line3 += "*" + lumora_.Name(i);
    EXPECT_EQ(ReadBytes(saved), ListBytes(kHeader, "3*1", line3));

    // The playing file, renamed, goes to the music library and its list.
    // "L32" is on by default: the rename box offers the file name.
    HWND rename = OpenBox(main, IDM_LIBRARY_ADD_CURRENT, "文件重新命名框");
    ASSERT_NE(rename, nullptr);
    EXPECT_EQ(BoxText(rename),
              "请重新为 " + playing +
                  " 命名。(请不要加后缀名)\r\n提示：单击“取消”停止加入该文件。\r\n注意：文件名不能有以下字符："
                  "\r\n    \\ / : * ? < > | \r\n     否则添加会失败！！");
    SetControlText(rename, IDC_BOX_EDIT, "第二首");
    Click(rename, IDOK);
    const std::string done = CloseBox("文件加入成功");
    EXPECT_EQ(done.rfind("文件已成功的加入“我的音乐库”。", 0), 0u) << playing << ": " << done;
    // What the library's list holds is the library's (unit tested).
    EXPECT_TRUE(fs::exists(library / Widen("第二首" + playing.substr(playing.rfind('.')))));

    // A list file handed over by a second start loads and plays.
    Click(main, IDC_MAIN_STOP);
    ASSERT_TRUE(lumora_.Stopped());
    StartSecond(Quoted(PathText(saved)));
    EXPECT_TRUE(lumora_.Playing());
    EXPECT_EQ(lumora_.Lines(), before);
    EXPECT_EQ(lumora_.Title(), lumora_.Name(0));

    // Closing stores the window's place as binary decimal text in twips.
    SetWindowPos(main, nullptr, 120, 90, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    PostMessageW(main, WM_CLOSE, 0, 0);
    ASSERT_EQ(lumora_.process.ExitCode(), 0u);
    EXPECT_TRUE(ReadOption("TOP").has_value());
    EXPECT_EQ(ReadOption("LEFT"), std::to_string(120 * 1440 / 96));
    // All of it is the user's own: nothing machine-wide, nothing in the Windows directory.
    EXPECT_FALSE(ReadOption("TOP", RegistryRoot::LocalMachine));
    wchar_t windows[MAX_PATH];
    GetWindowsDirectoryW(windows, MAX_PATH);
    EXPECT_FALSE(fs::exists(fs::path(windows) / L"tavrinplay.ini"));
    EXPECT_TRUE(fs::exists(DefaultListPath().parent_path() / L"tavrinplay.ini"));

    // "L15" says whether the default list plays at start or waits; a damaged one is reported and
    // deleted.
    fs::create_directories(DefaultListPath().parent_path());
    WriteBytes(DefaultListPath(), ListBytes("这是ZEV-Lumora-正式版-的默认列表文件请不要修改以下参数，以免造成错误。",
                                            "2*1", media_.Text() + "*two.MP3*一 Song.mp3"));
    const std::vector<std::string> listed{"001-(two.MP3)", "002-(一 Song.mp3)"};
    for (const auto& [option, playCaption] : {std::pair{"1", "暂停"}, {"0", "播放"}}) {
        StoreOption("L15", option);
        ASSERT_TRUE(lumora_.Start(""));
        EXPECT_TRUE(WaitFor([&] { return lumora_.Lines() == listed; }));
        Sleep(500);  // a list that waits must still be waiting a moment later
        EXPECT_TRUE(Shows(lumora_.main, IDC_MAIN_PLAY, playCaption)) << option;
    }
    WriteBytes(DefaultListPath(), "\x01\x02 not a list");
    ASSERT_TRUE(lumora_.Start(""));
    EXPECT_EQ(CloseBox("默认列表文件错误")
                  .rfind("默认列表文件已损坏或默认列表文件里的媒体文件不存在。单击“确定”删除默认列表文件。", 0),
              0u);
    EXPECT_TRUE(WaitFor([] { return !fs::exists(DefaultListPath()); }));
}

// Twenty files selected in Explorer and opened: twenty starts at once, each with one file, given in no
// particular order. One window takes them all as one queue, in name order, and plays the first.
// The "倒制" button and the time label's mode are kept the moment they change (the process is then killed,
// not closed), and the next start shows them; "ListWindowPlace" 2 docks the list under the main window.
TEST_F(LumoraE2E, ButtonsKeepTheirOptionsAtOnceAndTheListDocksBelow) {
    StoreOption("ListWindowPlace", "2");
    ASSERT_TRUE(lumora_.Start(""));
    Click(lumora_.main, IDC_MAIN_DECODER_WORKAROUND);
    Click(lumora_.main, IDC_MAIN_TIME_MODE);
    EXPECT_TRUE(WaitFor([] { return ReadOption("L55") == "1" && ReadOption("L58") == "1"; }));
    RECT m, l;
    EXPECT_TRUE(GetWindowRect(lumora_.main, &m) && GetWindowRect(lumora_.list, &l) && l.top == m.bottom &&
                l.left == m.left);
    lumora_.process.Kill();
    ASSERT_TRUE(lumora_.Start(""));
    EXPECT_TRUE(Shows(lumora_.main, IDC_MAIN_TIME_MODE, "←"));
}

TEST_F(LumoraE2E, TwentyStartsTogetherFillOneQueueInNameOrder) {
    const std::string mp3 = test::MpegFrames(400);
    std::vector<std::string> names, lines;
    for (int i = 1; i <= 20; ++i) {
        names.push_back("歌 " + std::to_string(i) + ".mp3");
        WriteBytes(media_ / Widen(names.back()), mp3);
        lines.push_back((i < 10 ? "00" : "0") + std::to_string(i) + "-(" + names.back() + ")");
    }
    std::vector<LumoraProcess> starts(names.size());
    for (size_t i = 0; i < names.size(); ++i)
        starts[(i * 7) % names.size()].Start(LumoraExe(),
                                             Quoted(PathText(media_ / Widen(names[(i * 7) % names.size()]))));
    ASSERT_TRUE(WaitFor([&] { return (lumora_.list = FindWindowOf(0, kPlaylistClass)) != nullptr; }));
    lumora_.main = FindWindowOf(0, kMainClass);
    EXPECT_TRUE(WaitFor([&] { return lumora_.Lines() == lines; })) << testing::PrintToString(lumora_.Lines());
    EXPECT_TRUE(lumora_.WaitForTitle(names.front()));
    size_t ended = 0;
    for (const auto& start : starts) ended += start.ExitCode(0).has_value();
    EXPECT_EQ(ended, names.size() - 1);
    EXPECT_EQ(AllWindows(kMainClass).size(), 1u);
}

// A save is written beside the old list and put in its place only when whole: killed while it
// filters a long queue, Lumora leaves the old list as it was and no half file anywhere.
TEST_F(LumoraE2E, SaveKilledHalfWayLeavesTheOldListWhole) {
    const fs::path many = media_ / L"many";
    fs::create_directories(many);
    const std::string mp3 = test::MpegFrames(40);
    for (int i = 0; i < 999; ++i) WriteBytes(many / (std::to_wstring(1000 + i) + L".mp3"), mp3);
    const fs::path list = media_ / L"旧列表.qlb";
    const std::string old = ListBytes(kHeader, "2*1", media_.Text() + "*一.mp3*two.mp3");
    WriteBytes(list, old);
    ASSERT_TRUE(lumora_.Start(Quoted(PathText(many))));
    ASSERT_TRUE(WaitFor([&] { return lumora_.Lines().size() == 999; }));
    HWND dialog = SaveListAs(list);
    ASSERT_NE(dialog, nullptr);
    // Saving over a list asks first (the system's own question, owned by the dialog); yes goes on.
    ASSERT_TRUE(WaitFor([&] {
        for (HWND w : AllWindows(L"#32770")) {
            if (GetWindow(w, GW_OWNER) == dialog) Click(w, IDYES);
        }
        return FindWindowOf(lumora_.process.Id(), kProgressClass) != nullptr;
    })) << "no progress window";
    lumora_.process.Kill();
    EXPECT_EQ(ReadBytes(list), old);
    for (const auto& entry : fs::directory_iterator(media_.Path())) {
        EXPECT_EQ(entry.path().wstring().find(L"lumora-tmp"), std::wstring::npos) << PathText(entry.path());
    }
}

// The installer's round trip (tests/installer/) points LUMORA_EXE at the installed program: started
// from its own folder it shows its windows, and a close ends it cleanly.
// A portable copy, as unpacked from its zip onto a USB stick: its options, default list and balloon-tip
// component come from its own folder, and neither the registry nor the user's profile gains anything.
TEST_F(LumoraE2E, APortableCopyKeepsEverythingInItsOwnFolder) {
    const TempFolder stick(L"Lumora 便携");
    const fs::path exe = stick / L"Lumora.exe";
    fs::copy_file(LumoraExe(), exe);
    fs::copy_file(fs::path(LumoraExe()).parent_path() / L"tooltip.dll", stick / L"tooltip.dll");
    WriteBytes(stick / L"Lumora.portable", "");
    // The copy's own option: save the queue as the default list at close ("L56" is "1").
    fs::create_directories(stick / L"Data");
    WriteBytes(stick / L"Data" / L"registry.txt",
               "[HKEY_CURRENT_USER\\SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup]\r\nL56=b:31\r\n");
    const std::string clsid = "CLSID\\{F2E3C6F5-2F8F-41F9-BDA5-8E19A020CA7E}";
    for (const auto root : {RegistryRoot::ClassesRoot, RegistryRoot::CurrentUser}) {
        WinRegistry().DeleteKey(root, root == RegistryRoot::CurrentUser ? "Software\\Classes\\" + clsid : clsid);
    }
    const fs::path appData = Widen(Env(L"APPDATA")) + L"\\Lumora";
    fs::remove_all(appData);
    for (const wchar_t* name : {L"歌 1.mp3", L"歌 2.mp3"}) WriteBytes(media_ / name, test::MpegFrames(400));

    ASSERT_TRUE(lumora_.Start(Quoted(media_.Text()), exe.wstring()));
    ASSERT_TRUE(WaitFor([&] { return lumora_.Lines().size() == 2; }));
    EXPECT_TRUE(WaitFor([&] {
        for (HWND w : AllWindows(L"tooltips_class32")) {
            if (GetWindow(w, GW_OWNER) == lumora_.main) return true;
        }
        return false;
    })) << "no balloon tips without a registered component";
    PostMessageW(lumora_.main, WM_CLOSE, 0, 0);
    ASSERT_EQ(lumora_.process.ExitCode(), 0u);
    const std::string options = ReadBytes(stick / L"Data" / L"registry.txt");
    EXPECT_NE(options.find("TavrinPlayer\\setup]"), std::string::npos) << options;
    EXPECT_EQ(options.find("CLSID"), std::string::npos) << options;
    EXPECT_TRUE(fs::exists(stick / L"Data" / L"zvp3mr.qlb"));
    EXPECT_FALSE(fs::exists(appData));
    EXPECT_FALSE(ReadOption("TOP"));
    RegistryValue value;
    EXPECT_NE(WinRegistry().Read(RegistryRoot::ClassesRoot, clsid + "\\InprocServer32", "", value), 0);

    // The next start, wherever the stick is, plays the list it left.
    ASSERT_TRUE(lumora_.Start("", exe.wstring()));
    EXPECT_TRUE(WaitFor([&] { return lumora_.Lines().size() == 2; }));
    lumora_.process.Kill();
}

}  // namespace
}  // namespace lumora::e2e
