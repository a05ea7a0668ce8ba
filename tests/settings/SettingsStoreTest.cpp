#include <gtest/gtest.h>

#include "settings/RegistryWrapper.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

using test::FakeRegistry;

const std::string kSetup = "SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup";
const std::string kPlayer = "SOFTWARE\\Tavrinsoft\\TavrinPlayer";
constexpr ScreenExtent kScreen{15360, 11520};  // 1024 x 768 at 96 dpi

struct Fixture {
    FakeRegistry reg;
    test::FakePrompts prompts;
    RegistryWrapper wrapper{reg, prompts};
    SettingsStore store;

    void Stored(const std::string& name, const std::string& bytes) {
        reg.Put(RegistryRoot::LocalMachine, kSetup, name, {RegistryValue::Kind::Binary, bytes});
    }
    std::string Loaded(const std::string& name) {
        EXPECT_TRUE(LoadSettings(store, wrapper, kScreen) && prompts.messages.empty());  // no box for a bad value
        return store.Text(name);
    }
};

// One stored value against what the store holds after loading. "(missing)" stores nothing.
struct LoadCase {
    std::string name, stored, loaded;
};

const std::vector<LoadCase> kLoadCases = {
    // Ranges: kept inside the closed range, the default outside it.
    {"L1", "0", "5"}, {"L1", "121", "5"}, {"L1", "120", "120"}, {"L1", "1", "1"}, {"L2", "0", "5"}, {"L30", "101", "15"},
    {"L39", "100", "0"}, {"L61", "-9", "-9"}, {"L61", "-10", "0"}, {"L53", "1000", "6"}, {"L46", "20", "0"},
    // Flags: numerically 0 or 1; empty or missing is neither.
    {"L6", "2", "0"}, {"L6", "1", "1"}, {"L13", "(missing)", "1"}, {"L13", "0", "0"}, {"L13", "01", "01"},
    {"L22", "x", "1"},
    // Choices; the check-box array keeps its initial content outside 0 and 1.
    {"L35", "3", "2"}, {"L35", "6", "6"}, {"L35", "7", "2"}, {"L45", "3", "1"}, {"L47", "9", "1"}, {"L72", "-1", "0"},
    // Trimmed before it goes into the store; a terminator left by another tool is dropped.
    {"L1", "  7 ", "7"}, {"L1", std::string("9\0", 2), "9"}, {"Vol", std::string("5\0 \0", 4), "5"},
    // The decoder is not checked at start-up, but must be code page 936 text without control characters.
    {"L25", "7", "7"}, {"L25", "\x8A", "1"}, {"L25", std::string("a\0b", 3), "1"},
    // Colours: a 24-bit colour or a system colour as a signed number.
    {"L34B", "16777215", "16777215"}, {"L34B", "16777216", "14811135"}, {"L34B", "-2147483643", "-2147483643"},
    // Window positions against the screen, in twips.
    {"TOP", "0", ""}, {"TOP", "11519", "11519"}, {"TOP", "11520", ""}, {"LEFT", "0", "0"}, {"LEFT", "-1", ""},
    {"MovTOP", "0", "0"}, {"MovH", "800", ""}, {"MovH", "801", "801"}, {"MovW", "15360", ""}, {"L1F", "red", "0"},
    // The song menu's bounds: the upper one (above 32, below 1000) first, then the lower one below it.
    {"L42", "32", "130"}, {"L42", "999", "999"}, {"L42", "1000", "130"}, {"L41", "999", "32"},
};

TEST(LoadSettings, ValidationTable) {
    for (const auto& c : kLoadCases) {
        SCOPED_TRACE(c.name + " stored as '" + c.stored + "'");
        Fixture f;
        if (c.stored != "(missing)") f.Stored(c.name, c.stored);
        EXPECT_EQ(f.Loaded(c.name), c.loaded);
    }
}

// Numbers in their plain form, the program's path beside the options; positions and volume belong to their
// windows and are not written here.
TEST(SaveSettings, WritesPlainNumbersAndThePathBesideTheOptions) {
    Fixture f;
    for (const auto& [name, text] : {std::pair{"L1", "05"}, {"L61", "-09"}, {"L13", " 1"}, {"L34B", "+255"}}) f.store.SetText(name, text);
    ASSERT_TRUE(SaveSettings(f.store, f.wrapper, "1.0", "C:\\L"));
    std::string written;
    for (const char* name : {"L1", "L61", "L13", "L34B"}) written += f.reg.Find(RegistryRoot::LocalMachine, kSetup, name)->data + " ";
    EXPECT_EQ(written, "5 -9 1 255 ");
    EXPECT_EQ(f.reg.Find(RegistryRoot::LocalMachine, kPlayer, "TavrinPlayer")->data, "");
    EXPECT_EQ(f.reg.Find(RegistryRoot::LocalMachine, kPlayer, "路径")->data, "C:\\L");
    EXPECT_EQ(f.reg.Find(RegistryRoot::LocalMachine, kSetup, "TOP"), nullptr);
}

TEST(RegistryWrapper, WritesCodePage936BytesAsBinaryReadsEveryTypeAndShowsFailures) {
    test::FakeRegistry reg;
    test::FakePrompts prompts;
    RegistryWrapper w(reg, prompts);
    ASSERT_TRUE(w.CreateKey("HKEY_CURRENT_USER\\测试") && w.WriteValue("HKEY_CURRENT_USER\\测试", "路径", "C:\\播放器"));
    const RegistryValue* v = reg.Find(RegistryRoot::CurrentUser, "测试", "路径");
    EXPECT_EQ(std::pair(v->kind, v->data), std::pair(RegistryValue::Kind::Binary, std::string("C:\\\xB2\xA5\xB7\xC5\xC6\xF7")));
    EXPECT_EQ(w.ReadValue("HKEY_CURRENT_USER\\测试", "路径"), "C:\\播放器");
    reg.Put(RegistryRoot::CurrentUser, "k", "sz", {RegistryValue::Kind::Text, "音乐"});
    EXPECT_EQ(w.ReadValue("HKEY_CURRENT_USER\\k", "sz"), "音乐");  // values of other types read as text too
    EXPECT_EQ(w.ReadValue("HKEY_CURRENT_USER\\k", "L1"), "");  // a missing value reads empty without a box
    EXPECT_TRUE(prompts.messages.empty());
    reg.log.clear();
    EXPECT_FALSE(w.DeleteKey("HKEY_LOCAL_MACHINE\\"));  // a root is never deleted
    EXPECT_TRUE(reg.log.empty());
    // Failures are shown once each, under the title of what failed.
    EXPECT_FALSE(w.WriteValue("HKEY_NOWHERE\\x", "a", "1"));
    reg.failWith = 5;
    EXPECT_FALSE(w.CreateKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\x"));
    EXPECT_EQ(w.ReadValue("HKEY_LOCAL_MACHINE\\SOFTWARE\\x", "a"), "");
    for (const char* path : {"HKLM\\SOFTWARE", "HKEY_LOCAL_MACHINEX"}) EXPECT_FALSE(SplitKeyPath(path)) << path;
    const std::string key(kKeyErrorTitle), value(kValueErrorTitle);
    EXPECT_EQ(prompts.messages, (std::vector<test::Message>{{RegistryErrorText(1010), key}, {RegistryErrorText(1010), value},
                                                            {RegistryErrorText(5), key}, {RegistryErrorText(5), value}}));
}

}  // namespace
}  // namespace lumora
