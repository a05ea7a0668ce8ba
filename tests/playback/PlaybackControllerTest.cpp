#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>

#include "playback/PlaybackController.h"
#include "playback/TransportTexts.h"
#include "playlist/QueueController.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"
#include "support/NullViews.h"

namespace lumora {
namespace {

using Lines = std::vector<std::string>;

// A decoder tests drive by hand: position and the end of the file are set, never waited for.
class FakeDecoder : public Decoder {
public:
    bool Open(const std::string& path) override {
        opened.push_back(path);
        position = 0;
        finished = paused = false;
        return !unplayable.count(path);
    }
    bool Pause() override { return paused = true; }
    bool Resume() override { return !(paused = false); }
    void Stop() override { finished = true; }
    void Close() override {}
    long long PositionMs() override { return position; }
    long long LengthMs() override { return length; }
    bool Seek(long long ms) override {
        seeks.push_back(position = ms);
        return true;
    }
    bool PlayRange(long long from, long long to) override {
        ranges.emplace_back(position = from, to);
        finished = false;
        return true;
    }
    bool SetSpeed(int percent) override {
        speeds.push_back(percent);
        return speedWorks;
    }
    bool Finished() override { return finished; }

    Lines opened;
    std::set<std::string> unplayable;
    std::vector<long long> seeks;
    std::vector<std::pair<long long, long long>> ranges;
    std::vector<int> speeds;
    long long position = 0;
    long long length = 200000;
    bool finished = false;
    bool paused = false;
    bool speedWorks = true;
};

struct Rig : PlaybackView, VolumeControl {
    void ShowPlayback(const PlaybackTexts& t) override { last = t; }
    void FileOpened(const std::string&) override {}
    void SetLevel(int level) override { levels.push_back(level); }

    test::FakePrompts prompts;
    test::FakeFileSystem fs;
    test::NullQueueView queueView;
    QueueController queue{prompts, fs, queueView, queueView};
    SettingsStore settings;
    FakeDecoder decoder;
    FakeDecoder audio;  // decoder 1
    PlaybackTexts last;
    std::vector<int> levels;
    double draw = 0.0;
    PlaybackController player{{queue, settings, prompts, decoder, &audio, *this, *this, [this] { return draw; }}};

