#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "playlist/MediaTest.h"

namespace lumora {
namespace {

// Every dotted item of up to three letters matches in any case; the four undotted items and the
// four-letter ones can never match.
TEST(MediaExtensionList, FortyEightItemsOfWhichOnlyTheShortDottedOnesMatch) {
    std::vector<std::string> items, undotted;
    for (std::string_view rest = kMediaExtensionList; !rest.empty();) {
        const size_t semicolon = rest.find(';');
        items.emplace_back(rest.substr(0, semicolon));
        rest = semicolon == std::string_view::npos ? std::string_view() : rest.substr(semicolon + 1);
    }
    ASSERT_EQ(items.size(), 48u);
    for (const auto& item : items) {
        const bool reachable = item.front() == '.' && item.size() <= 4;
        std::string upper = item;
        for (char& c : upper) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
        if (item.front() != '.') undotted.push_back(item);
        EXPECT_EQ(IsMediaFile("file" + item), reachable) << item;
        EXPECT_EQ(IsMediaFile("FILE" + upper), reachable) << item;
        EXPECT_EQ(IsMediaFile("file." + (item.front() == '.' ? item.substr(1) : item)), reachable) << item;
    }
    EXPECT_EQ(undotted, (std::vector<std::string>{"mpeg", "aifc", "aiff", "mpga"}));
}

TEST(IsMediaFile, LooksOnlyAtTheLastFourCharactersOfANameOrOfTheNameInAListLine) {
    const struct {
        const char* name;
        bool media;
    } cases[] = {
        {"song.mp3", true},        {"song.MP3", true},       {"movie.qt", true},        {"a.rm", true},
        {"voice.Ra", true},        {"clip.mpeg", false},     {"tone.aiff", false},      {"a.midi", false},
        {"b.rmvb", false},         {"歌.qt", true},          {"C:\\音乐\\a.mp3", true}, {".mp3", true},
        {"mp3", false},            {"readme", false},        {"song.mp3.", false},      {"song.mp3.zip", false},
        {"a.b.wav", true},         {"  song.mp3  ", true},   {"", false},               {"q.", false},
        // List lines: a name that starts with a number and ends in ")" is read inside the brackets.
        {"001-(song.mp3)", true},  {"012-(歌曲.WMV)", true}, {"001-(tone.aiff)", false}, {"001-(song.mp3) ", true},
        {"123 clip.qt)", true},    {"-12 clip.au)", true},   {"abc-(song.mp3)", false},  {"1.mp3)", false},
        {"song (live).mp3", true}, {"12)", false},           {"001)", false},
        // Broken UTF-8 is cut somewhere harmless.
        {"\x80\x80\x80\x80", false}, {"\xe6\xad", false},    {"\x80.mp3", true},         {"\x80\x80)", false},
    };
    for (const auto& c : cases) EXPECT_EQ(IsMediaFile(c.name), c.media) << c.name;
}

}  // namespace
}  // namespace lumora
