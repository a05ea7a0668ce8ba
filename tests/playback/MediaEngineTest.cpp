#include <gtest/gtest.h>

#include <deque>
#include <map>

#include "playback/MediaEngine.h"

namespace lumora {
namespace {

// Records every command; answers from a table of replies and error codes.
class RecordingMci : public MciPort {
public:
    unsigned long Send(const std::string& command, std::string* reply) override {
        sent.push_back(command);
        if (const auto it = errors.find(command); it != errors.end()) return it->second;
        if (reply) {
            const auto it = replies.find(command);
            *reply = it == replies.end() ? std::string() : it->second;
        }
        if (command.rfind("set movie1 time format ", 0) == 0) format = command.substr(23);
        if (command == "status movie1 length") {
            if (reply) *reply = format == "ms" ? std::to_string(lengthMs) : std::to_string(lengthFrames);
        }
        if (command == "status movie1 position" && reply) *reply = std::to_string(position);
        return 0;
    }
    std::string ErrorText(unsigned long error) override { return "error " + std::to_string(error); }
    std::optional<std::string> ShortPath(const std::string& path) override {
        if (noShortName) return path;
        if (path.find("missing") != std::string::npos) return std::nullopt;
        return "C:\\SHORT~1\\" + path.substr(path.find_last_of('\\') + 1);
    }
    PixelRect WindowRect(WindowId) override { return {10, 20, 640, 480}; }

