// The transport, the information editor and the lyrics as a user works them in the real Lumora under
// Wine. Silent files through the system's devices ("L25" 1): nothing here needs the sound sink.
#include <commctrl.h>

#include <cstdio>

#include "e2e/Driver.h"
#include "support/MpegFrames.h"

namespace lumora::e2e {
namespace {

using namespace ids;
namespace fs = std::filesystem;

// A bitmap of one red pixel: file header, info header (1 x 1, 24 bits), one padded row.
const std::string kBitmap(
    "BM\x3A\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x01\0\0\0\x01\0\0\0\x01\0\x18\0"
    "\0\0\0\0\x04\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\xFF\0",
    58);

// Audio followed by an information block as Lumora writes it: "LYRICS", the lyrics field, the tag
// (the title, the other fields empty).
std::string WithBlock(const std::string& audio, const std::string& lyricsUtf8, const std::string& titleUtf8) {
    const std::string lyrics = Cp936(lyricsUtf8);
    char size[6];
    std::snprintf(size, sizeof size, "%05zu", lyrics.size());
    std::string tag = "TAG" + Cp936(titleUtf8);
    tag.resize(128, '\0');
    return audio + "LYRICS" + "BEGININD0000211LYR" + size + lyrics + tag;
}

using PlaybackE2E = SessionTest;

// A queue of a picture and a short wave, then files from the open dialog.
TEST_F(PlaybackE2E, PictureListEndOpenDialogAndThumb) {
    StoreOption("L25", "1");
    WriteBytes(media_ / L"a.bmp", kBitmap);
    WriteBytes(media_ / L"b.wav", SilentWave(2));
    TempFolder other(L"Lumora 另一个文件夹");
    for (const wchar_t* name : {L"one.wav", L"two.wav"}) WriteBytes(other / name, SilentWave(40));
    ASSERT_TRUE(lumora_.Open(media_.Text()));
    HWND main = lumora_.main;

    // A still picture is shown for its time and gives way to the next entry.
    ASSERT_TRUE(WaitFor([&] { return lumora_.Lines().size() == 2; }));
    ASSERT_TRUE(lumora_.WaitForTitle("a.bmp"));
    EXPECT_TRUE(lumora_.WaitForTitle("b.wav", 12000));

    // After the list has ended, play plays again and the caption and time follow.
    ASSERT_TRUE(lumora_.Stopped());
    Click(main, IDC_MAIN_PLAY);
    ASSERT_TRUE(lumora_.Playing());
    EXPECT_TRUE(WaitFor([&] { return lumora_.Time() >= 1; }, 5000)) << ControlText(main, IDC_MAIN_TIME);

    // The second open dialog starts in the folder the first ended in.
    for (const std::string& typed : {PathText(other / L"one.wav"), std::string("two.wav")}) {
        ASSERT_NE(AnswerFileDialog(main, IDM_OPEN_FILES, "打开文件对话框，本播放器支持近50种文件类型", typed), nullptr);
        EXPECT_TRUE(lumora_.WaitForTitle(typed.substr(typed.find_last_of('\\') + 1), 5000)) << typed;
    }

    // The progress thumb, held at three quarters while the timer runs on, seeks where let go.
    ASSERT_TRUE(lumora_.Playing());
    HWND slider = GetDlgItem(main, IDC_MAIN_PROGRESS);
    const RECT thumb = AskRect(slider, TBM_GETTHUMBRECT), channel = AskRect(slider, TBM_GETCHANNELRECT);
    const int y = (thumb.top + thumb.bottom) / 2;
    const int to = channel.left + (channel.right - channel.left) * 3 / 4;
    PostMessageW(slider, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM((thumb.left + thumb.right) / 2, y));
    PostMessageW(slider, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(to, y));
    Sleep(1500);  // held still: several progress ticks pass
    PostMessageW(slider, WM_LBUTTONUP, 0, MAKELPARAM(to, y));
    EXPECT_TRUE(WaitFor([&] { return lumora_.Time() >= 28; }, 5000)) << lumora_.Time();
}

// A file with lyrics inside and an LRC beside, played through the MPEG device (which holds it open):
// the lyrics in time, their settings, and the information editor saving into it while it plays.
TEST_F(PlaybackE2E, LyricsTheirSettingsAndTheEditorOnTheFileThatPlays) {
    StoreOption("L25", "1");
    StoreOption("Gc1Long", "8");
    StoreOption("L48", "1");
    const std::string longLine = "一二三四五六七八九十一二三四五六七八九十一二三四五六七八九十一二三四五六七八九十";
    const std::string longWrapped =
        "一二三四\r\n五六七八\r\n九十一二\r\n三四五六\r\n七八九十\r\n"
        "一二三四\r\n五六七八\r\n九十一二\r\n三四五六\r\n七八九十";
    const fs::path song = media_ / L"歌.mp3";
    const std::string audio = test::MpegFrames(1150);
    WriteBytes(
        song,
        WithBlock(audio, "[00:00]第一句\r\n[00:02]第二句很长的歌词\r\n[00:04]" + longLine + "\r\n[00:40]尾声", "歌"));
    WriteBytes(media_ / L"歌.lrc", Cp936("[00:00]旁边的歌词\r\n[00:03]不该出现\r\n"));
    ASSERT_TRUE(lumora_.Open(PathText(song)));
    HWND main = lumora_.main, display = WaitForWindow(lumora_.process.Id(), L"LumoraAudioDisplay");
    ASSERT_NE(display, nullptr);
    ASSERT_TRUE(lumora_.Playing());

    // The lyrics inside win over the LRC and follow the time, wrapped at Gc1Long's bytes.
    // The tag behind the lyrics block is read for the main window's tag line.
    EXPECT_TRUE(Shows(main, IDC_MAIN_TAG_LINE, "  标题：歌  歌手：无  专集：无  年代：无  其他：无"));
    // Each moment is read as a pair: the line reached and the next one, shown together.
    EXPECT_TRUE(Shows(display, IDC_LYRICS_CURRENT, "第二句很\r\n长的歌词"));
    EXPECT_EQ(ControlText(display, IDC_LYRICS_NEXT), longWrapped);
    // "L48" opened the window by itself, grown so that the last wrapped line is not cut.
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(display) != FALSE; }));
    RECT client, line;
    GetClientRect(display, &client);
    GetWindowRect(GetDlgItem(display, IDC_LYRICS_NEXT), &line);
    MapWindowPoints(nullptr, display, reinterpret_cast<POINT*>(&line), 2);
    EXPECT_LE(line.bottom, client.bottom);
    EXPECT_GT(line.bottom - line.top, 0);
    EXPECT_TRUE(Shows(display, IDC_LYRICS_CURRENT, longWrapped));
    EXPECT_EQ(ControlText(display, IDC_LYRICS_NEXT), "尾声");

    // The line limit's label and preview follow the slider; the limit is kept as Gc1Long.
    HWND dialog = OpenBox(main, IDM_LYRICS_SETTINGS, kLyricsSettingsTitle);
    ASSERT_NE(dialog, nullptr);
    HWND slider = GetDlgItem(dialog, IDC_LYRICS_SET_LIMIT);
    // Five pairs: ten bytes.
    for (const auto& [pos, label] :
         {std::pair{0, "当前设置：不进行调整"}, {5, "当前设置每行：10 个字节(一个汉字占两个字节)"}}) {
        SendMessageW(slider, TBM_SETPOS, TRUE, pos);
        SendMessageW(dialog, WM_HSCROLL, MAKEWPARAM(TB_THUMBPOSITION, pos), reinterpret_cast<LPARAM>(slider));
        EXPECT_EQ(ControlText(dialog, IDC_LYRICS_SET_LABEL), label);
    }
    EXPECT_EQ(ControlText(dialog, IDC_LYRICS_SET_PREVIEW).rfind("这是浏览文\r\n本，显示用\r\n", 0), 0u)
        << ControlText(dialog, IDC_LYRICS_SET_PREVIEW);
    Click(dialog, IDOK);
    EXPECT_TRUE(WaitFor([] { return ReadOption("Gc1Long") == "10"; }));
    const std::pair<int, std::string> items[] = {
        {IDC_INFO_TITLE, "新的标题"},
        {IDC_INFO_ARTIST, "歌手甲"},
        {IDC_INFO_YEAR, "2005"},
        {IDC_INFO_LYRICS, "[00:01]一\r\n[00:02]二"}};  // the lyrics box is filled last

    // The editor saves into the tail of the playing file, which plays on from where it was.
    HWND editor = OpenBox(main, IDM_MEDIA_INFO, kInfoEditorTitle);
    ASSERT_NE(editor, nullptr);
    for (const auto& [id, text] : items) SetControlText(editor, id, text);
    const int before = lumora_.Time();
    Click(editor, IDC_INFO_SAVE);
    EXPECT_EQ(CloseBox("完毕"), "恭喜！媒体信息保存完毕！");
    Click(editor, IDCANCEL);
    ASSERT_TRUE(WaitFor([&] { return !IsWindow(editor); }));
    const std::string bytes = ReadBytes(song);
    EXPECT_EQ(bytes.substr(0, audio.size()), audio);
    // A shorter block than the old one is written where that began, zeros behind it.
    EXPECT_NE(bytes.find("TAG" + Cp936("新的标题"), audio.size()), std::string::npos);
    EXPECT_TRUE(lumora_.Playing());
    const int after = lumora_.Time();
    EXPECT_GE(after, before);
    EXPECT_TRUE(WaitFor([&] { return lumora_.Time() > after; }, 5000));

    // Opened again, the editor shows what was saved.
    editor = OpenBox(main, IDM_MEDIA_INFO, kInfoEditorTitle);
    ASSERT_NE(editor, nullptr);
    EXPECT_TRUE(Shows(editor, IDC_INFO_LYRICS, items[3].second));
    for (const auto& [id, text] : items) EXPECT_EQ(ControlText(editor, id), text);
    Click(editor, IDCANCEL);
}

