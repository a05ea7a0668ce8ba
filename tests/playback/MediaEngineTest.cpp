#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>

#include "playback/EngineDecoder.h"
#include "playback/MediaEngine.h"

namespace lumora {
namespace {

using Lines = std::vector<std::string>;

// Records every command; answers from a table of replies and error codes. The movie is 10001 frames or
// 400 s long, in whichever time format was set last.
struct RecordingMci : MciPort {
    unsigned long Send(const std::string& command, std::string* reply) override {
        sent.push_back(command);
        if (const auto it = errors.find(command); it != errors.end()) return it->second;
        if (command.rfind("set movie1 time format ", 0) == 0) format = command.substr(23);
        std::string answer = replies.count(command) ? replies[command] : "";
        if (command == "status movie1 length") answer = std::to_string(format == "ms" ? lengthMs : lengthFrames);
        if (command == "status movie1 position") answer = std::to_string(position) + " \r\n";
        if (reply) *reply = answer;
        return 0;
    }
    std::string ErrorText(unsigned long error) override { return "error " + std::to_string(error); }
    std::optional<std::string> ShortPath(const std::string& path) override {
        return "C:\\SHORT~1\\" + path.substr(path.find_last_of('\\') + 1);
    }
    PixelRect WindowRect(WindowId) override { return {10, 20, 640, 480}; }

    Lines sent;
    std::map<std::string, std::string> replies{{"Where movie1 destination", "0 0 352 288"}};
    std::map<std::string, unsigned long> errors;
    std::string format = "frames";
    long long lengthFrames = 10001, lengthMs = 400000, position = 0;
};

struct FakeControls : ControlPort {
    explicit FakeControls(bool any = true, bool player = false) : installed(any), mediaPlayer(player) {}
    bool Available(HostedControl control) override { return installed && (control == HostedControl::Flash || mediaPlayer); }
    bool Open(HostedControl, const std::string& path, WindowId window) override {
        return log.push_back("open " + path + " in " + std::to_string(window)), opens;
    }
    bool Call(int id) override { return log.push_back("call " + std::to_string(id)), callsWork; }
    std::optional<double> Number(int id) override {
        return id == kPlayerPositionProperty ? std::optional<double>(position) : std::nullopt;
    }
    bool SetNumber(int id, double value) override {
        return log.push_back("set " + std::to_string(id) + " " + std::to_string(static_cast<int>(value * 10))), true;
    }
    std::optional<double> NumberByName(const std::string& name) override {
        if (name == "Playing") return playing;
        return name == "Duration" ? 42.5 : name == "PlayState" ? std::optional<double>(playState) : std::nullopt;
    }
    void Close() override { log.push_back("close"); }