    explicit Rig(int entries, const char* ending = ".wma") {
        std::vector<MediaEntry> list;
        for (int i = 1; i <= entries; ++i) {
            const std::string name = "s" + std::to_string(i) + ending;
            list.push_back({"D:\\m\\" + name, name});
        }
        queue.Queue().Replace("D:\\m", list);
    }
    std::string Current() { return decoder.opened.empty() ? "" : decoder.opened.back(); }
    void EndOfFile() {
        decoder.finished = true;
        player.ProgressTick();
    }
};

std::string Mode(std::string_view suffix) { return std::string(kModePrefix) + std::string(suffix); }

// Each command from a file playing at 50 s of 200 s (or from an empty queue), and the text it leaves.
// Commands by letter: P play/pause, S stop, N next, V previous, L loop, R random, O normal, T time mode,
// G segment, A and B the segment's points, t a progress tick, E the end of the file.
void Press(Rig& r, std::string_view commands) {
    for (const char c : commands) {
        PlaybackController& p = r.player;
        const std::map<char, std::function<void()>> actions = {
            {'P', [&] { p.PlayPause(); }}, {'S', [&] { p.Stop(); }},     {'N', [&] { p.Next(); }},
            {'V', [&] { p.Previous(); }},  {'L', [&] { p.ToggleLoop(); }}, {'R', [&] { p.SetRandom(); }},
            {'O', [&] { p.SetNormal(); }}, {'T', [&] { p.ToggleTimeMode(); }}, {'G', [&] { p.SegmentCommand(); }},
            {'A', [&] { p.SetA(); }},      {'B', [&] { p.SetB(); }},     {'t', [&] { p.ProgressTick(); }},
            {'E', [&] { r.EndOfFile(); }}};
        actions.at(c)();
    }
}

// Each command from a file playing at 50 s of 200 s (or from an empty queue), and the text it leaves.
TEST(PlaybackController, CommandsAndTheTextsTheyShow) {
    using T = PlaybackTexts;
    const struct {
        int entries;
        const char* commands;
        std::string PlaybackTexts::*field;
        std::string shown;
    } cases[] = {
        {0, "P", &T::statusLine, "现在无文件播放"}, {0, "N", &T::statusLine, "现在无文件播放"},
        {0, "V", &T::statusLine, "现在无文件播放"}, {3, "", &T::title, "s1.wma"},
        {3, "", &T::totalTime, "总时：00:03:20"},    {3, "", &T::playCaption, "暂停"},
        {3, "P", &T::playCaption, "播放"},            {3, "PP", &T::playCaption, "暂停"},
        {3, "S", &T::playCaption, "播放"},            {3, "S", &T::time, "-"},
        {3, "SP", &T::playCaption, "暂停"},           {3, "t", &T::percent, "25%"},
        {3, "t", &T::time, "00:00:50"},               {3, "t", &T::statusLine, "播放的进度为：25% 时间为：00:00:50"},
        {3, "Tt", &T::time, "-00:02:30"},             {3, "T", &T::timeMode, "←"},
        {3, "TT", &T::timeMode, "→"},                 {3, "TE", &T::time, "00:00-"},
        {3, "", &T::modeLabel, Mode(kSuffixNormal)},  {3, "L", &T::modeLabel, Mode(kSuffixRepeatOne)},
        {3, "LL", &T::modeLabel, Mode(kSuffixRepeatAll)}, {3, "LLL", &T::modeLabel, Mode(kSuffixRepeatOne)},
        {3, "R", &T::modeLabel, Mode(kSuffixRandom)}, {3, "RO", &T::modeLabel, Mode(kSuffixNormal)},
        {3, "RG", &T::modeLabel, std::string(kSegmentPrefix)}, {3, "G", &T::segmentButton, "取消选段"},
        {3, "RGG", &T::modeLabel, Mode(kSuffixRandom)}, {3, "GA", &T::segmentA, "A=00:00:50"},
        {3, "GA", &T::segmentTip, "当前A点（开始点）为00:00:50\r\n选择文件的一段进行循环播放。选择A点的位置。"},
        {3, "A", &T::segmentA, "A=N/A"},  // not choosing a segment
        {3, "GAB", &T::segmentB, "B=00:00:50"},       {3, "GAN", &T::segmentA, "A=N/A"},
    };
    for (const auto& c : cases) {
        Rig r(c.entries);
        if (c.entries) r.player.PlayEntry(1);
        r.decoder.position = 50000;
        Press(r, c.commands);
        EXPECT_EQ(r.last.*c.field, c.shown) << c.commands;
    }
    Rig r(1);
    r.player.PlayEntry(1);
    for (const auto& [level, status] : {std::pair{17, "当前音量为：85%"}, {-3, "当前音量为：0%"}}) {
        r.player.SetVolume(level);
        EXPECT_EQ(r.last.statusLine, status);
    }
    r.player.SetVolume(25);
    EXPECT_EQ(r.last.volumeTip, "显示播放音量 -- 20  （0为MIN；20为MAX）");
    r.decoder.speedWorks = false;
    r.player.SetSpeed(50);
    EXPECT_EQ(r.last.statusLine, "提示：有些媒体格式不支持此功能。");
    const std::pair<int, int> numbers[] = {{250, 200}, {0, 1}, {150, 150}, {1, 1}};
    for (const auto& [asked, speed] : numbers) {
        r.player.SetSpeed(asked);
        EXPECT_EQ(r.last.speed, speed);
        EXPECT_EQ(r.decoder.speeds.back(), speed);
        r.player.ResetSpeed();
        EXPECT_EQ(r.last.speed, 100);
    }
}

TEST(PlaybackController, ProgressSliderAndStopRestartsFromTheBeginning) {
    Rig r(1);
    r.player.PlayEntry(1);
    r.decoder.position = 50000;
    r.player.ProgressTick();
    EXPECT_EQ(r.last.progress, 250);
    r.decoder.position = 250000;  // a length the decoder underestimated
    r.player.ProgressTick();
    EXPECT_EQ(r.last.progress, 1000);
    r.player.Stop();
    EXPECT_EQ(r.last.progress, 0);
    r.player.PlayPause();
    EXPECT_EQ(r.decoder.ranges.back(), (std::pair<long long, long long>{0, -1}));
    r.player.PlayPause();  // pausing: no new range
    r.player.PlayPause();
    EXPECT_EQ(r.decoder.ranges.size(), 1u);
    EXPECT_FALSE(r.decoder.paused);
}

TEST(PlaybackController, EndOfFileByMode) {
    const struct {
        int entries, start;
        const char* mode;
        double draw;
        std::string next;  // "" = nothing new opened
    } cases[] = {
        {3, 1, "", 0, "s2"},   {3, 3, "", 0, ""},    {3, 2, "L", 0, "s2"},      {3, 3, "LL", 0, "s1"}, {3, 2, "LL", 0, "s3"},
        {1, 1, "LL", 0, "s1"}, {5, 1, "R", 0.99, "s5"}, {5, 3, "R", 0.0, "s1"}, {3, 1, "R", 0.5, "s2"},
        {2, 1, "R", 0.99, ""},  // random needs three entries
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.mode) + " from " + std::to_string(c.start));
        Rig r(c.entries);
        r.draw = c.draw;
        Press(r, c.mode);
        r.player.PlayEntry(c.start);
        const size_t opens = r.decoder.opened.size();
        r.decoder.position = 1000;
        r.EndOfFile();
        ASSERT_EQ(r.decoder.opened.size(), opens + (c.next.empty() ? 0 : 1));
        EXPECT_EQ(r.last.playCaption, c.next.empty() ? "播放" : "暂停");
        if (!c.next.empty()) {
            EXPECT_EQ(r.Current(), "D:\\m\\" + c.next + ".wma");
            EXPECT_EQ(r.decoder.position, 0);
        }
        EXPECT_EQ(r.last.modeLabel, r.player.Texts().modeLabel);
    }
    Rig r(3);
    Press(r, "LL");
    r.player.PlayEntry(3);
    r.EndOfFile();
    EXPECT_EQ(r.last.modeLabel, Mode(kSuffixRepeatAll));  // the mode survives the wrap
    EXPECT_EQ(r.queue.Queue().Current(), 1);
}

