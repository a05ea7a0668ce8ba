#include <gtest/gtest.h>

#include <tuple>

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
