// Media information and lyrics in the real Lumora under Wine: lyrics found and shown in time, the
// information editor's save, export and import.
#include <commctrl.h>
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdint>
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

constexpr wchar_t kDisplayClass[] = L"LumoraAudioDisplay";

std::string Padded(const std::string& bytes, size_t size) {
    std::string out = bytes;
    out.resize(size, '\0');
    return out;
}

// Audio followed by an information block as Lumora writes it: "LYRICS", the lyrics field, the tag.
std::string WithBlock(const std::string& audio, const std::string& lyricsUtf8, const std::string& titleUtf8) {
    const std::string lyrics = Cp936(lyricsUtf8);
    char size[6];
    std::snprintf(size, sizeof size, "%05zu", lyrics.size());
    return audio + "LYRICS" + "BEGININD0000211LYR" + size + lyrics + Padded("TAG" + Cp936(titleUtf8), 30) +
           std::string(3, '\0') + Padded("", 30) + Padded("", 30) + Padded("", 30) + std::string(5, '\0');
}

class LyricsE2E : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_FALSE(LumoraExe().empty()) << "LUMORA_EXE is not set";
        ForgetSettings();
        StoreOption("L25", "0");  // our own player: it reads the file and lets go of it
    }
    void TearDown() override { lumora_.process.Kill(); }

    void Start(const fs::path& file) {
        ASSERT_TRUE(lumora_.Start(Quoted(PathText(file))));
        main_ = lumora_.main;
        display_ = WaitForWindow(lumora_.process.Id(), kDisplayClass);
        ASSERT_NE(display_, nullptr);
        ASSERT_TRUE(lumora_.Playing());
    }
    std::string Next() { return ControlText(display_, IDC_LYRICS_NEXT); }
    // Waits for the line reached, then reads the next one shown with it.
    void ExpectLines(const std::string& current, const std::string& next) {
        EXPECT_EQ(WaitForControlText(display_, IDC_LYRICS_CURRENT, current), current);
        EXPECT_EQ(Next(), next);
    }

    TempFolder media_{L"Lumora 歌词 E2E"};
    Session lumora_;
    HWND main_ = nullptr;
    HWND display_ = nullptr;
};

TEST_F(LyricsE2E, EmbeddedLyricsWinOverTheLrcBesideAndFollowThePlayingTime) {
    const fs::path song = media_ / L"歌.mp3";
    WriteBytes(song,
               WithBlock(test::MpegFrames(1150),
                         "[00:00]第一句\r\n[00:02]第二句\r\n[00:04]第三句\r\n[00:06]第四句\r\n[00:40]尾声", "歌"));
    WriteBytes(media_ / L"歌.lrc", Cp936("[00:00]旁边的歌词\r\n[00:03]不该出现\r\n"));
    Start(song);
    // The tag behind the lyrics block is read for the main window's tag line.
    const std::string tagLine = "  标题：歌  歌手：无  专集：无  年代：无  其他：无";
    EXPECT_EQ(WaitForControlText(main_, IDC_MAIN_TAG_LINE, tagLine), tagLine);
    // Each moment is read as a pair: the line reached and the next one, shown together.
    ExpectLines("第二句", "第三句");
    ExpectLines("第三句", "第四句");
    ExpectLines("第四句", "尾声");
}

// "Gc1Long" wraps a long line at its byte limit (a Chinese character counts two), and "L48" opens
// the lyrics window by itself for a file with lyrics, whatever the decoder.
TEST_F(LyricsE2E, LongLinesWrapAtTheByteLimitAndTheWindowOpensForLyrics) {
    StoreOption("Gc1Long", "8");
    StoreOption("L48", "1");
    StoreOption("L25", "1");
    const fs::path song = media_ / L"长句.wav";
    WriteBytes(song, WithBlock(SilentWave(30),
                               "[00:00]长句\r\n[00:01]第一句很长的歌词\r\n[00:02]一二三四五六七八九十一二三四五六七八九十"
                               "一二三四五六七八九十一二三四五六七八九十\r\n[00:30]下一句",
                               "长句"));
    Start(song);
    ExpectLines("第一句很\r\n长的歌词", "一二三四\r\n五六七八\r\n九十一二\r\n三四五六\r\n七八九十\r\n"
                                          "一二三四\r\n五六七八\r\n九十一二\r\n三四五六\r\n七八九十");
    EXPECT_TRUE(WaitFor([&] { return IsWindowVisible(display_) != FALSE; }));
    // Ten wrapped lines: the window grows so that the last of them is not cut at its bottom.
    RECT client, line;
    GetClientRect(display_, &client);
    GetWindowRect(GetDlgItem(display_, IDC_LYRICS_NEXT), &line);
    MapWindowPoints(nullptr, display_, reinterpret_cast<POINT*>(&line), 2);
    EXPECT_LE(line.bottom, client.bottom);
    EXPECT_GT(line.bottom - line.top, 0);
}

