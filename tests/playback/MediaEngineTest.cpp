#include <gtest/gtest.h>

#include <functional>
#include <map>

#include "playback/EngineDecoder.h"
#include "playback/MediaEngine.h"

namespace lumora {
namespace {

using Lines = std::vector<std::string>;

// Records every command; answers from a table of replies and error codes. The movie is 10001 frames or
// 400 s long, in whichever time format was set last.
class RecordingMci : public MciPort {
public:
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
        if (path.find("missing") != std::string::npos) return std::nullopt;
        if (path.find("long") != std::string::npos) return path;  // a volume without short names
        return "C:\\SHORT~1\\" + path.substr(path.find_last_of('\\') + 1);
    }
    PixelRect WindowRect(WindowId) override { return {10, 20, 640, 480}; }

    Lines sent;
    std::map<std::string, std::string> replies;
    std::map<std::string, unsigned long> errors;
    std::string format = "frames";
    long long lengthFrames = 10001;
    long long lengthMs = 400000;
    long long position = 0;
};

TEST(MciCommands, EachCommandItsTextAndItsAnswer) {
    RecordingMci mci;
    mci.errors["Pause movie1"] = 263;
    mci.replies["Where movie1 destination"] = "0 0 352 288";
    MciCommands c(mci);
    const std::string style = " type MPEGVideo Alias movie1 parent 7 Style " + std::string(kChildStyle);
    const Lines answers = {
        c.OpenDevice(7, "movie1", "MPEGVideo", "D:\\My Music\\a.mp3"), c.OpenDevice(7, "movie1", "MPEGVideo", "D:\\long name.mp3"),
        c.OpenDevice(7, "movie1", "MPEGVideo", "D:\\missing.mp3"),      c.PlaySegment("movie1", "10", "20"),
        c.PlaySegment("movie1", "", ""),                                 c.Pause("movie1"),
        c.Stop("movie1"),                                                c.PlacePicture(1, "movie1", 1, 2, 320, 240),
        c.PlacePicture(1, "movie1", 0, 0, 320, 0),                       c.PlacePicture(1, "movie1", 0, 0, 0, 240),
        c.SetSpeed("movie1", 150),                                       c.CloseAll(),
    };
    Lines expected(12, std::string(kSuccess));
    expected[5] = "error 263";
    EXPECT_EQ(answers, expected);
    EXPECT_EQ(mci.sent, (Lines{"open C:\\SHORT~1\\a.mp3" + style, "open \"D:\\long name.mp3\"" + style, "open " + style,
                               "play movie1 from 10 to 20", "set movie1 time format frames", "status movie1 length",
                               "play movie1 from 0 to 10001", "Pause movie1", "Stop movie1",
                               "put movie1 window at 1 2 320 240", "put movie1 window at 0 0 640 480",
                               "put movie1 window at 0 0 640 480", "set movie1 speed 1500", "Close All"}));

    EXPECT_EQ(c.LengthMs("movie1"), 400000);
    EXPECT_EQ(mci.format, "frames");  // put back for every other command
    EXPECT_EQ(c.FrameRate("movie1"), 25);  // 10001 frames in 400 s, rounded
    mci.lengthFrames = 10201;
    EXPECT_EQ(c.FrameRate("movie1"), 26);
    EXPECT_EQ(c.PictureSize("movie1", "cx"), 352);
    EXPECT_EQ(c.PictureSize("movie1", "CY"), 288);
    EXPECT_EQ(c.PictureSize("movie1", "x"), -1);
    mci.position = 345;
    EXPECT_EQ(c.Position("movie1"), 345);  // the device's trailing blanks are no part of the number
    mci.replies["Where movie1 destination"] = "0 0 352";
    EXPECT_EQ(c.PictureSize("movie1", "cy"), -1);
    mci.lengthMs = 0;
    EXPECT_EQ(c.FrameRate("movie1"), -1);  // never divided by a zero length
    for (const char* failing : {"status movie1 position", "set movie1 time format frames", "status movie1 length"}) {
        RecordingMci broken;
        broken.errors[failing] = 263;
        MciCommands b(broken);
        const bool position = std::string(failing) == "status movie1 position";
        EXPECT_EQ(b.Position("movie1") == -1, position) << failing;
        EXPECT_EQ(b.LengthFrames("movie1") == -1, !position) << failing;
        EXPECT_EQ(b.FrameRate("movie1") == -1, !position) << failing;
    }
}

class FakeControls : public ControlPort {
public:
    bool Available(HostedControl control) override {
        return installed && (control == HostedControl::Flash || mediaPlayer);
    }
    bool Open(HostedControl, const std::string& path, WindowId window) override {
        log.push_back("open " + path + " in " + std::to_string(window));
        return opens;
    }
    bool Call(int id) override {
        log.push_back("call " + std::to_string(id));
        return callsWork;
    }
    std::optional<double> Number(int id) override {
        return id == kPlayerPositionProperty ? std::optional<double>(position) : std::nullopt;
    }
    bool SetNumber(int id, double value) override {
        log.push_back("set " + std::to_string(id) + " " + std::to_string(static_cast<int>(value * 10)));
        return true;
    }
    std::optional<double> NumberByName(const std::string& name) override {
        if (name == "Duration") return 42.5;
        if (name == "PlayState") return playState;
        return std::nullopt;
    }
    void Close() override { log.push_back("close"); }