    bool installed = true, mediaPlayer = false, opens = true, callsWork = true;
    double position = 0, playState = 2;
    std::optional<double> playing;  // the Flash control's "Playing"
    Lines log;
};

std::string Call(int id) { return "call " + std::to_string(id); }

// Every open closes everything first, then the ending (in any case) picks the player, the device type and
// whether the picture is looked for.
TEST(MediaEngine, OpenDispatchByEndingAndInstalledControls) {
    // The path, decoder 1 on, the controls installed, the result, the kind and the open command's device type
    // ("" when MCI opens nothing).
    const std::tuple<const char*, bool, bool, bool, OpenResult, MediaKind, const char*> cases[] = {
        {"D:\\a.mp3", true, true, true, OpenResult::ForDecoder1, MediaKind::None, ""},
        {"D:\\a.mp1", true, true, true, OpenResult::ForDecoder1, MediaKind::None, ""},
        {"D:\\a.mp3", false, true, true, OpenResult::Playing, MediaKind::Mci, "MPEGVideo"},
        {"D:\\m.mid", false, true, true, OpenResult::Playing, MediaKind::Mci, "Sequencer"},
        {"D:\\avi", false, true, true, OpenResult::Playing, MediaKind::Mci, "MPEGVideo"},
        {"D:\\t.cda", false, true, true, OpenResult::CdTrack, MediaKind::None, ""},
        {"D:\\f.SWF", false, true, true, OpenResult::Control, MediaKind::Flash, ""},
        {"D:\\f.swf", false, false, false, OpenResult::CannotPlay, MediaKind::None, ""},
        {"D:\\歌.WMA", false, true, true, OpenResult::Playing, MediaKind::MediaPlayer, ""},
        {"D:\\v.wmv", false, true, false, OpenResult::Playing, MediaKind::Mci, "MPEGVideo"},
        {".wma", false, true, true, OpenResult::Playing, MediaKind::MediaPlayer, ""},
        {"D:\\b.JPG", false, true, true, OpenResult::Picture, MediaKind::Picture, ""},  // shown by Lumora itself
        {"D:\\b.cur", true, false, false, OpenResult::Picture, MediaKind::Picture, ""},
    };
    for (const auto& [path, decoder1, flash, mediaPlayer, result, kind, device] : cases) {
        SCOPED_TRACE(path);
        RecordingMci mci;
        FakeControls controls(flash, mediaPlayer);
        MediaEngine e(mci);
        e.SetControls(&controls);
        EXPECT_EQ(e.OpenDispatch(path, 7, decoder1), result);
        EXPECT_EQ(e.Kind(), kind);
        const std::string opened = mci.sent.size() > 1 ? mci.sent[1] : "";
        EXPECT_TRUE(*device ? opened.find(std::string(" type ") + device + " ") != std::string::npos : opened.empty());
    }
    RecordingMci mci;
    MediaEngine without(mci);  // no controls at all
    EXPECT_EQ(without.OpenDispatch("D:\\a.swf", 7, false), OpenResult::CannotPlay);
    mci.errors = {{"play movie1 from 0 to 10001", 263}};
    EXPECT_EQ(without.OpenDispatch("D:\\v.avi", 7, false), OpenResult::CannotPlay);
    EXPECT_EQ(without.OpenDispatch("D:\\m.mid", 7, false), OpenResult::CannotPlay);
}

// AVI and Windows Media video try their players in turn while one refuses; "解码倒制" (asked at every open)
// puts the MPEG device, the system's filters, first. Other files open as always.
TEST(MediaEngine, VideoTriesItsPlayersInTurnTheSystemsFiltersFirstWithTheDecoderWorkaround) {
    // The path, "解码倒制", the device types that refuse, the types tried in order, the kind playing (None: cannot).
    const std::tuple<const char*, bool, Lines, Lines, MediaKind> cases[] = {
        {"D:\\v.AVI", false, {}, {"AviVideo"}, MediaKind::Mci},
        {"D:\\v.avi", false, {"AviVideo"}, {"AviVideo", "MPEGVideo"}, MediaKind::Mci},
        {"D:\\v.avi", true, {}, {"MPEGVideo"}, MediaKind::Mci},
        {"D:\\v.avi", true, {"MPEGVideo", "AviVideo"}, {"MPEGVideo", "AviVideo"}, MediaKind::None},
        {"D:\\v.wmv", false, {}, {}, MediaKind::MediaPlayer},
        {"D:\\v.WMV", true, {}, {"MPEGVideo"}, MediaKind::Mci},
        {"D:\\v.asf", true, {"MPEGVideo"}, {"MPEGVideo"}, MediaKind::MediaPlayer},
        {"D:\\a.wma", true, {}, {}, MediaKind::MediaPlayer},
    };
    for (const auto& [path, filtersFirst, refusing, tried, kind] : cases) {
        RecordingMci mci;
        for (const auto& type : refusing) {
            mci.errors["open C:\\SHORT~1\\" + std::string(path).substr(3) + " type " + type +
                       " Alias movie1 parent 7 Style " + std::string(kChildStyle)] = 275;
        }
        FakeControls controls(true, true);
        MediaEngine e(mci);
        e.SetControls(&controls);
        EngineDecoder decoder(e, 7);
        decoder.SetFiltersFirst([&] { return filtersFirst; });
        EXPECT_EQ(decoder.Open(path), kind != MediaKind::None) << path;
        Lines types;
        for (const auto& c : mci.sent) {
            if (c.starts_with("open "))
                types.push_back(c.substr(c.find(" type ") + 6, c.find(" Alias") - c.find(" type ") - 6));
        }
        EXPECT_EQ(std::pair(types, e.Kind()), std::pair(tried, kind)) << path << filtersFirst;
    }
}

TEST(MediaEngine, VideoAfterOpening) {
    RecordingMci mci;
    MediaEngine e(mci);
    ASSERT_EQ(e.OpenDispatch("D:\\v.mpg", 3, false), OpenResult::Playing);
    EXPECT_EQ(e.Info().lines, (Lines{"该媒体文件为视频", "画面原始大小(X)：352  (Y)：288",
                                     "画面实际大小(X)：352  (Y)：288", "总帧数：10001  帧速率：25"}));
    // The picture fills the window, and the device's window, a hidden child at first, is shown before
    // it plays: Wine's AVI device takes a "show" after "play" for a "hide".
    const Lines shown{"put movie1 window at 0 0 640 480", "window movie1 state show"};
    const auto put = std::search(mci.sent.begin(), mci.sent.end(), shown.begin(), shown.end());
    EXPECT_LT(put, std::find(mci.sent.begin(), mci.sent.end(), "play movie1 from 0 to 10001"));
    EXPECT_EQ(std::pair(e.State().positionStep, e.State().segmentEnd), std::pair(2LL, 10001LL));
}

// Flash: pause and stop are the control's one stop method. Windows Media: play, pause and stop methods and
// a position property in seconds; a play range ends where it was asked to, though the control plays on.
TEST(MediaEngine, HostedControlsPlayTheirFiles) {
    RecordingMci mci;
    FakeControls controls(true, true);
    MediaEngine e(mci);
    e.SetControls(&controls);
    ASSERT_EQ(e.OpenDispatch("D:\\片头.swf", 7, false), OpenResult::Control);
    EXPECT_TRUE(e.Pause() && e.State().paused && e.Stop());
    EXPECT_EQ(controls.log, (Lines{"close", "open D:\\片头.swf in 7", Call(kFlashStopMethod), Call(kFlashStopMethod)}));

    controls.log.clear();
    ASSERT_EQ(e.OpenDispatch("D:\\歌.wma", 7, false), OpenResult::Playing);
    EXPECT_EQ(e.Length(), 42500);
    EXPECT_TRUE(e.Play("1500", ""));
    EXPECT_EQ(e.State().segmentEnd, 42500);
    controls.position = 3.25;
    EXPECT_TRUE(e.Pause());
    EXPECT_EQ(e.State().resumePosition, 3250);
    EXPECT_TRUE(e.Play("0", "") && e.Stop());  // continuing: the control's own play, no new position
    const std::string setStart = "set " + std::to_string(kPlayerPositionProperty) + " 15";
    EXPECT_EQ(controls.log, (Lines{"close", "open D:\\歌.wma in 7", setStart, Call(kPlayerPlayMethod),
                                   Call(kPlayerPauseMethod), Call(kPlayerPlayMethod), Call(kPlayerStopMethod)}));
    EXPECT_TRUE(e.Play("1000", "2000"));
    for (const auto& [at, mode] : {std::pair{1.99, "playing"}, {2.0, "stopped"}}) {
        controls.position = at;
        EXPECT_EQ(e.Mode(), mode);
    }
    EXPECT_EQ(controls.log.back(), Call(kPlayerStopMethod));
    EXPECT_EQ(mci.sent, (Lines{"Close All", "Close All"}));
}

// Decoder 2 speaks milliseconds; the engine frames (10001 in 400 s here) or milliseconds for audio.
TEST(EngineDecoder, TurnsMillisecondsIntoTheEnginesUnits) {
    RecordingMci mci;
    MediaEngine engine(mci);
    EngineDecoder d(engine, 7);
    d.SetHeadCheck([](const std::string& path) { return path != "D:\\bad.wav"; });
    EXPECT_FALSE(d.Open("D:\\bad.wav"));
    EXPECT_TRUE(mci.sent.empty());  // a refused head never reaches the system
    EXPECT_EQ(d.LengthMs(), -1);
    ASSERT_TRUE(d.Open("D:\\v.avi"));
    EXPECT_EQ(d.LengthMs(), 400000);
    mci.position = 5000;
    EXPECT_EQ(d.PositionMs(), 199980);
    const std::pair<std::function<bool()>, std::string> steps[] = {
        {[&] { return d.Seek(200000); }, "play movie1 from 5000 to 10001"},
        {[&] { return d.PlayRange(1000, 2000); }, "play movie1 from 25 to 50"},
        {[&] { return d.Seek(1000); }, "play movie1 from 25 to 50"},  // the range's end stays
        {[&] { return d.Pause(); }, "status movie1 position"},
        {[&] { return d.Resume(); }, "play movie1 from 5000 to 50"},
        {[&] { return d.PlayRange(0, -1); }, "play movie1 from 0 to 10001"},
        {[&] { return d.Seek(9'000'000'000'000'000'000LL); }, "play movie1 from 10001 to 10001"},  // no overflow
        {[&] { return d.SetSpeed(200); }, "set movie1 speed 2000"},
        {[&] { return d.SetVolume(10), true; }, "setaudio movie1 volume to 500"},
    };
    for (const auto& [run, sent] : steps) {
        EXPECT_TRUE(run()) << sent;
        EXPECT_EQ(mci.sent.back(), sent);
    }
    // A range's end: B reached, or the device standing still in the range's second half, though it says "playing".
    mci.replies["status movie1 mode"] = "playing";
    const auto opens = [&] { return std::count(mci.sent.begin(), mci.sent.end(), "Close All"); };
    const auto opensBefore = opens();
    for (const auto& [at, polls, finished] : {std::tuple{30, 3, false}, {50, 1, true}, {45, 1, false}, {45, 3, true}}) {
        ASSERT_TRUE(d.PlayRange(1000, 2000));
        mci.position = at;
        bool said = false;
        for (int i = 0; i < polls; ++i) said = d.Finished();
        EXPECT_EQ(said, finished) << at;
    }
    ASSERT_TRUE(d.PlayRange(0, -1));
    EXPECT_EQ(opens(), opensBefore + 2);  // a range played again after its end starts on the file opened anew

    // A seek while paused stays paused at the new place.
    ASSERT_TRUE(d.Pause());
    ASSERT_TRUE(d.Seek(400000));
    EXPECT_EQ(Lines(mci.sent.end() - 3, mci.sent.end() - 1),
              (Lines{"play movie1 from 10001 to 10001", "Pause movie1"}));
    EXPECT_FALSE(d.Finished());  // paused: never the end
    ASSERT_TRUE(d.Resume());
    for (const auto& [mode, finished] : {std::pair{"stopped", true}, {"playing", false}, {"", false}}) {
        mci.replies["status movie1 mode"] = mode;
        EXPECT_EQ(d.Finished(), finished) << mode;
    }

    EXPECT_FALSE(d.Open("D:\\f.swf"));  // no hosted controls here
    EXPECT_EQ(d.LengthMs(), -1);
    mci.lengthFrames = mci.lengthMs = 0;  // the device "opens" what it cannot play: nothing to play
    EXPECT_FALSE(d.Open("D:\\zeros.mp3"));
    EXPECT_EQ(mci.sent.back(), "Close All");
}

// A still picture stays kPictureShowMs on a time line of its own and waits while paused; a Flash movie
// ends when its control says it no longer plays, or after a picture's time when the control says nothing.
TEST(EngineDecoder, PicturesAndMoviesInControlsComeToAnEnd) {
    RecordingMci mci;
    FakeControls controls;
    MediaEngine engine(mci);
    engine.SetControls(&controls);
    std::uint32_t now = 0xFFFFF000u;  // the tick count about to wrap
    EngineDecoder d(engine, 7, [&] { return now; });
    const auto finishedAfter = [&](std::uint32_t ms) { return now += ms, d.Finished(); };
    ASSERT_TRUE(d.Open("D:\\照片.jpg"));
    EXPECT_EQ(d.LengthMs(), kPictureShowMs);
    now += 2000;
    ASSERT_TRUE(d.Pause());
    EXPECT_FALSE(finishedAfter(60000));
    ASSERT_TRUE(d.Resume());
    EXPECT_FALSE(finishedAfter(kPictureShowMs - 2001));
    EXPECT_EQ(d.PositionMs(), kPictureShowMs - 1);
    EXPECT_TRUE(finishedAfter(1));

    ASSERT_TRUE(d.Open("D:\\片头.swf"));
    for (const auto& [playing, finished] : {std::pair{std::optional(1.0), false}, {std::optional(0.0), true},
                                            {std::optional<double>(), false}}) {
        controls.playing = playing;
        EXPECT_EQ(d.Finished(), finished);
    }
    EXPECT_TRUE(finishedAfter(kPictureShowMs));
}

}  // namespace
}  // namespace lumora