// The settings dialog shows the limit's label and a preview that follows the slider at once, and
// keeps the limit as "Gc1Long" in decimal text.
TEST_F(LyricsE2E, LineLimitSettingShowsItsLabelAndPreviewAndIsKept) {
    const fs::path song = media_ / L"设置.mp3";
    WriteBytes(song, test::MpegFrames(1150));
    Start(song);
    PostMessageW(main_, WM_COMMAND, IDM_LYRICS_SETTINGS, 0);
    HWND dialog = WaitForBox(kLyricsSettingsTitle);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(WaitForControlText(dialog, IDC_LYRICS_SET_LABEL, "当前设置：不进行调整"), "当前设置：不进行调整");
    HWND slider = GetDlgItem(dialog, IDC_LYRICS_SET_LIMIT);
    SendMessageW(slider, TBM_SETPOS, TRUE, 5);  // five pairs: ten bytes
    SendMessageW(dialog, WM_HSCROLL, MAKEWPARAM(TB_THUMBPOSITION, 5), reinterpret_cast<LPARAM>(slider));
    EXPECT_EQ(ControlText(dialog, IDC_LYRICS_SET_LABEL), "当前设置每行：10 个字节(一个汉字占两个字节)");
    EXPECT_EQ(ControlText(dialog, IDC_LYRICS_SET_PREVIEW).rfind("这是浏览文\r\n本，显示用\r\n", 0), 0u)
        << ControlText(dialog, IDC_LYRICS_SET_PREVIEW);
    PostMessageW(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    EXPECT_TRUE(WaitFor([] { return ReadOption("Gc1Long").value_or(RegistryValue{}).data == "10"; }));
}

// Saved items are in the file's tail, the audio untouched, and the editor shows them when it opens again.
TEST_F(LyricsE2E, SavedInformationIsThereWhenTheEditorOpensAgain) {
    const fs::path song = media_ / L"编辑.mp3";
    const std::string audio = test::MpegFrames(1150);
    WriteBytes(song, audio);
    Start(song);
    const std::pair<int, std::string> items[] = {
        {IDC_INFO_TITLE, "新的标题"}, {IDC_INFO_ARTIST, "歌手甲"}, {IDC_INFO_YEAR, "2005"},
        {IDC_INFO_LYRICS, "[00:01]一\r\n[00:02]二"}};  // the lyrics box is filled last
    const auto openEditor = [&] {
        PostMessageW(main_, WM_COMMAND, IDM_MEDIA_INFO, 0);
        return WaitForBox(kInfoEditorTitle);
    };
    HWND editor = openEditor();
    ASSERT_NE(editor, nullptr);
    for (const auto& [id, text] : items) {
        SendMessageW(GetDlgItem(editor, id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Widen(text).c_str()));
    }
    Click(editor, IDC_INFO_SAVE);
    HWND done = WaitForBox("完毕");
    ASSERT_NE(done, nullptr);
    EXPECT_EQ(BoxText(done), "恭喜！媒体信息保存完毕！");
    AnswerBox(done, IDOK);
    Click(editor, IDCANCEL);
    ASSERT_TRUE(WaitFor([&] { return !IsWindow(editor); }));
    const std::string bytes = ReadBytes(song);
    EXPECT_EQ(bytes.substr(0, audio.size()), audio);
    EXPECT_EQ(bytes.substr(bytes.size() - 128, 3), "TAG");

    editor = openEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(WaitForControlText(editor, IDC_INFO_LYRICS, items[3].second), items[3].second);
    for (const auto& [id, text] : items) EXPECT_EQ(ControlText(editor, id), text);
    Click(editor, IDCANCEL);
}

}  // namespace
}  // namespace lumora::e2e
