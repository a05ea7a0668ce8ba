#include <gtest/gtest.h>

#include <set>

#include "playback/PlaybackController.h"
#include "playlist/QueueController.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"
#include "support/NullViews.h"

namespace lumora {
namespace {

// A decoder tests drive by hand: position and the end of the file are set, never waited for.
class FakeDecoder : public Decoder {
public:
    bool Open(const std::string& path) override {
        opened.push_back(path);
        if (unplayable.count(path)) return false;
        position = 0;
        finished = false;
        paused = false;
        return true;
    }
    bool Pause() override { return paused = true; }
    bool Resume() override {
        paused = false;
        return true;
    }
    void Stop() override { finished = true; }
    void Close() override {}
    long long PositionMs() override { return position; }
    long long LengthMs() override { return length; }
    bool Seek(long long ms) override {
        seeks.push_back(ms);
        position = ms;
        return true;
    }
    bool PlayRange(long long from, long long to) override {
        ranges.emplace_back(from, to);
        position = from;
        finished = false;
        return true;
    }
    bool SetSpeed(int percent) override {
        speeds.push_back(percent);
        return speedWorks;
    }
    bool Finished() override { return finished; }

    std::vector<std::string> opened;
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

class RecordingView : public PlaybackView {
public:
    void ShowPlayback(const PlaybackTexts& t) override { last = t; }
    void FileOpened(const std::string& path) override { opened.push_back(path); }
    PlaybackTexts last;
    std::vector<std::string> opened;
};

class FakeVolume : public VolumeControl {
public:
    void SetLevel(int level) override { levels.push_back(level); }
    std::vector<int> levels;
};

struct Rig {
    test::FakePrompts prompts;
    test::FakeFileSystem fs;
    test::NullQueueView queueView;
    QueueController queue{prompts, fs, queueView, queueView};
    SettingsStore settings;
    FakeDecoder decoder;
    FakeVolume volume;
    RecordingView view;
    double draw = 0.0;
    PlaybackController player{{queue, settings, prompts, decoder, nullptr, volume, view, [this] { return draw; }}};

