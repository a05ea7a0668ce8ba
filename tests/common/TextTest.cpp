#include <gtest/gtest.h>

#include <tuple>

#include "common/Text.h"

namespace lumora {
namespace {

TEST(Text, TrimmingCaseAndDigits) {
    EXPECT_EQ(Trim("  a b \t"), "a b");
    EXPECT_EQ(Trim(std::string_view("\0x\0", 3), std::string_view("\0", 1)), "x");
    EXPECT_EQ(Trim("  a  ", " ", ""), "a  ");
    EXPECT_EQ(LowerAscii("AbC歌"), "abc歌");
    EXPECT_TRUE(EqualsIgnoringAsciiCase("ReadMe", "rEADmE"));
    EXPECT_TRUE(StartsWithIgnoringAsciiCase("Track01", "track"));
    EXPECT_TRUE(EndsWithIgnoringAsciiCase(".MP3", ".mp3"));
    EXPECT_FALSE(EndsWithIgnoringAsciiCase("mp3", ".mp3"));
    EXPECT_TRUE(ContainsIgnoringAsciiCase("a Lyrics b", "LYRICS"));
    EXPECT_EQ(std::tuple(AllDigits("0123"), AllDigits("12a"), IsDigits("")), std::tuple(true, false, false));
    for (const char* name : {"a.mp1", "b.MP2", "c.Mp3"}) EXPECT_TRUE(IsMpegAudioName(name)) << name;
    for (const char* name : {"a.mp4", "mp3", "a.wav"}) EXPECT_FALSE(IsMpegAudioName(name)) << name;
}

}  // namespace
}  // namespace lumora
