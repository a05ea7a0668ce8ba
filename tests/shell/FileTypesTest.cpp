#include "shell/FileTypes.h"

#include <gtest/gtest.h>

#include "settings/RegistryWrapper.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

constexpr auto kUser = RegistryRoot::CurrentUser;
const std::string kProgram = "C:\\Program Files\\Lumora\\Lumora.exe";
const std::string kMp3 = "Software\\Classes\\.mp3";
const std::string kHandler = "Software\\Classes\\ZEV_.mp3";

RegistryValue Text(std::string s) { return {RegistryValue::Kind::Text, std::move(s)}; }

struct FileTypeRegistrarTest : ::testing::Test {
    test::FakeRegistry reg;
    test::FakePrompts prompts;
    RegistryWrapper wrapper{reg, prompts};
    FileTypeRegistrar registrar{wrapper, kProgram};

    std::string Value(const std::string& key, const std::string& name) {
        const RegistryValue* v = reg.Find(kUser, key, name);
        return v ? v->data : "<none>";
    }
};

TEST(FileTypeDescription, LastFourCharactersThenTheThreeLetterExtensions) {
    const std::pair<const char*, const char*> cases[] = {
        {"C:\\a\\song.MP3", "MP3 压缩为三层的音频文件"},
        {"tune.MIDI", "MIDI MIDI文件"},
        {"film.Mpeg", "MPEG 电影文件(图片移动视频)"},
        {"clip.rmvb", "RMVB Real文件"},
        {"clip.rm", "RM Real文件"},
        {"movie.qt", "QT QuickTime 文件"},
        {"radio.ra", ""},
        {"au", ""},
        {"list.QLB", "QLB Lumora列表文件"},
    };
    for (const auto& [name, description] : cases) EXPECT_EQ(FileTypeDescription(name), description) << name;
}

TEST(FileTypeItems, EveryMediaExtensionWithItsDotThenListFiles) {
    const auto items = FileTypeItems();
    ASSERT_EQ(items.size(), 49u);
    EXPECT_EQ(items.front(), ".avi");
    EXPECT_EQ(items[3], ".mpeg");  // kept without its dot in the media list
    EXPECT_EQ(items.back(), ".qlb");
}

TEST_F(FileTypeRegistrarTest, RegisteringTwiceKeepsTheFirstForeignHandler) {
    reg.Put(kUser, kMp3, "", Text("Foreign.mp3"));
    EXPECT_EQ(registrar.CurrentIcon(FileTypeItems()), (IconChoice{kProgram, 0}));  // none handled yet
    ASSERT_TRUE(registrar.RegisterFileType(".MP3", {"C:\\icons.dll", 3}));
    ASSERT_TRUE(registrar.RegisterFileType(".mp3", {"C:\\icons.dll", 3}));
    EXPECT_EQ(Value(kMp3, "filebak"), "Foreign.mp3");
    EXPECT_EQ(Value(kMp3, ""), "ZEV_.mp3");
    EXPECT_EQ(Value(kHandler, ""), "MP3 Lumora 文件");
    const RegistryValue* flags = reg.Find(kUser, kHandler, "EditFlags");
    ASSERT_TRUE(flags);
    EXPECT_EQ(flags->kind, RegistryValue::Kind::Number);
    EXPECT_EQ(flags->data, "65536");
    EXPECT_EQ(Value(kHandler + "\\shell\\open\\command", ""), "\"" + kProgram + "\" %1");
    EXPECT_TRUE(reg.keys.count({kUser, kHandler + "\\shell\\open\\ddeexec\\Topic"}));
    const FileTypeState state = registrar.RefreshFileTypeItem(".mp3");
    EXPECT_TRUE(state.handled);
    EXPECT_EQ(state.icon, (IconChoice{"C:\\icons.dll", 3}));
    EXPECT_EQ(registrar.CurrentIcon(FileTypeItems()), state.icon);
    EXPECT_EQ(Value("Software\\Tavrinsoft\\TavrinPlayer\\Capabilities\\FileAssociations", ".mp3"), "ZEV_.mp3");
    EXPECT_EQ(Value("Software\\RegisteredApplications", "Lumora"), "Software\\Tavrinsoft\\TavrinPlayer\\Capabilities");
    // Another copy of Lumora does not handle it.
    FileTypeRegistrar moved{wrapper, "D:\\Lumora.exe"};
    EXPECT_FALSE(moved.RefreshFileTypeItem(".mp3").handled);
    EXPECT_TRUE(prompts.messages.empty());
}