TEST(PlaybackController, PreviousNextAndTheEdgesOfTheQueue) {
    Rig r(3);
    r.player.PlayEntry(1);
    r.player.Previous();
    EXPECT_EQ(r.decoder.opened.size(), 1u);
    r.player.Next();
    EXPECT_EQ(r.Current(), "D:\\m\\s2.wma");
    r.player.Previous();
    EXPECT_EQ(r.Current(), "D:\\m\\s1.wma");
    r.player.PlayEntry(3);
    r.player.Next();
    EXPECT_EQ(r.decoder.opened.size(), 4u);
    EXPECT_EQ(r.queue.Queue().Current(), 3);
    for (int index : {0, 4}) r.player.PlayEntry(index);
    EXPECT_EQ(r.decoder.opened.size(), 4u);
    r.player.PlayEntry(1);
    r.player.Previous();  // a step back before the first entry: the end of the file goes back too
    r.EndOfFile();
    EXPECT_EQ(r.decoder.opened.size(), 5u);
}

TEST(PlaybackController, DecoderOneTakesMpegAudioUnderL25AndFallsBack) {
    Rig r(0);
    r.queue.Queue().Replace("D:\\m", {{"D:\\m\\a.MP3", "a.MP3"}, {"D:\\m\\v.avi", "v.avi"}, {"D:\\m\\b.mp2", "b.mp2"},
                                      {"D:\\m\\c.mp1", "c.mp1"}});
    r.settings.SetText("L25", "0");
    r.audio.unplayable.insert("D:\\m\\b.mp2");  // the system cannot decode it
    const std::pair<int, bool> plays[] = {{1, true}, {2, false}, {3, false}, {4, true}};
    for (const auto& [index, decoder1] : plays) {
        r.player.PlayEntry(index);
        EXPECT_EQ(r.player.UsingDecoder1(), decoder1) << index;
    }
    EXPECT_EQ(r.decoder.opened, (Lines{"D:\\m\\v.avi", "D:\\m\\b.mp2"}));
    r.settings.SetText("L25", "1");  // takes effect with the next file
    r.player.PlayEntry(1);
    EXPECT_FALSE(r.player.UsingDecoder1());
}

