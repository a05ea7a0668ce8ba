#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "mediainfo/InfoBlock.h"
#include "mediainfo/LyricsDisplay.h"
#include "mediainfo/LyricsLook.h"
#include "mediainfo/LyricsLookup.h"
#include "settings/RegistryWrapper.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

const std::string kMedia = "D:\\音乐\\歌.mp3";
const std::string kIni = "C:\\WINDOWS\\zvplaygc.ini";

using test::Gbk;

std::string Qgc(std::string_view lines) { return Gbk("[媒体歌词]\r\n行数=2\r\n" + std::string(lines)); }

class LyricsLookupTest : public testing::Test {
protected:
    void SetUp() override { fs.files[kMedia] = std::string(1000, 'a'); }
    void Embed(std::string_view lyrics) {
        ASSERT_EQ(WriteInfoBlock(fs, kMedia, {}, BuildLyricsField(lyrics)), InfoWriteResult::Written);
    }

    test::FakeFileSystem fs;
};

TEST_F(LyricsLookupTest, TriesEachSourceInOrder) {
    fs.files["D:\\音乐\\歌.smi"] = "<SYNC Start=3000><P Class=ZHCC>smi";
    EXPECT_EQ(LookupLyrics(fs, kMedia), (FoundLyrics{LyricsOrigin::Beside, "D:\\音乐\\歌.smi", "[00:03]smi"}));
    fs.files["D:\\音乐\\歌.lrc"] = "[00:02]lrc";
    EXPECT_EQ(LookupLyrics(fs, kMedia).text, "[00:02]lrc");
    fs.files["D:\\音乐\\歌.qgc"] = Qgc("歌词1=[00:01]qgc\r\n歌词2=\r\n");
    EXPECT_EQ(LookupLyrics(fs, kMedia), (FoundLyrics{LyricsOrigin::Beside, "D:\\音乐\\歌.qgc", "[00:01]qgc"}));
    ASSERT_EQ(AssignLyricsFile(fs, kMedia, "E:\\gone.qgc"), AssignResult::Assigned);  // gone: falls through
    EXPECT_EQ(LookupLyrics(fs, kMedia).origin, LyricsOrigin::Beside);
    fs.files["E:\\歌词\\assigned.LRC"] = "[00:04]assigned";
    ASSERT_EQ(AssignLyricsFile(fs, kMedia, "E:\\歌词\\assigned.LRC"), AssignResult::Assigned);
    EXPECT_EQ(fs.files[kIni], Gbk("[歌词记录]\r\n歌.mp3=E:\\歌词\\assigned.LRC\r\n"));
    // The record is by file name, as a key an INI file can hold: the same name in another folder finds it too.
    EXPECT_EQ(LyricsRecordKey("D:\\a=b.mp3") + LyricsRecordKey("D:\\[live] a.mp3"), "a＝b.mp3［live] a.mp3");
    fs.files["F:\\歌.mp3"] = "x";
    EXPECT_EQ(LookupLyrics(fs, "F:\\歌.mp3"),
              (FoundLyrics{LyricsOrigin::Assigned, "E:\\歌词\\assigned.LRC", "[00:04]assigned"}));
    Embed("[00:30]b\r\n[00:10][00:20]a\r\n");  // several stamps on a line become one line each
    EXPECT_EQ(LookupLyrics(fs, kMedia),
              (FoundLyrics{LyricsOrigin::Embedded, kMedia, "[00:10]a\r\n[00:20]a\r\n[00:30]b"}));
    fs.unreadable.push_back(kIni);
    EXPECT_EQ(AssignLyricsFile(fs, kMedia, "E:\\x.lrc"), AssignResult::Failed);
}

class RecordingLyricsView : public LyricsView {
public:
    void ShowLyricsLines(std::string_view first, std::string_view second) override {
        shown.push_back(std::string(first) + "|" + std::string(second));
    }
    std::vector<std::string> shown;
};

TEST_F(LyricsLookupTest, DisplayShowsOnlyChanges) {
    RecordingLyricsView view;
    LyricsDisplay display(fs, view);
    fs.files["D:\\音乐\\歌.lrc"] = "[00:00]\n[00:10]一\n[00:20]二三四";
    EXPECT_TRUE(display.Load(kMedia));
    for (long long at : {5, 6, 12, -1}) display.Tick(at);
    EXPECT_EQ(view.shown, (std::vector<std::string>{"|", "|一", "一|二三四"}));
    display.SetLineByteLimit(4);
    display.Tick(25);
    EXPECT_EQ(view.shown.back(), "二三\r\n四|二三\r\n四");
    fs.files.erase("D:\\音乐\\歌.lrc");
    EXPECT_FALSE(display.Load(kMedia));
    display.Tick(30);
    EXPECT_EQ(view.shown.back(), "|");
}

TEST(LyricsLook, SavedValuesLoadBackAndBadOnesKeepTheDefaults) {
    test::FakeRegistry raw;
    test::FakePrompts prompts;
    RegistryWrapper registry(raw, prompts);
    const LyricsDisplaySettings defaults = LoadLyricsDisplaySettings(registry);
    EXPECT_EQ(std::tuple(defaults.lineByteLimit, defaults.look.stretchPicture), std::tuple(0, true));

    const LyricsDisplaySettings s{20, {0, 0x0000FF, 0xFF0000, 6, 72, true, false, "C:\\bg.jpg"}};
    ASSERT_TRUE(SaveLyricsDisplaySettings(registry, s));
    const auto fields = [](const LyricsDisplaySettings& d) {
        const LyricsLook& l = d.look;
        return std::tuple(d.lineByteLimit, l.background, l.current, l.next, l.currentPoints, l.nextPoints, l.usePicture,
                          l.stretchPicture, l.picturePath);
    };
    EXPECT_EQ(fields(LoadLyricsDisplaySettings(registry)), fields(s));
    for (const auto& [name, text] : {std::pair{"F8_BC", "16777216"}, {"F8_1_YY", "-1"}, {"F8_GcLab1", "5"},
                                     {"F8_GcLab2", "73"}, {"F8_2_YY", "abc"}}) {
        registry.WriteValue(kSetupKeyPath, name, text);
    }
    const LyricsLook& d = defaults.look;
    LyricsDisplaySettings kept = s;  // the colours and sizes fall back; the rest stays as saved
    kept.look = {d.background, d.current, d.next, d.currentPoints, d.nextPoints, true, false, "C:\\bg.jpg"};
    EXPECT_EQ(fields(LoadLyricsDisplaySettings(registry)), fields(kept));
    raw.failWith = 5;  // a refused key: the dialog's values are not taken
    EXPECT_FALSE(SaveLyricsDisplaySettings(registry, s));
}

// "选择图片...": the chosen picture is kept and shown; a cancelled chooser changes nothing.
TEST(LyricsLook, ThePictureChooserStoresTheChoice) {
    test::FakePrompts prompts;
    LyricsLook look;
    EXPECT_FALSE(ChooseLyricsPicture(prompts, look));
    EXPECT_EQ(std::tuple(look.usePicture, look.picturePath), std::tuple(false, std::string()));
    prompts.openAnswer = "D:\\图片\\背景.jpg";
    EXPECT_TRUE(ChooseLyricsPicture(prompts, look));
    EXPECT_EQ(std::tuple(look.usePicture, look.picturePath), std::tuple(true, std::string("D:\\图片\\背景.jpg")));
}

}  // namespace
}  // namespace lumora