    explicit Rig(int entries) {
        std::vector<MediaEntry> list;
        for (int i = 1; i <= entries; ++i) {
            const std::string name = "s" + std::to_string(i) + ".mp3";
            list.push_back({"D:\\m\\" + name, name});
        }
        queue.Queue().Replace("D:\\m", list);
    }
    std::string Current() { return decoder.opened.empty() ? "" : decoder.opened.back(); }
    void Start() { player.OpenAndPlay(queue.Queue().CurrentEntry()->path); }
    void EndOfFile() {
        decoder.finished = true;
        player.ProgressTick();
    }
};

TEST(PlaybackController, PlayPauseCaptions) {
    Rig r(2);
    EXPECT_EQ(r.player.Texts().playCaption, "播放");
    r.player.PlayPause();  // nothing open: opens the current entry
    EXPECT_EQ(r.Current(), "D:\\m\\s1.mp3");
    EXPECT_EQ(r.view.last.playCaption, "暂停");
    EXPECT_EQ(r.view.last.title, "s1.mp3");
    r.player.PlayPause();
    EXPECT_TRUE(r.decoder.paused);
    EXPECT_EQ(r.view.last.playCaption, "播放");
    r.player.PlayPause();
    EXPECT_FALSE(r.decoder.paused);
    EXPECT_EQ(r.view.last.playCaption, "暂停");
    r.player.Stop();
    EXPECT_EQ(r.view.last.playCaption, "播放");
    EXPECT_EQ(r.view.last.time, "-");
    EXPECT_EQ(r.view.last.progress, 0);
}

TEST(PlaybackController, EmptyQueueSaysSo) {
    Rig r(0);
    r.player.PlayPause();
    EXPECT_EQ(r.view.last.statusLine, "现在无文件播放");
    r.player.Next();
    EXPECT_TRUE(r.decoder.opened.empty());
}

TEST(PlaybackController, EndOfFileByMode) {
    struct Case {
        const char* name;
        int entries;
        int start;
        int modeClicks;  // 0 normal, 1 repeat one, 2 repeat all, 3 random
        double draw;
        std::string expectNext;  // "" = nothing new opened
    } cases[] = {
        {"normal goes on", 3, 1, 0, 0, "D:\\m\\s2.mp3"},
        {"normal stops after the last", 3, 3, 0, 0, ""},
        {"repeat all wraps to 1", 3, 3, 2, 0, "D:\\m\\s1.mp3"},
        {"repeat all goes on", 3, 2, 2, 0, "D:\\m\\s3.mp3"},
        {"random draws", 5, 1, 3, 0.99, "D:\\m\\s5.mp3"},
        {"random draws the first", 5, 3, 3, 0.0, "D:\\m\\s1.mp3"},
        {"random with two stays", 2, 1, 3, 0.99, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Rig r(c.entries);
        r.draw = c.draw;
        if (c.modeClicks == 1) r.player.ToggleLoop();
        if (c.modeClicks == 2) {
            r.player.ToggleLoop();
            r.player.ToggleLoop();
        }
        if (c.modeClicks == 3) r.player.SetRandom();
        r.player.PlayEntry(c.start);
        const size_t opens = r.decoder.opened.size();
        r.EndOfFile();
        if (c.expectNext.empty()) {
            EXPECT_EQ(r.decoder.opened.size(), opens);
        } else {
            ASSERT_EQ(r.decoder.opened.size(), opens + 1);
            EXPECT_EQ(r.Current(), c.expectNext);
        }
    }
}

TEST(PlaybackController, RepeatOneReplaysFromTheStart) {
    Rig r(3);
    r.player.ToggleLoop();
    EXPECT_EQ(r.view.last.modeLabel, "播放方式：单曲循环");
    r.player.PlayEntry(2);
    r.EndOfFile();
    EXPECT_EQ(r.decoder.opened, (std::vector<std::string>{"D:\\m\\s2.mp3", "D:\\m\\s2.mp3"}));
    EXPECT_EQ(r.decoder.position, 0);
    EXPECT_EQ(r.view.last.playCaption, "暂停");
}

TEST(PlaybackController, DecoderOneTakesMpegAudioOnlyAndFallsBack) {
    test::FakePrompts prompts;
    test::FakeFileSystem fs;
    test::NullQueueView queueView;
    QueueController queue{prompts, fs, queueView, queueView};
    queue.Queue().Replace("D:\\m", {{"D:\\m\\a.MP3", "a.MP3"}, {"D:\\m\\v.avi", "v.avi"}, {"D:\\m\\b.mp2", "b.mp2"}});
    SettingsStore settings;
    settings.SetText("L25", "0");
    FakeDecoder engine;
    FakeDecoder audio;
    audio.unplayable.insert("D:\\m\\b.mp2");  // the system cannot decode it
    FakeVolume volume;
    RecordingView view;
    PlaybackController player({queue, settings, prompts, engine, &audio, volume, view, [] { return 0.0; }});
    player.PlayEntry(1);
    EXPECT_TRUE(player.UsingDecoder1());
    player.PlayEntry(2);
    EXPECT_FALSE(player.UsingDecoder1());
    EXPECT_EQ(engine.opened.back(), "D:\\m\\v.avi");
    player.PlayEntry(3);
    EXPECT_FALSE(player.UsingDecoder1());
    EXPECT_EQ(engine.opened.back(), "D:\\m\\b.mp2");
    settings.SetText("L25", "1");  // takes effect with the next file
    player.PlayEntry(1);
    EXPECT_FALSE(player.UsingDecoder1());
}

TEST(PlaybackController, ModeLabelsAndLoopToggle) {
    Rig r(1);
    EXPECT_EQ(r.player.Texts().modeLabel, "播放方式：正常");
    r.player.ToggleLoop();
    EXPECT_EQ(r.view.last.modeLabel, "播放方式：单曲循环");
    r.player.ToggleLoop();
    EXPECT_EQ(r.view.last.modeLabel, "播放方式：全部循环");
    r.player.SetRandom();
    EXPECT_EQ(r.view.last.modeLabel, "播放方式：随机");
    r.player.SetNormal();
    EXPECT_EQ(r.view.last.modeLabel, "播放方式：正常");
}

TEST(PlaybackController, PreviousAtTheFirstEntryPlaysNothing) {
    Rig r(3);
    r.player.PlayEntry(1);
    r.player.Previous();
    EXPECT_EQ(r.decoder.opened.size(), 1u);
    r.player.Next();
    EXPECT_EQ(r.Current(), "D:\\m\\s2.mp3");
    r.player.Previous();
    EXPECT_EQ(r.Current(), "D:\\m\\s1.mp3");
}

TEST(PlaybackController, UnplayableFileUnderL16) {
    {
        Rig r(3);
        r.decoder.unplayable.insert("D:\\m\\s1.mp3");
        r.player.PlayEntry(1);  // "0": on to the next at once
        EXPECT_EQ(r.Current(), "D:\\m\\s2.mp3");
        EXPECT_TRUE(r.prompts.questions.empty());
    }
    {
        Rig r(3);
        r.settings.SetText("L16", "1");
        r.decoder.unplayable.insert("D:\\m\\s2.mp3");
        r.player.PlayEntry(1);
        r.prompts.yesNoAnswer = false;  // No: the previous entry
        r.player.PlayEntry(2);
        ASSERT_EQ(r.prompts.questions.size(), 1u);
        EXPECT_EQ(r.prompts.questions[0].title, "无法播放");
        EXPECT_EQ(r.prompts.questions[0].text.rfind("s2.mp3 文件无法播放或文件不存在", 0), 0u);
        EXPECT_EQ(r.Current(), "D:\\m\\s1.mp3");
    }
    {
        Rig r(2);
        r.decoder.unplayable = {"D:\\m\\s1.mp3", "D:\\m\\s2.mp3"};
        r.player.PlayEntry(1);  // every entry fails: stops after the last, no endless loop
        EXPECT_EQ(r.decoder.opened.size(), 2u);
        EXPECT_EQ(r.view.last.statusLine, "该文件无法播放...");
        EXPECT_EQ(r.view.last.totalTime, "总时：N/A");
    }
}

TEST(PlaybackController, SegmentCaptionsAndRefusals) {
    Rig r(1);
    r.player.PlayEntry(1);
    r.player.SegmentCommand();
    EXPECT_EQ(r.view.last.modeLabel, "选段播放");
    EXPECT_EQ(r.view.last.segmentA, "A=N/A");
    EXPECT_EQ(r.view.last.segmentB, "B=N/A");
    r.player.SetB();
    EXPECT_EQ(r.prompts.messages.back().text, "请选择A点再选B点");
    EXPECT_EQ(r.prompts.messages.back().title, "错误");
    r.decoder.position = 65000;
    r.player.SetA();
    EXPECT_EQ(r.view.last.segmentA, "A=00:01:05");
    EXPECT_EQ(r.view.last.segmentTip, "当前A点（开始点）为00:01:05\r\n选择文件的一段进行循环播放。选择A点的位置。");
    r.decoder.position = 60000;
    r.player.SetB();
    EXPECT_EQ(r.prompts.messages.back().text, "B点不能比A点小");
    EXPECT_EQ(r.view.last.segmentB, "B=N/A");
    r.decoder.position = 70000;
    r.player.SetB();
    EXPECT_EQ(r.view.last.segmentB, "B=00:01:10");
    EXPECT_EQ(r.decoder.ranges.back(), (std::pair<long long, long long>{65000, 70000}));
    // The decoder stops at B; the segment starts again at A.
    r.decoder.position = 70000;
    r.decoder.finished = true;
    r.player.ProgressTick();
    EXPECT_EQ(r.decoder.ranges.back(), (std::pair<long long, long long>{65000, 70000}));
    EXPECT_EQ(r.decoder.position, 65000);
    r.player.SegmentCommand();  // cancel
    EXPECT_EQ(r.view.last.modeLabel, "播放方式：正常");
    EXPECT_EQ(r.view.last.segmentA, "A=N/A");
}

TEST(PlaybackController, TypedTimes) {
    const std::pair<const char*, long long> cases[] = {
        {"12345", 12345}, {"01:20:15", 4815}, {"1:20", 0}, {"1：20：15", 0}, {"12.6", 13},
        {"abc", 0},       {"0:0:1.5", 2},     {"::", 0},   {"-5", -5},       {"1:2:3:4", 0},
    };
    for (const auto& [text, seconds] : cases) EXPECT_EQ(PlaybackController::ParseTypedTime(text), seconds) << text;

    Rig r(1);
    r.player.PlayEntry(1);
    r.prompts.textAnswer = "01:20:15";
    r.player.JumpToTime();
    EXPECT_EQ(r.decoder.seeks.back(), 4815000);
    EXPECT_EQ(r.prompts.questions.back().title, "直接播放");
    r.prompts.textAnswer = "";
    r.player.JumpToTime();
    EXPECT_EQ(r.decoder.seeks.size(), 1u);
}

TEST(PlaybackController, BackAndForwardBySettings) {
    Rig r(1);
    r.settings.SetText("L1", "10");
    r.settings.SetText("L2", "30");
    r.player.PlayEntry(1);
    r.decoder.position = 50000;
    r.player.Back();
    EXPECT_EQ(r.decoder.seeks.back(), 40000);
    r.player.Forward();
    EXPECT_EQ(r.decoder.seeks.back(), 70000);
    r.decoder.position = 3000;
    r.player.Back();
    EXPECT_EQ(r.decoder.seeks.back(), 0);
}

TEST(PlaybackController, ProgressTexts) {
    Rig r(1);
    r.player.PlayEntry(1);
    r.decoder.position = 50000;  // of 200 s
    r.player.ProgressTick();
    EXPECT_EQ(r.view.last.progress, 250);
    EXPECT_EQ(r.view.last.percent, "25%");
    EXPECT_EQ(r.view.last.time, "00:00:50");
    EXPECT_EQ(r.view.last.progressLine, "播放的进度为：25% 时间为：00:00:50");
    EXPECT_EQ(r.view.last.statusLine, r.view.last.progressLine);
    r.player.ToggleTimeMode();
    r.player.ProgressTick();
    EXPECT_EQ(r.view.last.time, "-00:02:30");
}

TEST(PlaybackController, SpeedAndVolume) {
    Rig r(1);
    r.player.PlayEntry(1);
    r.player.SetSpeed(250);
    EXPECT_EQ(r.decoder.speeds.back(), 200);
    r.decoder.speedWorks = false;
    r.player.SetSpeed(50);
    EXPECT_EQ(r.view.last.statusLine, "提示：有些媒体格式不支持此功能。");
    r.player.ResetSpeed();
    EXPECT_EQ(r.view.last.speed, 100);

    r.player.SetVolume(17);  // gradual: the mixer moves one step a tick
    EXPECT_EQ(r.view.last.statusLine, "当前音量为：85%");
    EXPECT_TRUE(r.volume.levels.empty());
    while (r.player.VolumeTick()) {
    }
    EXPECT_EQ(r.volume.levels, (std::vector<int>{19, 18, 17}));
    r.settings.SetText("L60", "1");  // gradual change switched off
    r.player.SetVolume(5);
    EXPECT_EQ(r.volume.levels.back(), 5);
    EXPECT_FALSE(r.player.VolumeChanging());
}

}  // namespace
}  // namespace lumora
