#include <gtest/gtest.h>

#include "mediainfo/LyricsLook.h"
#include "settings/RegistryWrapper.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

TEST(LyricsLook, SavedValuesLoadBackAndBadOnesKeepTheDefaults) {
    test::FakeRegistry raw;
    test::FakePrompts prompts;
    RegistryWrapper registry(raw, prompts);
    const LyricsDisplaySettings defaults = LoadLyricsDisplaySettings(registry);
    EXPECT_EQ(defaults.lineByteLimit, 0);
    EXPECT_TRUE(defaults.look.stretchPicture);

    LyricsDisplaySettings s;
    s.lineByteLimit = 20;
    s.look = {0, 0x0000FF, 0xFF0000, 6, 72, true, false, "C:\\bg.jpg"};
    ASSERT_TRUE(SaveLyricsDisplaySettings(registry, s));
    const LyricsDisplaySettings back = LoadLyricsDisplaySettings(registry);
    EXPECT_EQ(back.lineByteLimit, 20);
    EXPECT_EQ(back.look.background, 0u);  // black is a colour too
    EXPECT_EQ(back.look.current, 0x0000FFu);
    EXPECT_EQ(back.look.next, 0xFF0000u);
    EXPECT_EQ(back.look.currentPoints, 6);
    EXPECT_EQ(back.look.nextPoints, 72);
    EXPECT_TRUE(back.look.usePicture);
    EXPECT_FALSE(back.look.stretchPicture);
    EXPECT_EQ(back.look.picturePath, "C:\\bg.jpg");

    for (const auto& [name, text] : {std::pair{"F8_BC", "16777216"}, {"F8_1_YY", "-1"}, {"F8_GcLab1", "5"},
                                     {"F8_GcLab2", "73"}, {"F8_2_YY", "abc"}}) {
        registry.WriteValue(kSetupKeyPath, name, text);
    }
    const LyricsLook bad = LoadLyricsDisplaySettings(registry).look;
    EXPECT_EQ(bad.background, defaults.look.background);
    EXPECT_EQ(bad.current, defaults.look.current);
    EXPECT_EQ(bad.next, defaults.look.next);
    EXPECT_EQ(bad.currentPoints, defaults.look.currentPoints);
    EXPECT_EQ(bad.nextPoints, defaults.look.nextPoints);

    raw.failWith = 5;  // a refused key: the dialog's values are not taken
    EXPECT_FALSE(SaveLyricsDisplaySettings(registry, s));
}

TEST(LyricsLook, ARefusedValueFailsTheSave) {
    struct RefusingWrites : test::FakeRegistry {
        long WriteBinary(RegistryRoot, const std::string&, const std::string&, std::string_view) override { return 5; }
    } raw;
    test::FakePrompts prompts;
    RegistryWrapper registry(raw, prompts);
    EXPECT_FALSE(SaveLyricsDisplaySettings(registry, {}));
}

}  // namespace
}  // namespace lumora