TEST(PlaybackController, UnplayableFileUnderL16) {
    for (const char* l16 : {"0", "1"}) {  // "0": on to the next at once; "1": ask
        Rig r(3);
        r.decoder.unplayable.insert("D:\\m\\s2.wma");
        r.player.PlayEntry(1);
        r.settings.SetText("L16", l16);
        r.player.PlayEntry(2);
        EXPECT_EQ(r.Current(), "D:\\m\\s3.wma");
        EXPECT_EQ(r.prompts.questions.size(), *l16 == '1' ? 1u : 0u);
    }
    {
        Rig r(3);
        r.settings.SetText("L16", "1");
        r.decoder.unplayable.insert("D:\\m\\s2.wma");
        r.player.PlayEntry(1);
        r.prompts.yesNoAnswer = false;
        r.player.PlayEntry(2);
        ASSERT_EQ(r.prompts.questions.size(), 1u);
        EXPECT_EQ(r.prompts.questions[0].title, "无法播放");
        EXPECT_EQ(r.prompts.questions[0].text.rfind("s2.wma 文件无法播放", 0), 0u);
        EXPECT_EQ(r.Current(), "D:\\m\\s1.wma");  // "no": back to the previous
    }
    Rig r(2);
    r.decoder.unplayable = {"D:\\m\\s1.wma", "D:\\m\\s2.wma"};
    r.player.PlayEntry(1);  // every entry fails: stops after the last, no endless loop
    EXPECT_EQ(r.decoder.opened.size(), 2u);
    EXPECT_EQ(r.last.statusLine, "该文件无法播放...");
    EXPECT_EQ(r.last.totalTime, "总时：N/A");
    EXPECT_EQ(r.player.PositionMs(), -1);  // nothing is left open
}

TEST(PlaybackController, SegmentRefusalsAndTheLoopFromBToA) {
    Rig r(1);
    r.player.PlayEntry(1);
    r.player.SegmentCommand();
    r.player.SetA();  // at 0
    r.decoder.position = 1000;
    r.player.SetB();
    r.decoder.finished = true;
    r.player.ProgressTick();
    EXPECT_EQ(r.decoder.ranges, (std::vector<std::pair<long long, long long>>{{0, 1000}, {0, 1000}}));
    r.decoder.ranges.clear();
    r.player.SegmentCommand();
    r.player.SegmentCommand();
    r.player.SetB();
    EXPECT_EQ(r.prompts.messages.back(), (test::Message{"请选择A点再选B点", "错误"}));
    r.decoder.position = 65000;
    r.player.SetA();
    r.decoder.position = 60000;
    r.player.SetB();
    EXPECT_EQ(r.prompts.messages.back().text, "B点不能比A点小");
    EXPECT_EQ(r.last.segmentB, "B=N/A");
    r.decoder.position = 70000;
    r.player.SetB();
    EXPECT_EQ(r.decoder.ranges.back(), (std::pair<long long, long long>{65000, 70000}));
    r.decoder.finished = true;  // the decoder stops at B; the segment starts again at A
    r.player.ProgressTick();
    EXPECT_EQ(r.decoder.ranges.size(), 3u);
    EXPECT_EQ(r.decoder.position, 65000);
    r.player.Stop();
    r.player.PlayPause();
    EXPECT_EQ(r.decoder.ranges.back(), (std::pair<long long, long long>{65000, 70000}));
    r.decoder.position = 68000;
    r.player.SegmentCommand();  // cancel: the whole file from here on
    EXPECT_EQ(r.decoder.ranges.back(), (std::pair<long long, long long>{68000, -1}));
    EXPECT_EQ(r.last.segmentA, "A=N/A");
}

