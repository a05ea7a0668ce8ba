#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "mediainfo/InfoBlock.h"
#include "mediainfo/LrcReader.h"
#include "mediainfo/LyricsDisplay.h"
#include "mediainfo/LyricsLook.h"
#include "mediainfo/LyricsLookup.h"
#include "mediainfo/LyricsTiming.h"
#include "ports/TextCodec.h"
#include "settings/RegistryWrapper.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

const std::string kMedia = "D:\\音乐\\歌.mp3";
const std::string kIni = test::FakeFileSystem().userDataFolder + "\\zvplaygc.ini";

using test::Gbk;
using Lines = std::vector<std::string>;

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
    fs.files["D:\\音乐\\歌.qgc"] = Gbk("[媒体歌词]\r\n行数=2\r\n歌词1=[00:01]qgc\r\n歌词2=\r\n");
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
    Lines shown;
};

TEST_F(LyricsLookupTest, DisplayShowsOnlyChangesAtThePlayedTimeMovedByTheOffset) {
    RecordingLyricsView view;
    SettingsStore settings;
    LyricsDisplay display(fs, view, settings);
    fs.files["D:\\音乐\\歌.lrc"] = "[00:00]\n[00:10]一\n[00:20]二三四";
    EXPECT_TRUE(display.Load(kMedia));
    for (long long at : {5000, 6000, 12000, -1}) display.Tick(at);
    EXPECT_EQ(view.shown, (Lines{"|", "|一", "一|二三四"}));
    display.SetLineByteLimit(4);
    display.Tick(25000);
    EXPECT_EQ(view.shown.back(), "二三\r\n四|二三\r\n四");
    fs.files.erase("D:\\音乐\\歌.lrc");
    EXPECT_FALSE(display.Load(kMedia));
    display.Tick(30000);
    EXPECT_EQ(view.shown.back(), "|");

    // The offset (half seconds, positive earlier) is read at every tick, the timing correction at every load:
    // with it, [00:10] is at 12 s and [01:30] at 108 s.
    fs.files["D:\\音乐\\歌.lrc"] = "[00:00]\n[00:10]一\n[01:30]二";
    const std::tuple<const char*, const char*, long long, const char*> cases[] = {
        {"2", "0", 9000, "一"},   {"1", "0", 9000, ""},    {"-2", "0", 10999, ""},
        {"-2", "0", 11000, "一"}, {"0", "1", 90000, "一"}, {"0", "1", 108000, "二"},
    };
    for (const auto& [offset, correction, at, first] : cases) {
        settings.SetText("L61", offset);
        settings.SetText("LyricsTimingCorrection", correction);
        view.shown.clear();
        display.Load(kMedia);
        display.Tick(at);
        EXPECT_EQ(view.shown.back().substr(0, view.shown.back().find('|')), first)
            << offset << "/" << correction << "/" << at;
    }
}

TEST(LyricsLook, SavedValuesLoadBackBadOnesKeepTheDefaultsAndThePictureChooserStoresTheChoice) {
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
    // "选择图片...": a cancelled chooser changes nothing; the chosen picture is kept and shown.
    LyricsLook look;
    EXPECT_FALSE(ChooseLyricsPicture(prompts, look));
    EXPECT_EQ(std::tuple(look.usePicture, look.picturePath), std::tuple(false, std::string()));
    prompts.openAnswer = "D:\\图片\\背景.jpg";
    EXPECT_TRUE(ChooseLyricsPicture(prompts, look));
    EXPECT_EQ(std::tuple(look.usePicture, look.picturePath), std::tuple(true, std::string("D:\\图片\\背景.jpg")));
}