// Keys typed into the main window and a multimedia keyboard's key run the transport and the list
// window as their buttons do.
TEST_F(PlaybackE2E, KeysAndMediaKeys) {
    StoreOption("L25", "1");
    StoreOption("MediaKeysAlways", "1");
    for (const wchar_t* name : {L"a.wav", L"b.wav"}) WriteBytes(media_ / name, SilentWave(30));
    ASSERT_TRUE(lumora_.Open(media_.Text()));
    HWND main = lumora_.main, list = lumora_.list;
    ASSERT_TRUE(lumora_.WaitForTitle("a.wav"));
    ASSERT_TRUE(lumora_.Playing());

    for (const bool playing : {false, true}) {
        PostMessageW(main, WM_KEYDOWN, VK_SPACE, 1);
        PostMessageW(main, WM_KEYUP, VK_SPACE, 0xC0000001);
        EXPECT_TRUE(playing ? lumora_.Playing() : lumora_.Stopped());
    }

    // Keys typed as a user types them, to the window that has the focus: the modifiers are the keyboard's
    // state, not the message's.
    const auto type = [](HWND to, std::initializer_list<WORD> keys) {
        SetForegroundWindow(to);
        EXPECT_TRUE(WaitFor([&] { return GetForegroundWindow() == to; }));
        std::vector<INPUT> input;
        for (const DWORD flags : {DWORD{0}, DWORD{KEYEVENTF_KEYUP}}) {
            for (const WORD key : keys) input.push_back(INPUT{INPUT_KEYBOARD, {.ki = {key, 0, flags, 0, 0}}});
        }
        EXPECT_EQ(SendInput(static_cast<UINT>(input.size()), input.data(), sizeof(INPUT)), input.size());
    };
    const bool listShown = IsWindowVisible(list) != FALSE;
    type(main, {VK_CONTROL, 'L'});
    EXPECT_TRUE(WaitFor([&] { return (IsWindowVisible(list) != FALSE) != listShown; }));
    // Tab takes the focus from the window to one of its controls.
    PostMessageW(main, WM_KEYDOWN, VK_TAB, 1);
    GUITHREADINFO gui{};
    gui.cbSize = sizeof gui;
    ASSERT_TRUE(WaitFor([&] {
        return GetGUIThreadInfo(GetWindowThreadProcessId(main, nullptr), &gui) && IsChild(main, gui.hwndFocus);
    }));
    // Space there still pauses, and does not click the focused button too.
    const std::string caption = Text(gui.hwndFocus);
    PostMessageW(gui.hwndFocus, WM_KEYDOWN, VK_SPACE, 1);
    PostMessageW(gui.hwndFocus, WM_KEYUP, VK_SPACE, 0xC0000001);
    EXPECT_TRUE(lumora_.Stopped());

    PostMessageW(main, WM_APPCOMMAND, reinterpret_cast<WPARAM>(main), MAKELPARAM(0, APPCOMMAND_MEDIA_NEXTTRACK));
    EXPECT_TRUE(lumora_.WaitForTitle("b.wav"));
    EXPECT_EQ(Text(gui.hwndFocus), caption);  // the key's release, handled before the media key

    // "MediaKeysAlways": a media key pressed while another program has the focus.
    HWND other =
        CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr);
    type(other, {VK_MEDIA_PREV_TRACK});
    EXPECT_TRUE(lumora_.WaitForTitle("a.wav"));
    DestroyWindow(other);
}

}  // namespace
}  // namespace lumora::e2e
