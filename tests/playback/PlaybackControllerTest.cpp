#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>

#include "playback/PlaybackController.h"
#include "playback/ScreenSaverGuard.h"
#include "playback/TransportTexts.h"
#include "playlist/QueueController.h"
#include "settings/SettingsStore.h"
#include "support/FakePlayer.h"
#include "support/Fakes.h"
#include "support/NullViews.h"

namespace lumora {
namespace {

using Ranges = std::vector<std::pair<long long, long long>>;

struct Rig : test::RecordingPlayerView {
    test::FakePrompts prompts;
    test::FakeFileSystem fs;
    test::NullQueueView queueView;
    QueueController queue{prompts, fs, queueView, queueView};
    SettingsStore settings;
    test::FakeDecoder decoder;
    test::FakeDecoder audio;  // decoder 1
    double draw = 0.0;
    std::function<double()> draws;  // when set, instead of the fixed draw
    PlaybackController player{{queue, settings, prompts, decoder, &audio, *this, *this,
                               [this] { return draws ? draws() : draw; }}};

    // `play`: the entry opened at once, 0 for none.
    explicit Rig(int entries, int play = 0) {
        test::Lines names;
        for (int i = 1; i <= entries; ++i) names.push_back("s" + std::to_string(i) + ".wma");
        queue.Queue().Replace("D:\\m", test::Entries("D:\\m", names));
        if (play) player.PlayEntry(play);
    }
    void EndOfFile() {
        decoder.finished = true;
        player.ProgressTick();
    }
    Rig& At(long long ms) { return decoder.position = ms, *this; }
    Rig& Press(std::string_view commands);
};

std::string Mode(std::string_view suffix) { return std::string(kModePrefix) + std::string(suffix); }

// Each command from a file playing at 50 s of 200 s (or from an empty queue), and the text it leaves.
// Commands by letter: P play/pause, S stop, N next, V previous, L loop, R random, O normal, T time mode,
// G segment, A and B the segment's points, t a progress tick, E the end of the file, J jump to a typed time,
// < back and > forward.
Rig& Rig::Press(std::string_view commands) {
    for (const char c : commands) {
        PlaybackController& p = player;
        const std::map<char, std::function<void()>> actions = {
            {'P', [&] { p.PlayPause(); }}, {'S', [&] { p.Stop(); }},     {'N', [&] { p.Next(); }},
            {'V', [&] { p.Previous(); }},  {'L', [&] { p.ToggleLoop(); }}, {'R', [&] { p.SetRandom(); }},
            {'O', [&] { p.SetNormal(); }}, {'T', [&] { p.ToggleTimeMode(); }}, {'G', [&] { p.SegmentCommand(); }},
            {'A', [&] { p.SetA(); }},      {'B', [&] { p.SetB(); }},     {'t', [&] { p.ProgressTick(); }},
            {'E', [&] { EndOfFile(); }},   {'J', [&] { p.JumpToTime(); }}, {'<', [&] { p.Back(); }},
            {'>', [&] { p.Forward(); }}};
        actions.at(c)();
    }
    return *this;
}

// Previous before the first entry and next after the last stay where they are.
TEST(PlaybackController, CommandsAndTheTextsTheyShow) {
    using T = PlaybackTexts;
    // clang-format off
    const std::tuple<int, const char*, std::string T::*, std::string> cases[] = {
        {0, "P", &T::statusLine, std::string(kNoFileToPlay)}, {0, "N", &T::statusLine, std::string(kNoFileToPlay)},
        {3, "", &T::title, "s1.wma"}, {3, "VNV", &T::title, "s1.wma"}, {3, "NNN", &T::title, "s3.wma"},
        {3, "", &T::totalTime, "总时：00:03:20"},
        {3, "", &T::playCaption, "暂停"}, {3, "P", &T::playCaption, "播放"}, {3, "PP", &T::playCaption, "暂停"},
        {3, "S", &T::playCaption, "播放"}, {3, "S", &T::time, "-"}, {3, "Tt", &T::time, "-00:02:30"},
        {3, "t", &T::statusLine, "播放的进度为：25% 时间为：00:00:50"}, {3, "T", &T::timeMode, "←"},
        {3, "TE", &T::time, "00:00-"}, {3, "", &T::modeLabel, Mode(kSuffixNormal)},
        {3, "L", &T::modeLabel, Mode(kSuffixRepeatOne)}, {3, "LL", &T::modeLabel, Mode(kSuffixRepeatAll)},
        {3, "R", &T::modeLabel, Mode(kSuffixRandom)}, {3, "RO", &T::modeLabel, Mode(kSuffixNormal)},
        {3, "RG", &T::modeLabel, std::string(kSegmentPrefix)}, {3, "G", &T::segmentButton, "取消选段"},
        {3, "GA", &T::segmentTip, "当前A点（开始点）为00:00:50\r\n选择文件的一段进行循环播放。选择A点的位置。"},
        {3, "A", &T::segmentA, "A=N/A"}, {3, "GAB", &T::segmentB, "B=00:00:50"}, {3, "GAN", &T::segmentA, "A=N/A"},
        {1, "E", &T::statusLine, "播放的进度为：100% 时间为：00:03:20"},  // the end of a file shows the end
    };
    // clang-format on
    for (const auto& [entries, commands, field, shown] : cases) {
        Rig r(entries, entries ? 1 : 0);
        EXPECT_EQ(r.At(50000).Press(commands).last.*field, shown) << commands;
    }
    Rig r(1, 1);
    for (const auto& [level, status] : {std::pair{17, "当前音量为：85%"}, {-3, "当前音量为：0%"}}) {
        r.player.SetVolume(level);
        EXPECT_EQ(r.last.statusLine, status);
    }
    r.decoder.speedWorks = false;
    r.player.SetSpeed(50);
    for (int tick = 0; tick < kNoticeTicks; ++tick) r.player.ProgressTick();  // long enough to be read
    EXPECT_EQ(r.last.statusLine, "提示：有些媒体格式不支持此功能。");
    EXPECT_EQ(r.Press("t").last.statusLine, r.last.progressLine);
    for (const int asked : {250, 0}) r.player.SetSpeed(asked);
    r.player.ResetSpeed();
    EXPECT_EQ(r.decoder.speeds, (std::vector<int>{50, 200, 1, 100}));
}

TEST(PlaybackController, ProgressSliderAndStopRestartsFromTheBeginning) {
    Rig r(1, 1);
    EXPECT_EQ(r.At(250000).Press("t").last.progress, 1000);  // a length the decoder underestimated
    r.Press("S");
    EXPECT_EQ(r.Press("PPP").decoder.ranges, (Ranges{{0, -1}}));  // pausing and going on: no new range
    EXPECT_FALSE(r.decoder.paused);
}

TEST(PlaybackController, EndOfFileByMode) {
    // Entries, the one playing, the mode, the random draw and what plays next ("" = nothing: stopped).
    for (const auto& [entries, start, mode, draw, next] :
         {std::tuple{3, 1, "", 0.0, "s2"}, {3, 3, "", 0.0, ""}, {3, 2, "L", 0.0, "s2"}, {3, 3, "LL", 0.0, "s1"},
          {5, 1, "R", 0.99, "s5"}, {5, 3, "R", 0.0, "s1"}, {2, 1, "R", 0.99, ""}}) {  // random needs three entries
        Rig r(entries);
        r.draw = draw;
        r.Press(mode).player.PlayEntry(start);
        r.At(1000).Press("E");
        const std::string expected = *next ? "D:\\m\\" + std::string(next) + ".wma" : r.decoder.opened.front();
        EXPECT_EQ(r.decoder.opened.back() + r.last.playCaption, expected + (*next ? "暂停" : "播放")) << mode << start;
    }
}

// Random play over ten entries: ends that come in quick succession still pick ever new entries, and
// another seed gives another order.
TEST(PlaybackController, RandomPlayDrawsFromASeededGenerator) {
    std::vector<std::string> orders[2];
    for (const std::uint64_t seed : {1u, 2u}) {
        Rig r(10);
        r.draws = SeededDraws(seed);
        r.Press("R").player.PlayEntry(1);
        for (int i = 0; i < 40; ++i) r.EndOfFile();
        orders[seed - 1] = r.decoder.opened;
        EXPECT_EQ(std::set<std::string>(r.decoder.opened.begin(), r.decoder.opened.end()).size(), 10u);
    }
    EXPECT_NE(orders[0], orders[1]);
}

// For the information editor's write the device lets go of the file and opens it again where it was:
// playing, paused or stopped, at the same place.
TEST(PlaybackController, LetsGoOfTheFileForAWriteAndGoesOnWhereItWas) {
    for (const auto& [before, seeks, paused, finished, caption] :
         {std::tuple{"", std::vector<long long>{50000}, false, false, "暂停"},
          {"P", std::vector<long long>{50000}, true, false, "播放"}, {"S", std::vector<long long>{}, false, true, "播放"}}) {
        Rig r(1, 1);
        r.At(50000).Press(before);
        ASSERT_TRUE(r.player.LetGo("D:\\m\\s1.wma"));
        EXPECT_EQ(r.decoder.closes, 1);
        r.Press("t").player.TakeBack();  // the timer leaves the closed device alone
        EXPECT_EQ(r.decoder.opened.size(), 2u);
        EXPECT_EQ(r.decoder.seeks, seeks) << before;
        EXPECT_EQ(std::tuple(r.decoder.paused, r.decoder.finished, r.last.playCaption),
                  std::tuple(paused, finished, std::string(caption)))
            << before;
    }
}

TEST(PlaybackController, SegmentRefusalsAndTheLoopFromBToA) {
    Rig r(1, 1);
    r.Press("GA").At(1000).Press("BE");  // A at 0
    EXPECT_EQ(r.Press("GGB").prompts.messages.back(), (test::Message{"请选择A点再选B点", "错误"}));
    r.At(65000).Press("A").At(60000).Press("B");
    EXPECT_EQ(r.prompts.messages.back().text + r.last.segmentB, "B点不能比A点小B=N/A");
    // The decoder stops at B and the segment starts again at A; cancelled, the whole file plays from there on.
    r.At(70000).Press("BE").At(68000).Press("G");
    EXPECT_EQ(r.decoder.ranges, (Ranges{{0, 1000}, {0, 1000}, {0, -1}, {65000, 70000}, {65000, 70000}, {68000, -1}}));
}

TEST(PlaybackController, TypedTimesJumpsAndSeeks) {
    const std::pair<const char*, long long> cases[] = {
        {"12345", 12345}, {"01:20:15", 4815}, {"1:20", 0},    {"1：20：15", 0}, {"12.6", 13},   {"abc", 0},
        {"0:0:1.5", 2},   {"::", 0},          {"-5", -5},     {"1:2:3:4", 0},   {" +7 ", 7},   {"1.2.3", 0},
        {"2:0:0", 7200},    {"0:2:0", 120},      {"1111111111111111111111111111111", 0},
    };
    for (const auto& [text, seconds] : cases) EXPECT_EQ(PlaybackController::ParseTypedTime(text), seconds) << text;

    Rig r(1);
    r.settings.SetText("L1", "10");
    r.settings.SetText("L2", "30");
    r.prompts.textAnswer = "0:1:15";
    r.Press("J<").player.PlayEntry(1);  // nothing open yet
    r.Press("J");
    // Past the end, however many digits: the end of the file; before the start: the start.
    r.prompts.textScript = {"99999999999999999999", "-99999999999999999999:0:0"};
    r.Press("JJ");
    r.At(50000).Press("<").At(3000).Press("<").At(190000).Press(">");
    for (int permille : {250, -5, 1200}) r.player.SeekToPermille(permille);
    EXPECT_EQ(r.decoder.seeks, (std::vector<long long>{75000, 200000, 0, 40000, 0, 200000, 50000, 0, 200000}));
}

TEST(PlaybackController, VolumeMovesOneStepATickUnlessL60) {
    Rig r(1);
    for (const int level : {17, 19}) {
        r.player.SetVolume(level);  // from 20, one step a tick
        while (r.player.VolumeTick()) continue;
    }
    r.settings.SetText("L60", "1");  // gradual change switched off
    r.player.SetVolume(5);
    r.player.RestoreVolume(25);  // the last run's level, at once
    EXPECT_EQ(r.levels, (std::vector<int>{19, 18, 17, 18, 19, 5, 20}));
}

// The balloon help names the neighbours (wrapping round like the neighbour labels) and the seconds to skip, and
// follows the player: its mode, the time shown, the volume, the segment.
TEST(TransportTips, FollowTheQueueTheOptionsAndThePlayer) {
    Rig r(3, 1);
    r.settings.SetText("L1", "7");
    r.Press("RT");
    r.player.SetVolume(7);
    for (const auto& [current, previous, next] :
         {std::tuple{1, "003-(s3.wma)", "002-(s2.wma)"}, {3, "002-(s2.wma)", "001-(s1.wma)"}}) {
        r.queue.Queue().SetCurrent(current);
        const TransportTips tips = MakeTransportTips(r.settings, r.queue.Queue(), r.last, r.player.FilePlays());
        EXPECT_EQ(tips.previous + tips.next, std::string("播放 “上一首”") + previous + "播放 “下一首”" + next);
        EXPECT_EQ(tips.back + tips.forward, "后退7秒前进5秒");
    }
    const TransportTips tips = MakeTransportTips(r.settings, r.queue.Queue(), r.last, true);
    EXPECT_EQ(tips.modeLoop + tips.time, "设置播放方式-“单曲\\全部循环”。当前播放方式为：随机显示正在播放文件的剩余时间”。");
    EXPECT_EQ(tips.volume + tips.volumeLabel, "当前音量为：35%音量显示（0为最小；20为最大）");
    r.settings.SetText("L55", "1");  // the "倒制" button says whether it is on
    EXPECT_TRUE(
        MakeTransportTips(r.settings, r.queue.Queue(), r.last, true).decoderWorkaround.ends_with("当前：已启用"));
    const TransportTips none = MakeTransportTips(r.settings, PlayQueue{}, PlaybackTexts{}, false);
    EXPECT_EQ(none.previous + none.back + none.modeNormal + none.time,
              "现在无文件播放无法后退设置播放方式-“正常”。当前播放方式为：正常“显示正在播放时间”。");
}

// "“显示“气泡”式信息提示文本”": previous, next, volume and progress tell the neighbour, the volume in per cent and
// the time under the pointer, else their help; without "“显示“气泡”式帮助提示文本”" only that information stays.
TEST(TransportTips, InformationAndHelpFollowTheirOptions) {
    Rig r(3, 1);
    r.player.SetVolume(15);
    r.queue.Queue().SetCurrent(1);
    const auto make = [&](const char* help, const char* info, std::optional<long long> pointer = 60000) {
        r.settings.SetText("L31", help);
        r.settings.SetText("L38", info);
        return MakeTransportTips(r.settings, r.queue.Queue(), r.last, true, pointer);
    };
    TransportTips t = make("1", "1");
    EXPECT_EQ(t.next + "|" + t.volume + "|" + t.progress,
              "播放 “下一首”002-(s2.wma)|当前音量为：75%|指针所指时间：00:01:00");
    EXPECT_EQ(MakeTransportTips(r.settings, r.queue.Queue(), r.last, false, 60000).progress.find("指针"),
              std::string::npos);  // no file, no time under the pointer
    t = make("1", "0");
    EXPECT_EQ(t.previous + "|" + t.volume + "|" + t.progress + "|" + t.stop,
              "播放 “上一首”|" + r.last.volumeTip + "|播放进度|停止播放");
    EXPECT_FALSE(MakeDisplayTips(r.settings).panel.empty());
    t = make("0", "1");
    EXPECT_EQ(t.previous + "|" + t.volume + "|" + t.play + t.modeLoop + t.decoderWorkaround + t.volumeLabel,
              "播放 “上一首”003-(s3.wma)|当前音量为：75%|");
    EXPECT_EQ(MakeDisplayTips(r.settings), DisplayTips{});
    t = make("0", "0");
    EXPECT_EQ(t.previous + t.next + t.volume + t.progress + t.play, "");
    EXPECT_FALSE(t.help || t.information);
}

// Stopped, or on a file that cannot be played, nothing of the previous file stays on show.
TEST(PlaybackController, StopAndAnUnplayableFileClearWhatDescribedTheFile) {
    Rig r(3);
    r.settings.SetText("L16", "0");  // on at once: past the last entry, nothing more plays
    r.queue.Queue().Replace("D:\\m", {{"D:\\m\\s1.wma", "s1.wma"}, {"D:\\m\\bad.wma", "bad.wma"}});
    r.player.PlayEntry(1);
    r.At(50000).Press("GAtB");
    ASSERT_TRUE(r.fileShown);
    EXPECT_FALSE(r.Press("S").fileShown);
    EXPECT_TRUE(r.Press("P").fileShown);  // played again: the panels describe it again
    r.Press("N");  // bad.wma cannot be played
    EXPECT_EQ(std::tuple(r.last.segmentA, r.last.segmentB, r.last.totalTime, r.last.statusLine),
              std::tuple("A=N/A", "B=N/A", "总时：N/A", "该文件无法播放..."));
    EXPECT_FALSE(r.fileShown);
}

// Decoder 1 takes MPEG audio ("L25" 0); what it refuses goes to decoder 2. (What neither plays, and its
// question, is the end-to-end sound suite's, with either decoder.)
TEST(PlaybackController, WhatDecoder1RefusesGoesToDecoder2) {
    Rig r(0);
    r.queue.Queue().Replace("D:\\m", {{"D:\\m\\a.mp3", "a.mp3"}});
    r.settings.SetText("L25", "0");
    r.audio.opens = false;
    r.player.PlayEntry(1);
    EXPECT_EQ(r.audio.opened.size() + r.decoder.opened.size(), 2u);
    EXPECT_EQ(r.last.playCaption, "暂停");
}

// The time label's mode of the last run, at start.
TEST(PlaybackController, TimeModeOfTheLastRun) {
    Rig r(1);
    r.settings.SetText("L58", "1");
    r.player.RestoreTimeMode();
    EXPECT_EQ(r.last.timeMode + std::to_string(r.player.ShowsRemaining()), "←1");
}

struct RecordingPower : DisplayPower {
    void KeepDisplayOn(bool on) override { told.push_back(on); }
    std::vector<bool> told;
};

// "L50": the display stays on only while a file plays; the port hears only changes, and the option counts from
// the next update, also while playing.
TEST(ScreenSaverGuard, KeepsTheDisplayOnWhilePlayingWithL50) {
    SettingsStore settings;
    RecordingPower power;
    ScreenSaverGuard guard(settings, power);
    for (const auto& [l50, playing] :
         {std::pair{"1", false}, {"1", true}, {"1", true}, {"1", false}, {"0", true}, {"1", true}, {"", true}}) {
        settings.SetText("L50", l50);
        guard.Update(playing);
    }
    EXPECT_EQ(power.told, (std::vector<bool>{true, false, true, false}));
}

}  // namespace
}  // namespace lumora