// Stamps round halves to even; a second bracket group makes a line all text. Shown: the line reached and the
// next, equal stamps together in list order, unstamped lines never. A forward shift moves every stamp of a line;
// the editor's case pins the shift back, the clamp at zero and the refusals.
TEST(LyricsTiming, StampsTheLinesShownTheShiftAndTheWrap) {
    const std::pair<std::string_view, std::optional<long long>> cases[] = {
        {"01:02.5", 62},   {"01:03.5", 64},       {"00:02.51", 3},        {"00:02.500000000000000001", 3},
        {"1:2", 62},       {"00:10.", 10},        {"0.5:00", 30},         {"000000000007:05", 425},
        {"99999:99", 6000039}, {"ab:cd", std::nullopt}, {"00:10:20", std::nullopt}, {"-1:00", std::nullopt},
        {"00:", std::nullopt}, {"00:1.2.3", std::nullopt}, {"1234567890:00", std::nullopt},  // over nine digits
    };
    for (const auto& [stamp, seconds] : cases) EXPECT_EQ(StampSeconds(stamp), seconds) << stamp;
    EXPECT_EQ(SplitStampedLine("[00:20]text").seconds, 20);
    EXPECT_EQ(SplitStampedLine("[00:10]a [b]").text, "[00:10]a [b]");
    for (const char* line : {"[00:10]a [b]", " [00:01]x", "[00:01", "[ti:歌名]"}) {
        EXPECT_EQ(SplitStampedLine(line).seconds, std::nullopt) << line;
    }
    const TimedLyrics lyrics = BuildTimedLyrics("[00:00]title\r\n[00:20]one\r\n[00:10]ten\r\n[ab:cd]bad\r\n[00:20]two\r\n[00:30]end");
    const std::pair<long long, DisplayLines> shown[] = {
        {0, {"", "one\r\ntwo"}},  // entry 0 is only the fallback value: no line from 1 on has it
        {12, {"ten", "one\r\ntwo"}}, {20, {"one\r\ntwo", "end"}}, {29, {"one\r\ntwo", "end"}}, {40, {"end", "end"}},
    };
    for (const auto& [p, lines] : shown) EXPECT_EQ(ChooseDisplayLines(lyrics, p), lines) << p;
    EXPECT_FALSE(ChooseDisplayLines(TimedLyrics{}, 5) || ChooseDisplayLines(lyrics, -1));
    const std::pair<std::string_view, std::string_view> shifts[] = {
        {"[副歌]\r\n\r\n[00:10.5]x", "[00:00][副歌]\r\n\r\n[00:15]x"},  // empty lines stay; halves to even
        {"[00:10][01:10]chorus\r\n", "[00:15][01:15]chorus\r\n"},
        {"[99:59]end", "[100:04]end"},
    };
    for (const auto& [text, shifted] : shifts) EXPECT_EQ(ShiftTimeTrack(text, 5), shifted) << text;
    // Shown lines wrap at the byte limit, never splitting a character.
    const std::tuple<std::string_view, int, std::string_view> wraps[] = {
        {"ab一cd", 3, "ab\r\n一c\r\nd"},
        {"一二", 1, "一\r\n二"},                            // wider than the limit: alone on its line
        {"hello big world", 10, "hello big\r\nworld"},      // at the blank between words
        {"go on and on", 5, "go on\r\nand\r\non"},          // a blank right at the limit is the break
        {"abcdefghijkl mn", 5, "abcde\r\nfghij\r\nkl mn"},  // no blank within the limit: inside the word
        {"我爱 你们大家", 6, "我爱\r\n你们大\r\n家"},
    };
    for (const auto& [text, limit, wrapped] : wraps) EXPECT_EQ(WrapToLineBytes(text, limit), wrapped) << text;
    EXPECT_EQ(LineByteLimitLabel(20), "当前设置每行：20 个字节(一个汉字占两个字节)");
    const std::pair<std::string_view, int> stored[] = {{"20", 20}, {"21", 0}, {"-2", 0}, {"2 ", 0}, {"9998", 9998}, {"10000", 0}};
    for (const auto& [text, limit] : stored) EXPECT_EQ(ParseLineByteLimit(text), limit) << text;
}

Lines Times(const LyricLists& lists) { return lists.times.empty() ? Lines{} : SplitLyricsList(lists.times); }

// Stamps expand, fractions drop, times sort; the first offset tag anywhere shifts every stamp, negative
// stamps read as 0 and "correct" stretches.
TEST(LrcReader, ExpandsStampsAndAppliesOffsetsCorrectionAndLimits) {
    const std::string lrc =
        "[ti:歌名]\r\n[00:10.99][01:10]副歌\r\n  [00:20.5]verse\r\nno stamp\r\n[00:30:50]<00:30.00>word <00:31.00>two";
    EXPECT_EQ(LyricListsToText(ParseLrc(Utf8ToCp936(lrc).value(), false)),
              "[00:10]副歌\r\n[00:20]verse\r\n[00:30]word two\r\n[01:10]副歌");
    std::string many = "[00:01]";
    for (int i = 0; i < 1000; ++i) many += "[99999:99]";
    const struct {
        std::string lrc;
        bool correct;
        Lines times;
    } cases[] = {
        {"[offset:500]\n[00:10.2]a\n[00:00.3]b", false, {"00:00", "00:09"}},
        {"[00:10]a\n[offset:-1500]", false, {"00:11"}},
        {"[offset:+2000]\n[offset:0]\n[00:10]a", false, {"00:08"}},
        {"[01:40]a", true, {"02:01"}},  // 100 s -> 122 - 1
        {"[999999999999:00]a\n[00:1e5]b", false, {}},
    };
    for (const auto& c : cases) EXPECT_EQ(Times(ParseLrc(c.lrc, c.correct)), c.times) << c.lrc.substr(0, 40);
    const Lines bounded = Times(ParseLrc(many + std::string(1000, 'x'), false));
    EXPECT_EQ(bounded.size(), kMaxStampsPerLine);
    EXPECT_EQ(bounded.back(), "100000:39");  // 99 seconds carry into the minutes
}

}  // namespace
}  // namespace lumora