// Removal puts back what the extension had and takes away every key and value the registrations added.
TEST_F(FileTypeRegistrarTest, RemovalLeavesTheUsersClassesAsBefore) {
    const struct {
        const char* name;
        std::vector<std::pair<std::string, std::string>> before;  // values of the .mp3 key
        bool settings;                                            // Lumora's own key exists
        bool backupLost;                                          // "filebak" is gone: its read answers "Error"
        const char* defaultAfter;
    } cases[] = {
        {"no key", {}, false, false, "<none>"},
        {"foreign handler", {{"", "Foreign.mp3"}, {"Content Type", "audio/mpeg"}}, true, false, "Foreign.mp3"},
        {"no default", {{"Content Type", "audio/mpeg"}}, true, false, "<none>"},
        {"no saved handler", {{"Content Type", "audio/mpeg"}}, true, true, ""},
    };
    for (const auto& c : cases) {
        reg.keys.clear();
        if (c.settings) {
            reg.keys[{kUser, "Software\\Tavrinsoft"}];
            reg.Put(kUser, "Software\\Tavrinsoft\\TavrinPlayer", "TavrinPlayer", Text(""));
        }
        for (const auto& [name, value] : c.before) reg.Put(kUser, kMp3, name, Text(value));
        auto expected = reg.keys;
        if (*c.defaultAfter == '\0') expected[{kUser, kMp3}][""] = Text("");
        ASSERT_TRUE(registrar.RegisterFileType(".mp3", registrar.ProgramIcon())) << c.name;
        ASSERT_TRUE(registrar.RegisterFileType(".wav", registrar.ProgramIcon())) << c.name;
        if (c.backupLost) reg.DeleteValue(kUser, kMp3, "filebak");

        bool changed = false;
        ASSERT_TRUE(registrar.Apply({{".mp3", false}, {".wav", true}, {".avi", false}}, {}, changed));
        EXPECT_TRUE(changed) << c.name;
        EXPECT_TRUE(registrar.RefreshFileTypeItem(".wav").handled) << c.name;
        EXPECT_TRUE(registrar.Apply({{".wav", true}}, {}, changed) && !changed) << c.name;
        ASSERT_TRUE(registrar.RemoveFileType(".wav") && registrar.RemoveFileType(".wav")) << c.name;

        EXPECT_EQ(Value(kMp3, ""), c.defaultAfter) << c.name;
        EXPECT_TRUE(reg.keys == expected) << c.name;
    }
    EXPECT_TRUE(prompts.messages.empty());
}

TEST_F(FileTypeRegistrarTest, FolderAndDriveVerbsAreThisProgramsOnly) {
    ASSERT_TRUE(registrar.SetFolderVerb(true));
    ASSERT_TRUE(registrar.SetDriveVerb(true));
    EXPECT_EQ(reg.log[0], "create Software\\Classes\\Directory");  // parents first
    EXPECT_EQ(Value("Software\\Classes\\Drive\\shell\\ZEV-PLAYER", ""), "用 Lumora 打开");
    EXPECT_TRUE(registrar.FolderVerbSet() && registrar.DriveVerbSet());
    FileTypeRegistrar moved{wrapper, "D:\\Lumora.exe"};
    EXPECT_FALSE(moved.FolderVerbSet() || moved.DriveVerbSet());

    reg.log.clear();
    ASSERT_TRUE(registrar.SetFolderVerb(false));
    EXPECT_EQ(reg.log[0], "delete key Software\\Classes\\Directory\\shell\\ZEV-PLAYER\\command");  // children first
    ASSERT_TRUE(registrar.SetDriveVerb(false) && registrar.SetDriveVerb(false));
    EXPECT_TRUE(reg.keys.empty());
    EXPECT_TRUE(prompts.messages.empty());
}

TEST_F(FileTypeRegistrarTest, ARefusedWriteStopsAtTheFirstBox) {
    reg.failWith = regerr::kAccessDenied;
    EXPECT_FALSE(registrar.RegisterFileType(".mp3", registrar.ProgramIcon()));
    EXPECT_FALSE(registrar.SetFolderVerb(true));
    EXPECT_EQ(prompts.messages.size(), 2u);
}

}  // namespace
}  // namespace lumora
