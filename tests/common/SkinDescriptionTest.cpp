#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <set>
#include <sstream>

#include "common/SkinDescription.h"
#include "mediainfo/LyricsLook.h"
#include "settings/OptionNames.h"
#include "settings/SettingsStore.h"

namespace lumora {
namespace {

// One description each: what it sets in the default look, or that its one line is ignored.
TEST(SkinDescription, ReadsEachLineIntoItsFieldAndIgnoresWhatItCannotRead) {
    struct Case {
        std::string_view text;
        std::function<void(SkinLook&)> sets;  // null: the line is ignored
    };
    const Case cases[] = {
        {"background = #102030 > #405060",
         [](SkinLook& l) {
             l.background = {SkinRgb(0x10, 0x20, 0x30), SkinRgb(0x40, 0x50, 0x60)};
         }},
        {"\xEF\xBB\xBF; note = #000000\r\n\r\n panel=#0a0B0c \r\n", [](SkinLook& l) { l.panel = SkinRgb(10, 11, 12); }},
        {"display = #010203",
         [](SkinLook& l) {
             l.display = {SkinRgb(1, 2, 3), SkinRgb(1, 2, 3)};
         }},
        {"button.radius = 0", [](SkinLook& l) { l.buttonRadius = 0; }},
        {"button.gloss = 100", [](SkinLook& l) { l.buttonGloss = 100; }},
        {"button.edgewidth = 3", [](SkinLook& l) { l.buttonEdgeWidth = 3; }},
        {"button.edgewidth = 0", [](SkinLook& l) { l.buttonEdgeWidth = 0; }},
        {"display.radius = 0", [](SkinLook& l) { l.displayRadius = 0; }},
        {"font.title = 900", [](SkinLook& l) { l.titleWeight = 900; }},
        {"font.text = 100", [](SkinLook& l) { l.textWeight = 100; }},
        {"display.radius = 30", [](SkinLook& l) { l.displayRadius = 30; }},
        {"accent = #12345", nullptr},
        {"accent = 123456", nullptr},
        {"display = #010203 >", nullptr},
        {"button.radius = 21", nullptr},
        {"button.radius = -1", nullptr},
        {"button.gloss = 101", nullptr},
        {"button.edgewidth = 4", nullptr},
        {"font.title = 99", nullptr},
        {"font.text = bold", nullptr},
        {"display.radius = 31", nullptr},
        {"sparkle = #FFFFFF", nullptr},
    };
    for (const Case& c : cases) {
        SkinLook expected;
        if (c.sets) c.sets(expected);
        const ParsedSkin parsed = ParseSkin(c.text);
        EXPECT_EQ(parsed.look, expected) << c.text;
        EXPECT_EQ(parsed.ignored.size(), c.sets ? 0u : 1u) << c.text;
    }
}

// The descriptions built into Lumora: every line of theirs is read, and no two skins look alike.
TEST(SkinDescription, TheShippedSkinsAreReadWholeAndDifferFromEachOther) {
    const char* files[] = {"whirlwind.skin", "ocean.skin", "night.skin", "bamboo.skin", "silver.skin"};
    ASSERT_EQ(std::size(files), SkinChoices().size());
    std::set<std::pair<SkinColour, SkinColour>> backgrounds;
    for (const char* file : files) {
        std::ostringstream bytes;
        bytes << std::ifstream(std::string(LUMORA_SKIN_DIR) + "/" + file, std::ios::binary).rdbuf();
        const ParsedSkin parsed = ParseSkin(bytes.str());
        EXPECT_TRUE(!bytes.str().empty() && parsed.ignored.empty()) << file;
        EXPECT_TRUE(backgrounds.emplace(parsed.look.background.from, parsed.look.buttonFace.from).second) << file;
    }
}

TEST(SkinDescription, EveryStoredNumberHasASkinAndTheDefaultIsTheNightSky) {
    const int expected[][2] = {{0, 0}, {1, 1}, {2, 2}, {5, 5}, {6, 6}, {3, 2}, {7, 2}, {-1, 2}};
    for (const auto& [stored, skin] : expected) EXPECT_EQ(SkinFor(stored).value, skin) << stored;
    EXPECT_EQ(SkinFor(std::nullopt).name, "界面3：夜空");
    std::set<int> resources;  // each skin its own description
    for (const SkinChoice& s : SkinChoices()) resources.insert(s.resource);
    EXPECT_EQ(resources.size(), SkinChoices().size());
}

// "“背景”" (L6) and "“字颜色”" (L8) put the user's own colours in place of the skin's.
TEST(SkinDescription, TheUsersColoursReplaceTheSkinsOnlyWhileTheirBoxIsOn) {
    struct Case {
        std::string_view backOn, back, textOn, text;
        bool ownBack, ownText;
        SkinColour backColour, textColour;
    };
    const Case cases[] = {
        {"0", "255", "0", "65280", false, false, 0, 0},
        {"1", "255", "0", "65280", true, false, SkinRgb(255, 0, 0), 0},
        {"0", "255", "1", "65280", false, true, 0, SkinRgb(0, 255, 0)},
        {"1", "0", "1", "16777215", true, true, SkinRgb(0, 0, 0), SkinRgb(255, 255, 255)},
        // A system colour (0x80000000 + index) is the system's.
        {"1", "-2147483643", "1", "-2147483640", true, true, SkinRgb(5, 5, 5), SkinRgb(8, 8, 8)},
        // A colour that is none keeps the skin's.
        {"1", "x", "1", "16777216", false, false, 0, 0},
        {"1", "-2147483392", "1", "-1", false, false, 0, 0},
    };
    SkinLook skin;
    skin.background = {SkinRgb(1, 1, 1), SkinRgb(2, 2, 2)};
    skin.panel = SkinRgb(3, 3, 3);
    skin.text = SkinRgb(4, 4, 4);
    const auto system = [](int index) { return SkinRgb(index, index, index); };
    for (const Case& c : cases) {
        SettingsStore store;
        store.SetText(opt::kBackgroundColours, c.backOn);
        store.SetText(opt::kBackColour, c.back);
        store.SetText(opt::kPanelTextColours, c.textOn);
        store.SetText(opt::kPanelTextColour, c.text);
        const SkinLook look = LookWithUserColours(skin, store, system);
        const std::string name = std::string(c.back) + " " + std::string(c.text);
        if (c.ownBack) {
            EXPECT_EQ(look.background.from, c.backColour) << name;
            EXPECT_EQ(look.panel, c.backColour) << name;
            // Its gradient goes a little deeper, never lighter.
            EXPECT_EQ(look.background.to, BlendColour(c.backColour, 0, 250)) << name;
        } else {
            EXPECT_EQ(look.background, skin.background) << name;
            EXPECT_EQ(look.panel, skin.panel) << name;
        }
        EXPECT_EQ(look.text, c.ownText ? c.textColour : skin.text) << name;
    }
}

TEST(SkinDescription, TheProgressTrackTurnsFromItsStartColourToItsEndColourOnlyWhenAsked) {
    SkinLook look;
    look.trackDone = {SkinRgb(0, 100, 200), SkinRgb(200, 100, 0)};
    const struct {
        int permille;
        bool changes;
        SkinColour colour;
    } cases[] = {
        {0, true, SkinRgb(0, 100, 200)},    {1000, true, SkinRgb(200, 100, 0)},  {500, true, SkinRgb(100, 100, 100)},
        {250, true, SkinRgb(50, 100, 150)}, {-10, true, SkinRgb(0, 100, 200)},   {1500, true, SkinRgb(200, 100, 0)},
        {700, false, SkinRgb(0, 100, 200)}, {1000, false, SkinRgb(0, 100, 200)},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ProgressTrackColour(look, c.permille, c.changes), c.colour) << c.permille << " " << c.changes;
    }
    EXPECT_EQ(BlendColour(SkinRgb(0, 0, 0), SkinRgb(255, 255, 255), 1), SkinRgb(0, 0, 0));
    EXPECT_EQ(BlendColour(SkinRgb(255, 255, 255), SkinRgb(0, 0, 0), 2), SkinRgb(254, 254, 254));
}

// The lyrics follow the skin until the user gives them colours of his own, each colour on its own.
TEST(SkinDescription, TheLyricsTakeTheSkinsColoursWhereTheUserKeptTheDefaults) {
    SkinLook skin;
    skin.display = {1, 2};
    skin.accent = 3;
    skin.displayText = 4;
    LyricsLook lyrics;
    EXPECT_EQ(LyricsColoursFor(lyrics, skin), (LyricsColours{2, 3, 4}));
    lyrics.background = 9;
    lyrics.next = 8;
    EXPECT_EQ(LyricsColoursFor(lyrics, skin), (LyricsColours{9, 3, 8}));
}

double PixelsPerSecond(ScrollPace pace) { return 1000.0 * pace.pixels / pace.intervalMs; }

TEST(SkinDescription, TheRunningTextIsFasterForEveryHigherSpeed) {
    double last = 0;
    for (long long speed = 1; speed <= 100; ++speed) {
        const ScrollPace pace = RunningTextPace(speed);
        // No faster than a screen shows, and never so slow that it jerks.
        EXPECT_TRUE(pace.intervalMs >= 15 && pace.intervalMs <= 125 && pace.pixels >= 1) << speed;
        // (whole milliseconds: two neighbours may run alike, never ten apart)
        EXPECT_GE(PixelsPerSecond(pace), last) << speed;
        EXPECT_TRUE(speed <= 10 || PixelsPerSecond(pace) > PixelsPerSecond(RunningTextPace(speed - 10))) << speed;
        last = PixelsPerSecond(pace);
    }
    EXPECT_LT(PixelsPerSecond(RunningTextPace(1)), 10);
    EXPECT_GT(last, 150);
    EXPECT_EQ(PixelsPerSecond(RunningTextPace(0)), PixelsPerSecond(RunningTextPace(1)));
    EXPECT_EQ(PixelsPerSecond(RunningTextPace(101)), last);
    EXPECT_EQ(PixelsPerSecond(RunningTextPace(std::nullopt)), PixelsPerSecond(RunningTextPace(15)));
}

TEST(SkinDescription, TheRunningTextMovesOnlyWhenItDoesNotFitAndGoesRound) {
    RunningText text;
    text.Measure(100, 100, true);
    text.Step(7);
    EXPECT_FALSE(text.Moves());
    EXPECT_EQ(text.Offset(), 0);

    text.Measure(200, 90, true);  // the gap after it is a third of the box
    ASSERT_TRUE(text.Moves());
    EXPECT_EQ(text.Period(), 231);
    text.Step(200);
    EXPECT_EQ(text.Offset(), 200);
    text.Step(40);
    EXPECT_EQ(text.Offset(), 9);  // round again
    text.Step(-5);
    EXPECT_EQ(text.Offset(), 9);
    text.Rewind();  // stopped (the window hidden): it shows its beginning
    EXPECT_EQ(text.Offset(), 0);
    text.Step(9);
    text.Measure(200, 60, false);  // the box changed (a new DPI): the text goes on from where it is
    EXPECT_EQ(text.Offset(), 9);
    text.Measure(200, 60, true);  // a new text starts at its beginning
    EXPECT_EQ(text.Offset(), 0);
    text.Step(30);
    text.Measure(50, 60, false);  // it fits now: it stands still at its start
    EXPECT_EQ(text.Offset(), 0);
}

}  // namespace
}  // namespace lumora