TEST(PlaybackController, TypedTimesJumpsAndSeeks) {
    const std::pair<const char*, long long> cases[] = {
        {"12345", 12345}, {"01:20:15", 4815}, {"1:20", 0},    {"1：20：15", 0}, {"12.6", 13},   {"abc", 0},
        {"0:0:1.5", 2},   {"::", 0},          {"-5", -5},     {"1:2:3:4", 0},   {" +7 ", 7},   {"1.2.3", 0},
        {"1:x:3", 0},     {"2:0:0", 7200},    {"0:2:0", 120}, {".", 0},         {"1111111111111111111111111111111", 0},
    };
    for (const auto& [text, seconds] : cases) EXPECT_EQ(PlaybackController::ParseTypedTime(text), seconds) << text;

    Rig r(1);
    r.settings.SetText("L1", "10");
    r.settings.SetText("L2", "30");
    r.prompts.textAnswer = "01:20:15";
    r.player.JumpToTime();  // nothing open yet
    r.player.Back();
    r.player.SeekToPermille(500);
    EXPECT_TRUE(r.decoder.seeks.empty());
    r.player.PlayEntry(1);
    r.player.JumpToTime();
    EXPECT_EQ(r.prompts.questions.back().title, "直接播放");
    r.prompts.textAnswer = " ";
    r.player.JumpToTime();
    r.decoder.position = 50000;
    r.player.Back();
    r.player.Forward();
    r.decoder.position = 3000;
    r.player.Back();
    r.decoder.position = 190000;
    r.player.Forward();
    for (int permille : {250, -5, 1200}) r.player.SeekToPermille(permille);
    EXPECT_EQ(r.decoder.seeks, (std::vector<long long>{4815000, 40000, 70000, 0, 200000, 50000, 0, 200000}));
}

TEST(PlaybackController, VolumeMovesOneStepATickUnlessL60) {
    Rig r(1);
    r.player.SetVolume(17);
    EXPECT_TRUE(r.levels.empty());
    EXPECT_TRUE(r.player.VolumeChanging());
    while (r.player.VolumeTick()) {
    }
    EXPECT_EQ(r.levels, (std::vector<int>{19, 18, 17}));
    EXPECT_FALSE(r.player.VolumeTick());
    r.player.SetVolume(19);
    while (r.player.VolumeTick()) {
    }
    EXPECT_EQ(r.levels.back(), 19);
    r.settings.SetText("L60", "1");  // gradual change switched off
    r.player.SetVolume(5);
    EXPECT_EQ(r.levels.back(), 5);
    EXPECT_FALSE(r.player.VolumeChanging());
}

// The balloon help names the neighbours (wrapping round like the neighbour labels) and the seconds to skip.
TEST(TransportTips, FollowTheQueueAndTheOptions) {
    Rig r(3);
    r.settings.SetText("L1", "7");
    for (const auto& [current, previous, next] :
         {std::tuple{1, "003-(s3.wma)", "002-(s2.wma)"}, {3, "002-(s2.wma)", "001-(s1.wma)"}}) {
        r.queue.Queue().SetCurrent(current);
        const TransportTips tips = MakeTransportTips(r.settings, r.queue.Queue(), kSuffixRandom, true);
        EXPECT_EQ(tips.previous, std::string("播放 “上一首”") + previous);
        EXPECT_EQ(tips.next, std::string("播放 “下一首”") + next);
        EXPECT_EQ(tips.back, "后退7秒");
        EXPECT_EQ(tips.forward, "前进5秒");
        EXPECT_EQ(tips.mode, "当前播放方式为" + std::string(kSuffixRandom));
        EXPECT_EQ(tips.modeLoop.substr(tips.modeLoop.size() - kSuffixRandom.size()), kSuffixRandom);
    }
    const TransportTips none = MakeTransportTips(r.settings, PlayQueue{}, kSuffixNormal, false);
    EXPECT_EQ(none.previous, "现在无文件播放");
    EXPECT_EQ(none.next, none.previous);
    EXPECT_EQ(none.back, "无法后退");
    EXPECT_EQ(none.forward, "无法前进");
    EXPECT_EQ(none.segmentRange, none.segment);
}

}  // namespace
}  // namespace lumora