    bool installed = true;
    bool mediaPlayer = false;
    bool opens = true;
    bool callsWork = true;
    double position = 0;
    double playState = 2;
    Lines log;
};

std::string Call(int id) { return "call " + std::to_string(id); }

// Every open closes everything first, then the ending (in any case) picks the player, the device type and
// whether the picture is looked for.
TEST(MediaEngine, OpenDispatchByEndingAndInstalledControls) {
    const struct {
        const char* path;
        bool decoder1, flash, mediaPlayer;
        OpenResult result;
        MediaKind kind;
        const char* device;  // the open command's device type; "" when MCI opens nothing
    } cases[] = {
        {"D:\\a.mp3", true, true, true, OpenResult::ForDecoder1, MediaKind::None, ""},
        {"D:\\a.MP2", true, true, true, OpenResult::ForDecoder1, MediaKind::None, ""},
        {"D:\\a.mp1", true, true, true, OpenResult::ForDecoder1, MediaKind::None, ""},
        {"D:\\a.mp3", false, true, true, OpenResult::Playing, MediaKind::Mci, "MPEGVideo"},
        {"D:\\v.AVI", false, true, true, OpenResult::Playing, MediaKind::Mci, "AviVideo"},
        {"D:\\m.mid", false, true, true, OpenResult::Playing, MediaKind::Mci, "Sequencer"},
        {"D:\\m.midi", false, true, true, OpenResult::Playing, MediaKind::Mci, "MPEGVideo"},
        {"D:\\d.VOB", false, true, true, OpenResult::Playing, MediaKind::Mci, "MPEGVideo"},
        {"D:\\avi", false, true, true, OpenResult::Playing, MediaKind::Mci, "MPEGVideo"},
        {"D:\\t.cda", false, true, true, OpenResult::CdTrack, MediaKind::None, ""},
        {"D:\\f.SWF", false, true, true, OpenResult::Control, MediaKind::Flash, ""},
        {"D:\\f.spl", false, true, true, OpenResult::Control, MediaKind::Flash, ""},
        {"D:\\f.swf", false, false, false, OpenResult::CannotPlay, MediaKind::None, ""},
        {"D:\\歌.WMA", false, true, true, OpenResult::Playing, MediaKind::MediaPlayer, ""},
        {"D:\\v.wmv", false, true, false, OpenResult::Playing, MediaKind::Mci, "MPEGVideo"},
        {"D:\\p.wpl", false, true, true, OpenResult::Playing, MediaKind::MediaPlayer, ""},
        {".wma", false, true, true, OpenResult::Playing, MediaKind::MediaPlayer, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        RecordingMci mci;
        FakeControls controls;
        controls.installed = c.flash;
        controls.mediaPlayer = c.mediaPlayer;
        MediaEngine e(mci);
        e.SetControls(&controls);
        EXPECT_EQ(e.OpenDispatch(c.path, 7, c.decoder1), c.result);
        EXPECT_EQ(e.Kind(), c.kind);
        EXPECT_EQ(mci.sent.front(), "Close All");
        EXPECT_EQ(controls.log.front(), "close");
        const bool opened = mci.sent.size() > 1;
        EXPECT_EQ(opened, *c.device != '\0');
        if (opened) {
            EXPECT_NE(mci.sent[1].find(std::string(" type ") + c.device + " "), std::string::npos);
        }
    }
    const std::string pictures[] = {"b.bmp", "b.JPG", "b.dib", "b.wmf", "b.emf", "b.ico", "b.cur"};
    for (const auto& name : pictures) {
        RecordingMci mci;
        MediaEngine e(mci);
        EXPECT_EQ(e.OpenDispatch("D:\\" + name, 7, false), OpenResult::Picture) << name;
        EXPECT_EQ(e.Kind(), MediaKind::Picture);
        EXPECT_EQ(mci.sent, Lines{"Close All"});
        EXPECT_TRUE(e.Pause());
        EXPECT_FALSE(e.Stop());
    }
    RecordingMci mci;
    MediaEngine without(mci);  // no controls at all
    EXPECT_EQ(without.OpenDispatch("D:\\a.swf", 7, false), OpenResult::CannotPlay);
    FakeControls refusing;
    refusing.opens = false;
    without.SetControls(&refusing);
    EXPECT_EQ(without.OpenDispatch("D:\\a.swf", 7, false), OpenResult::CannotPlay);
    mci.errors["open C:\\SHORT~1\\v.avi type AviVideo Alias movie1 parent 7 Style " + std::string(kChildStyle)] = 275;
    EXPECT_EQ(without.OpenDispatch("D:\\v.avi", 7, false), OpenResult::CannotPlay);
    mci.errors = {{"play movie1 from 0 to 10001", 263}};
    EXPECT_EQ(without.OpenDispatch("D:\\v.avi", 7, false), OpenResult::CannotPlay);
    EXPECT_EQ(without.OpenDispatch("D:\\m.mid", 7, false), OpenResult::CannotPlay);
}

TEST(MediaEngine, VideoAndAudioAfterOpening) {
    RecordingMci mci;
    mci.replies["Where movie1 destination"] = "0 0 352 288";
    MediaEngine e(mci);
    ASSERT_EQ(e.OpenDispatch("D:\\v.mpg", 3, false), OpenResult::Playing);
    EXPECT_EQ(std::tuple(e.Picture().left, e.Picture().top, e.Picture().width, e.Picture().height),
              std::tuple(0L, 0L, 352L, 288L));
    EXPECT_EQ(e.Info().lines, (Lines{"该媒体文件为视频", "画面原始大小(X)：352  (Y)：288",
                                     "画面实际大小(X)：352  (Y)：288", "总帧数：10001  帧速率：25"}));
    EXPECT_NE(std::find(mci.sent.begin(), mci.sent.end(), "put movie1 window at 0 0 640 480"), mci.sent.end());
    EXPECT_EQ(e.State().positionStep, 2);
    EXPECT_EQ(e.State().segmentEnd, 10001);

    RecordingMci audio;
    audio.replies["Where movie1 destination"] = "0 0 0 288";
    MediaEngine a(audio);
    ASSERT_EQ(a.OpenDispatch("D:\\s.wav", 3, false), OpenResult::Playing);
    EXPECT_EQ(a.Info().lines, Lines{"该媒体文件为音频"});
    EXPECT_EQ(a.Picture().width, 0);
    bool cdClosed = false;
    a.onCloseCd = [&] { cdClosed = true; };
    a.CloseAll();
    EXPECT_TRUE(cdClosed);
    EXPECT_TRUE(a.Info().lines.empty());
    EXPECT_EQ(a.State().segmentEnd, 0);
    EXPECT_EQ(a.Kind(), MediaKind::None);
    EXPECT_FALSE(a.Pause());
    EXPECT_EQ(a.Position(), -1);
    EXPECT_EQ(a.Mode(), "");
}

TEST(MediaEngine, PositionStepSpeedAndFailedCommands) {
    const std::pair<long long, long long> steps[] = {{4999, 1}, {5000, 1}, {10001, 2}, {25000, 5}};
    for (const auto& [frames, step] : steps) {
        RecordingMci mci;
        mci.lengthFrames = frames;
        MediaEngine e(mci);
        ASSERT_TRUE(e.OpenMedia("D:\\v.avi", 1));
        EXPECT_EQ(e.State().positionStep, step) << frames;
    }
    RecordingMci mci;
    MediaEngine e(mci);
    ASSERT_TRUE(e.OpenMedia("D:\\v.avi", 1));
    ASSERT_TRUE(e.Play("100", "900"));
    EXPECT_EQ(e.State().segmentStart, 100);
    EXPECT_EQ(e.State().segmentEnd, 900);
    const size_t before = mci.sent.size();
    EXPECT_TRUE(e.SetSpeed(150, true));
    EXPECT_FALSE(e.SetSpeed(150, true));  // unchanged: not sent again
    EXPECT_FALSE(e.SetSpeed(50, false));  // not allowed now
    EXPECT_EQ(mci.sent.size(), before + 1);
    EXPECT_TRUE(e.PlacePicture(1, PixelRect{1, 2, 3, 4}));
    EXPECT_EQ(mci.sent.back(), "put movie1 window at 1 2 3 4");
    mci.errors = {{"Pause movie1", 263}, {"Stop movie1", 263}, {"play movie1 from 1 to 2", 263}};
    EXPECT_FALSE(e.Pause());
    EXPECT_FALSE(e.Stop());
    EXPECT_FALSE(e.Play("1", "2"));
}

// Flash: pause and stop are the control's one stop method. Windows Media: play, pause and stop methods and
// a position property in seconds; a play range ends where it was asked to, though the control plays on.
TEST(MediaEngine, HostedControlsPlayTheirFiles) {
    RecordingMci mci;
    FakeControls controls;
    controls.mediaPlayer = true;
    MediaEngine e(mci);
    e.SetControls(&controls);
    ASSERT_EQ(e.OpenDispatch("D:\\片头.swf", 7, false), OpenResult::Control);
    EXPECT_TRUE(e.Pause());
    EXPECT_TRUE(e.State().paused);
    EXPECT_TRUE(e.Stop());
    EXPECT_EQ(controls.log, (Lines{"close", "open D:\\片头.swf in 7", Call(kFlashStopMethod), Call(kFlashStopMethod)}));

    controls.log.clear();
    ASSERT_EQ(e.OpenDispatch("D:\\歌.wma", 7, false), OpenResult::Playing);
    EXPECT_EQ(e.Length(), 42500);
    EXPECT_TRUE(e.State().unitIsMs);
    EXPECT_TRUE(e.Play("1500", ""));
    EXPECT_EQ(e.State().segmentEnd, 42500);
    controls.position = 3.25;
    EXPECT_EQ(e.Position(), 3250);
    EXPECT_EQ(e.Mode(), "playing");
    EXPECT_TRUE(e.Pause());
    EXPECT_EQ(e.State().resumePosition, 3250);
    EXPECT_EQ(e.Mode(), "paused");
    EXPECT_TRUE(e.Play("0", ""));  // continuing: the control's own play, no new position
    EXPECT_TRUE(e.Stop());
    const std::string setStart = "set " + std::to_string(kPlayerPositionProperty) + " 15";
    EXPECT_EQ(controls.log, (Lines{"close", "open D:\\歌.wma in 7", setStart, Call(kPlayerPlayMethod),
                                   Call(kPlayerPauseMethod), Call(kPlayerPlayMethod), Call(kPlayerStopMethod)}));
    controls.playState = 1;
    EXPECT_EQ(e.Mode(), "paused");
    controls.playState = 0;
    EXPECT_EQ(e.Mode(), "stopped");
    controls.playState = 2;
    EXPECT_TRUE(e.Play("1000", "2000"));
    controls.position = 1.99;
    EXPECT_EQ(e.Mode(), "playing");
    controls.position = 2.0;
    EXPECT_EQ(e.Mode(), "stopped");
    EXPECT_EQ(controls.log.back(), Call(kPlayerStopMethod));
    controls.position = 0;
    EXPECT_EQ(e.Position(), 0);
    controls.position = -1;
    EXPECT_EQ(e.Position(), -1);
    controls.callsWork = false;
    EXPECT_FALSE(e.Pause());
    EXPECT_FALSE(e.Play("0", ""));
    EXPECT_EQ(mci.sent, (Lines{"Close All", "Close All"}));
}

// Decoder 2 speaks milliseconds; the engine frames (10001 in 400 s here) or milliseconds for audio.
TEST(EngineDecoder, TurnsMillisecondsIntoTheEnginesUnits) {
    RecordingMci mci;
    mci.replies["Where movie1 destination"] = "0 0 352 288";
    MediaEngine engine(mci);
    EngineDecoder d(engine, 7);
    EXPECT_EQ(d.LengthMs(), -1);
    ASSERT_TRUE(d.Open("D:\\v.avi"));
    EXPECT_EQ(d.LengthMs(), 400000);
    mci.position = 5000;
    EXPECT_EQ(d.PositionMs(), 199980);
    const struct {
        std::function<bool()> run;
        std::string sent;
    } steps[] = {
        {[&] { return d.Seek(200000); }, "play movie1 from 5000 to 10001"},
        {[&] { return d.Seek(-5); }, "play movie1 from 0 to 10001"},
        {[&] { return d.PlayRange(1000, 2000); }, "play movie1 from 25 to 50"},
        {[&] { return d.Seek(1000); }, "play movie1 from 25 to 50"},  // the range's end stays
        {[&] { return d.Pause(); }, "status movie1 position"},
        {[&] { return d.Resume(); }, "play movie1 from 5000 to 50"},
        {[&] { return d.PlayRange(0, -1); }, "play movie1 from 0 to 10001"},
        {[&] { return d.Resume(); }, "play movie1 from 0 to 10001"},
        {[&] { return d.SetSpeed(200); }, "set movie1 speed 2000"},
    };
    for (const auto& s : steps) {
        EXPECT_TRUE(s.run()) << s.sent;
        EXPECT_EQ(mci.sent.back(), s.sent);
    }
    const size_t sent = mci.sent.size();
    EXPECT_TRUE(d.SetSpeed(200));  // already at that speed
    EXPECT_EQ(mci.sent.size(), sent);

    // A seek while paused stays paused at the new place.
    ASSERT_TRUE(d.Pause());
    ASSERT_TRUE(d.Seek(400000));
    EXPECT_EQ(mci.sent[mci.sent.size() - 3], "play movie1 from 10001 to 10001");
    EXPECT_EQ(mci.sent[mci.sent.size() - 2], "Pause movie1");
    EXPECT_FALSE(d.Finished());  // paused: never the end
    ASSERT_TRUE(d.Resume());
    for (const auto& [mode, finished] : {std::pair{"stopped", true}, {"playing", false}, {"", false}}) {
        mci.replies["status movie1 mode"] = mode;
        EXPECT_EQ(d.Finished(), finished) << mode;
    }
    d.Stop();
    EXPECT_EQ(mci.sent.back(), "Stop movie1");
    mci.errors["status movie1 position"] = 263;
    EXPECT_EQ(d.PositionMs(), -1);
    mci.errors["play movie1 from 0 to 10001"] = 263;
    EXPECT_FALSE(d.Seek(0));
    d.Close();
    EXPECT_EQ(mci.sent.back(), "Close All");

    RecordingMci audio;
    audio.lengthFrames = 0;
    audio.lengthMs = 5000;
    MediaEngine audioEngine(audio);
    EngineDecoder a(audioEngine, 7);
    ASSERT_TRUE(a.Open("D:\\a.wav"));
    EXPECT_EQ(a.LengthMs(), 5000);
    ASSERT_TRUE(a.Seek(1234));
    EXPECT_EQ(audio.sent.back(), "play movie1 from 1234 to 5000");
    audio.position = 777;
    EXPECT_EQ(a.PositionMs(), 777);
    EXPECT_FALSE(a.Open("D:\\missing.swf"));
    EXPECT_EQ(a.LengthMs(), -1);
}

// Pictures and Flash movies are shown, not played on a time line.
TEST(EngineDecoder, WhatHasNoTimeLine) {
    RecordingMci mci;
    FakeControls controls;
    MediaEngine engine(mci);
    engine.SetControls(&controls);
    EngineDecoder d(engine, 7);
    for (const char* path : {"D:\\b.jpg", "D:\\f.swf"}) {
        SCOPED_TRACE(path);
        ASSERT_TRUE(d.Open(path));
        const size_t sent = mci.sent.size();
        EXPECT_EQ(d.LengthMs(), 0);
        EXPECT_EQ(d.PositionMs(), 0);
        EXPECT_FALSE(d.Seek(10));
        EXPECT_FALSE(d.PlayRange(0, 10));
        EXPECT_FALSE(d.SetSpeed(150));
        EXPECT_TRUE(d.Resume());
        mci.replies["status movie1 mode"] = "stopped";
        EXPECT_FALSE(d.Finished());
        EXPECT_EQ(mci.sent.size(), sent);
    }
    ASSERT_TRUE(d.Open("D:\\v.avi"));  // a file with a time line again
    EXPECT_EQ(d.LengthMs(), 400000);
    EXPECT_TRUE(d.Finished());
}

}  // namespace
}  // namespace lumora