    std::vector<std::string> sent;
    std::map<std::string, std::string> replies;
    std::map<std::string, unsigned long> errors;
    std::string format = "frames";
    long long lengthFrames = 10001;
    long long lengthMs = 400000;
    long long position = 0;
    bool noShortName = false;
};

TEST(MciCommands, CommandTextsExactly) {
    RecordingMci mci;
    MciCommands c(mci);
    EXPECT_EQ(c.OpenDevice(1234, "movie1", "MPEGVideo", "D:\\My Music\\a.mp3"), "Success");
    EXPECT_EQ(c.PlaySegment("movie1", "10", "20"), "Success");
    EXPECT_EQ(c.Pause("movie1"), "Success");
    EXPECT_EQ(c.Stop("movie1"), "Success");
    EXPECT_EQ(c.PlacePicture(1, "movie1", 0, 0, 320, 240), "Success");
    EXPECT_EQ(c.SetSpeed("movie1", 150), "Success");
    EXPECT_EQ(c.CloseAll(), "Success");
    const std::vector<std::string> expected = {
        "open C:\\SHORT~1\\a.mp3 type MPEGVideo Alias movie1 parent 1234 Style 1073741824",
        "play movie1 from 10 to 20",
        "Pause movie1",
        "Stop movie1",
        "put movie1 window at 0 0 320 240",
        "set movie1 speed 1500",
        "Close All",
    };
    EXPECT_EQ(mci.sent, expected);
}

TEST(MciCommands, ErrorsGiveTheSystemTextAndMinusOne) {
    RecordingMci mci;
    mci.errors["Pause movie1"] = 263;
    mci.errors["status movie1 position"] = 263;
    mci.errors["set movie1 time format frames"] = 263;
    MciCommands c(mci);
    EXPECT_EQ(c.Pause("movie1"), "error 263");
    EXPECT_EQ(c.Position("movie1"), -1);
    EXPECT_EQ(c.LengthFrames("movie1"), -1);
    EXPECT_EQ(c.FrameRate("movie1"), -1);  // never computed from a -1
}

TEST(MciCommands, LengthInMillisecondsLeavesTheDeviceInFrames) {
    RecordingMci mci;
    MciCommands c(mci);
    EXPECT_EQ(c.LengthMs("movie1"), 400000);
    EXPECT_EQ(mci.format, "frames");
    EXPECT_EQ(c.LengthFrames("movie1"), 10001);
    EXPECT_EQ(c.FrameRate("movie1"), 25);  // 10001 / 400 s, rounded
}

TEST(MciCommands, EmptySegmentPlaysTheWholeFile) {
    RecordingMci mci;
    MciCommands c(mci);
    c.PlaySegment("movie1", "", "");
    EXPECT_EQ(mci.sent.back(), "play movie1 from 0 to 10001");
}

TEST(MciCommands, PictureSizeAndWindowFill) {
    RecordingMci mci;
    mci.replies["Where movie1 destination"] = "0 0 352 288";
    MciCommands c(mci);
    EXPECT_EQ(c.PictureSize("movie1", "cx"), 352);
    EXPECT_EQ(c.PictureSize("movie1", "CY"), 288);
    c.PlacePicture(7, "movie1", 0, 0, 0, 0);
    EXPECT_EQ(mci.sent.back(), "put movie1 window at 0 0 640 480");
}

TEST(MciCommands, PathsWithoutShortNamesAreQuotedAndMissingOnesSentEmpty) {
    RecordingMci mci;
    MciCommands c(mci);
    c.OpenDevice(1, "movie1", "MPEGVideo", "D:\\missing file.mp3");
    EXPECT_EQ(mci.sent.back(), "open  type MPEGVideo Alias movie1 parent 1 Style 1073741824");
    mci.noShortName = true;
    c.OpenDevice(1, "movie1", "MPEGVideo", "D:\\My Music\\a.mp3");
    EXPECT_EQ(mci.sent.back().substr(0, 30), "open \"D:\\My Music\\a.mp3\" type ");
}

TEST(MediaEngine, DeviceTypeByEnding) {
    const std::pair<const char*, const char*> cases[] = {
        {"a.avi", "AviVideo"},  {"A.AVI", "AviVideo"},  {"x.mid", "Sequencer"},  {"X.MID", "Sequencer"},
        {"d.VOB", "MPEGVideo"}, {"s.mp3", "MPEGVideo"}, {"m.midi", "MPEGVideo"}, {"avi", "MPEGVideo"},
    };
    for (const auto& [path, type] : cases) EXPECT_EQ(DeviceTypeFor(path), type) << path;
}

TEST(MediaEngine, PositionStepFromTheLength) {
    const std::pair<long long, long long> cases[] = {{4999, 1}, {5000, 1}, {10001, 2}, {25000, 5}};
    for (const auto& [frames, step] : cases) {
        RecordingMci mci;
        mci.lengthFrames = frames;
        MediaEngine e(mci);
        ASSERT_TRUE(e.OpenMedia("D:\\v.avi", 1));
        EXPECT_EQ(e.State().positionStep, step) << frames;
    }
}

TEST(MediaEngine, PauseThenPlayContinuesFromThePausedFrame) {
    RecordingMci mci;
    MediaEngine e(mci);
    ASSERT_TRUE(e.OpenMedia("D:\\v.avi", 1));
    ASSERT_TRUE(e.Play("100", "900"));
    EXPECT_EQ(e.State().segmentStart, 100);
    EXPECT_EQ(e.State().segmentEnd, 900);
    mci.position = 345;
    ASSERT_TRUE(e.Pause());
    EXPECT_TRUE(e.State().paused);
    ASSERT_TRUE(e.Play("100", "900"));
    EXPECT_EQ(mci.sent.back(), "play movie1 from 345 to 900");
    EXPECT_FALSE(e.State().paused);
}

TEST(MediaEngine, SameSpeedIsSentOnce) {
    RecordingMci mci;
    MediaEngine e(mci);
    ASSERT_TRUE(e.OpenMedia("D:\\v.avi", 1));
    const size_t before = mci.sent.size();
    EXPECT_TRUE(e.SetSpeed(150, true));
    EXPECT_FALSE(e.SetSpeed(150, true));
    EXPECT_FALSE(e.SetSpeed(50, false));  // not allowed now
    EXPECT_EQ(mci.sent.size(), before + 1);
}

TEST(MediaEngine, CloseAllResetsTheState) {
    RecordingMci mci;
    MediaEngine e(mci);
    bool cdClosed = false;
    e.onCloseCd = [&] { cdClosed = true; };
    ASSERT_TRUE(e.OpenMedia("D:\\v.avi", 1));
    e.Play("5", "10");
    e.CloseAll();
    EXPECT_TRUE(cdClosed);
    EXPECT_EQ(e.State().segmentStart, 0);
    EXPECT_EQ(mci.sent.back(), "Close All");
}

TEST(MediaEngine, AudioWithoutFramesIsKeptInMilliseconds) {
    RecordingMci mci;
    mci.lengthFrames = 0;  // what the MPEG device answers for a file without pictures
    mci.lengthMs = 5000;
    MediaEngine e(mci);
    ASSERT_TRUE(e.OpenMedia("D:\\a.mp3", 1));
    EXPECT_TRUE(e.State().unitIsMs);
    EXPECT_EQ(e.Length(), 5000);
    EXPECT_EQ(mci.format, "ms");
    ASSERT_TRUE(e.Play("", ""));
    EXPECT_EQ(mci.sent.back(), "play movie1 from 0 to 5000");
}

TEST(MediaEngine, OpenDispatchByExtension) {
    struct Case {
        const char* path;
        bool decoder1;
        OpenResult result;
    } cases[] = {
        {"D:\\a.mp3", true, OpenResult::ForDecoder1}, {"D:\\a.MP2", true, OpenResult::ForDecoder1},
        {"D:\\a.mp3", false, OpenResult::Playing},    {"D:\\b.jpg", false, OpenResult::Picture},
        {"D:\\t.cda", false, OpenResult::CdTrack},    {"D:\\f.swf", false, OpenResult::CannotPlay},
        {"D:\\m.mid", false, OpenResult::Playing},    {"D:\\v.avi", false, OpenResult::Playing},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        RecordingMci mci;
        MediaEngine e(mci);
        EXPECT_EQ(e.OpenDispatch(c.path, 1, c.decoder1), c.result);
        EXPECT_EQ(mci.sent.front(), "Close All");  // every open closes everything first
    }
    RecordingMci mci;
    mci.errors["open C:\\SHORT~1\\v.avi type AviVideo Alias movie1 parent 1 Style 1073741824"] = 275;
    MediaEngine e(mci);
    EXPECT_EQ(e.OpenDispatch("D:\\v.avi", 1, false), OpenResult::CannotPlay);
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
        return true;
    }
    std::optional<double> Number(int id) override {
        if (id == kPlayerPositionProperty) return position;
        return std::nullopt;
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
    double position = 0;
    double playState = 2;
    bool opens = true;
    std::vector<std::string> log;
};

// A Flash movie goes to the hosted control, never to MCI; its pause and stop are the control's
// method 113; without the control it cannot be played.
TEST(MediaEngine, FlashMoviesGoToTheHostedControl) {
    RecordingMci mci;
    FakeControls controls;
    MediaEngine e(mci);
    e.SetControls(&controls);
    EXPECT_EQ(e.OpenDispatch("D:\\片头.SWF", 7, false), OpenResult::Control);
    EXPECT_EQ(e.Kind(), MediaKind::Flash);
    EXPECT_EQ(mci.sent, (std::vector<std::string>{"Close All"}));
    EXPECT_TRUE(e.Pause());
    EXPECT_TRUE(e.State().paused);
    EXPECT_TRUE(e.Stop());
    EXPECT_EQ(controls.log, (std::vector<std::string>{"close", "open D:\\片头.SWF in 7", "call 113", "call 113"}));
    e.CloseAll();
    EXPECT_EQ(controls.log.back(), "close");
    EXPECT_EQ(e.Kind(), MediaKind::None);

    controls.installed = false;
    EXPECT_EQ(e.OpenDispatch("D:\a.spl", 7, false), OpenResult::CannotPlay);
    controls.installed = true;
    controls.opens = false;
    EXPECT_EQ(e.OpenDispatch("D:\a.swf", 7, false), OpenResult::CannotPlay);
    MediaEngine without(mci);
    EXPECT_EQ(without.OpenDispatch("D:\a.swf", 7, false), OpenResult::CannotPlay);
}

// Windows Media goes to the Media Player control where it is installed: its methods 2001-2003
// play, pause and stop, its property 1027 is the position in seconds; elsewhere MCI plays it.
TEST(MediaEngine, WindowsMediaGoesToTheMediaPlayerControlWhereInstalled) {
    RecordingMci mci;
    FakeControls controls;
    controls.mediaPlayer = true;
    MediaEngine e(mci);
    e.SetControls(&controls);
    EXPECT_EQ(e.OpenDispatch("D:\\歌.WMA", 7, false), OpenResult::Playing);
    EXPECT_EQ(e.Kind(), MediaKind::MediaPlayer);
    EXPECT_EQ(e.Length(), 42500);
    EXPECT_TRUE(e.State().unitIsMs);
    EXPECT_TRUE(e.Play("1500", ""));
    controls.position = 3.25;
    EXPECT_EQ(e.Position(), 3250);
    EXPECT_EQ(e.Mode(), "playing");
    EXPECT_TRUE(e.Pause());
    EXPECT_EQ(e.State().resumePosition, 3250);
    EXPECT_TRUE(e.Play("0", ""));  // continuing: the control's own play, no new position
    EXPECT_TRUE(e.Stop());
    EXPECT_EQ(controls.log, (std::vector<std::string>{"close", "open D:\\歌.WMA in 7", "set 1027 15", "call 2001",
                                                      "call 2002", "call 2001", "call 2003"}));
    controls.playState = 0;
    EXPECT_EQ(e.Mode(), "stopped");
    EXPECT_EQ(mci.sent, (std::vector<std::string>{"Close All"}));

    // A play range ends where it was asked to, though the control plays on by itself.
    controls.playState = 2;
    controls.log.clear();
    EXPECT_TRUE(e.Play("1000", "2000"));
    controls.position = 2.0;
    EXPECT_EQ(e.Mode(), "stopped");
    EXPECT_EQ(controls.log.back(), "call 2003");

    controls.mediaPlayer = false;
    RecordingMci other;
    MediaEngine plain(other);
    plain.SetControls(&controls);
    EXPECT_EQ(plain.OpenDispatch("D:\\v.wmv", 7, false), OpenResult::Playing);
    EXPECT_EQ(plain.Kind(), MediaKind::Mci);
}

TEST(MediaEngine, VideoInformationLines) {
    RecordingMci mci;
    mci.replies["Where movie1 destination"] = "0 0 352 288";
    MediaEngine e(mci);
    ASSERT_EQ(e.OpenDispatch("D:\\v.mpg", 1, false), OpenResult::Playing);
    ASSERT_GE(e.Info().lines.size(), 2u);
    EXPECT_EQ(e.Info().lines[1], "画面原始大小(X)：352  (Y)：288");
    RecordingMci audio;
    MediaEngine a(audio);
    ASSERT_EQ(a.OpenDispatch("D:\\s.wav", 1, false), OpenResult::Playing);
}

}  // namespace
}  // namespace lumora
