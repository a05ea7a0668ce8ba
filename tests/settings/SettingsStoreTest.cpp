#include <gtest/gtest.h>

#include "settings/RegistryWrapper.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

using test::FakePrompts;
using test::FakeRegistry;
using test::Message;

const std::string kSetup = "SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup";
const std::string kPlayer = "SOFTWARE\\Tavrinsoft\\TavrinPlayer";
constexpr ScreenExtent kScreen{15360, 11520};  // 1024 x 768 at 96 dpi

struct Fixture {
    FakeRegistry reg;
    FakePrompts prompts;
    RegistryWrapper wrapper{reg, prompts};
    SettingsStore store;

    void Stored(const std::string& name, const std::string& bytes) {
        reg.Put(RegistryRoot::LocalMachine, kSetup, name, {RegistryValue::Kind::Binary, bytes});
    }
    std::string Loaded(const std::string& name) {
        EXPECT_TRUE(LoadSettings(store, wrapper, kScreen));
        return store.Text(name);
    }
};

// One stored value against what the store holds after loading. "(missing)" stores nothing.
struct LoadCase {
    std::string name;
    std::string stored;
    std::string loaded;
};

const std::vector<LoadCase> kLoadCases = {
    // Ranges: kept inside the closed range, the default outside it.
    {"L1", "0", "5"}, {"L1", "121", "5"}, {"L1", "120", "120"}, {"L1", "1", "1"}, {"L1", "abc", "5"},
    {"L2", "-1", "5"}, {"L2", "0", "5"}, {"L2", "60", "60"},
    {"L30", "0", "15"}, {"L30", "101", "15"}, {"L30", "1", "1"}, {"L30", "100", "100"},
    {"L39", "99", "99"}, {"L39", "100", "0"},
    {"L61", "-9", "-9"}, {"L61", "9", "9"}, {"L61", "-10", "0"},  // "none": keeps its initial 0
    {"L53", "999", "999"}, {"L53", "1000", "6"},
    {"L46", "19", "19"}, {"L46", "20", "0"}, {"L46", "-1", "0"},
    // Flags: numerically 0 or 1; empty or missing is neither.
    {"L6", "2", "0"}, {"L6", "(missing)", "0"}, {"L6", "1", "1"}, {"L6", "", "0"},
    {"L13", "(missing)", "1"}, {"L13", "0", "0"}, {"L13", "01", "01"},
    {"L22", "x", "1"}, {"L44", "0", "0"},
    // Choices.
    {"L35", "3", "2"}, {"L35", "5", "5"}, {"L35", "6", "6"}, {"L35", "0", "0"}, {"L35", "7", "2"},
    {"L45", "2", "2"}, {"L45", "3", "1"}, {"L47", "0", "0"}, {"L47", "9", "1"},
    // Check-box array: flags without a default of their own keep the initial content.
    {"L50", "0", "0"}, {"L50", "5", "1"}, {"L72", "1", "1"}, {"L72", "-1", "0"},
    // Trimmed before it goes into the store; a terminator left by another tool is dropped.
    {"L1", "  7 ", "7"}, {"L1", std::string("9\0", 2), "9"},
    // The decoder is not checked at start-up.
    {"L25", "0", "0"}, {"L25", "7", "7"}, {"L25", "(missing)", "1"},
    {"L25", "\x8A", "1"},  // not code page 936 text: it could never be saved back
    {"L25", std::string("\0\0\0\t", 4), "1"}, {"Vol", std::string("5\0 \0", 4), "5"},
    {"L25", std::string("a\0b", 3), "1"},  // control characters are no option text
    // Colours: a 24-bit colour or a system colour as a signed number.
    {"L34B", "255", "255"}, {"L34B", "0", "0"}, {"L34B", "16777215", "16777215"}, {"L34B", "16777216", "14811135"},
    {"L34B", "-2147483643", "-2147483643"}, {"L1F", "red", "0"},
    // Window positions against the screen, in twips.
    {"TOP", "0", ""}, {"TOP", "1", "1"}, {"TOP", "11519", "11519"}, {"TOP", "11520", ""},
    {"LEFT", "0", "0"}, {"LEFT", "-1", ""}, {"LEFT", "15360", ""},
    {"MovTOP", "0", "0"}, {"MovLEFT", "15359", "15359"},
    {"MovH", "800", ""}, {"MovH", "801", "801"}, {"MovW", "15360", ""}, {"MovW", "4000", "4000"},
    {"Vol", "80", "80"}, {"Vol", " 35 ", "35"},
};

TEST(LoadSettings, ValidationTable) {
    for (const auto& c : kLoadCases) {
        SCOPED_TRACE(c.name + " stored as '" + c.stored + "'");
        Fixture f;
        if (c.stored != "(missing)") f.Stored(c.name, c.stored);
        EXPECT_EQ(f.Loaded(c.name), c.loaded);
        EXPECT_TRUE(f.prompts.messages.empty());
    }
}

TEST(LoadSettings, SongMenuBoundsAreReadTogether) {
    struct Case {
        const char* l41;
        const char* l42;
        const char* want41;
        const char* want42;
    } cases[] = {
        {"32", "130", "32", "130"},
        {"0", "33", "0", "33"},
        {"999", "40", "32", "40"},   // upper bound falls back first, then the lower one is checked
        {"10", "32", "10", "130"},   // must be greater than 32
        {"10", "999", "10", "999"},
        {"10", "1000", "10", "130"},
        {"200", "150", "200", "130"},  // must lie above the upper bound
        {"-1", "", "32", "130"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.l41) + "/" + c.l42);
        Fixture f;
        f.Stored("L41", c.l41);
        f.Stored("L42", c.l42);
        ASSERT_TRUE(LoadSettings(f.store, f.wrapper, kScreen));
        EXPECT_EQ(f.store.Text("L41"), c.want41);
        EXPECT_EQ(f.store.Text("L42"), c.want42);
    }
}

TEST(LoadSettings, MissingKeyLoadsTheInitialValuesAndAFailureLeavesTheStoreAsItWas) {
    Fixture f;
    const SettingsStore fresh;
    ASSERT_TRUE(LoadSettings(f.store, f.wrapper, kScreen));
    for (auto name : SettingsStore::SavedNames()) EXPECT_EQ(f.store.Text(name), fresh.Text(name)) << name;
    EXPECT_TRUE(f.prompts.messages.empty());
    f.store.SetText("L1", "77");
    f.reg.failWith = 5;
    EXPECT_FALSE(LoadSettings(f.store, f.wrapper, kScreen));
    EXPECT_EQ(f.prompts.messages, (std::vector<Message>{{RegistryErrorText(5), std::string(kValueErrorTitle)}}));
    EXPECT_EQ(f.store.Text("L1"), "77");
    EXPECT_FALSE(f.store.SetText("L3", "1"));  // no such option
    EXPECT_EQ(f.store.Text("L3"), "");
    f.store.SetText("L13", "01");
    EXPECT_TRUE(f.store.IsOn("L13"));
    f.store.SetText("Vol", "loud");
    EXPECT_EQ(f.store.Number("Vol"), std::nullopt);
}

TEST(SaveSettings, WritesTheVersionAndPathBesideTheOptions) {
    Fixture f;
    ASSERT_TRUE(SaveSettings(f.store, f.wrapper, "1.0", "C:\\Program Files\\Lumora"));
    EXPECT_EQ(f.reg.Find(RegistryRoot::LocalMachine, kPlayer, "TavrinPlayer")->data, "");
    EXPECT_EQ(f.reg.Find(RegistryRoot::LocalMachine, kPlayer, "VER")->data, "1.0");
    EXPECT_EQ(f.reg.Find(RegistryRoot::LocalMachine, kPlayer, "路径")->data, "C:\\Program Files\\Lumora");
    // Positions and volume belong to their windows and are not written here.
    EXPECT_EQ(f.reg.Find(RegistryRoot::LocalMachine, kSetup, "TOP"), nullptr);
    ASSERT_NE(f.reg.Find(RegistryRoot::LocalMachine, kSetup, "L72"), nullptr);
}

TEST(SaveSettings, NumbersAreWrittenInTheirPlainForm) {
    Fixture f;
    f.store.SetText("L1", "05");
    f.store.SetText("L61", "-09");
    f.store.SetText("L13", " 1");
    f.store.SetText("L34B", "+255");
    ASSERT_TRUE(SaveSettings(f.store, f.wrapper, "1.0", "C:\\L"));
    const std::pair<const char*, const char*> cases[] = {{"L1", "5"}, {"L61", "-9"}, {"L13", "1"}, {"L34B", "255"}};
    for (const auto& [name, bytes] : cases) {
        const RegistryValue* v = f.reg.Find(RegistryRoot::LocalMachine, kSetup, name);
        ASSERT_NE(v, nullptr) << name;
        EXPECT_EQ(v->kind, RegistryValue::Kind::Binary) << name;
        EXPECT_EQ(v->data, bytes) << name;
    }
}

TEST(SaveSettings, WhatIsSavedLoadsBackTheSame) {
    Fixture f;
    f.store.SetText("L1", "120");
    f.store.SetText("L35", "6");
    f.store.SetText("L41", "50");
    f.store.SetText("L42", "51");
    f.store.SetText("L72", "1");
    f.store.SetText("L1F", "-2147483640");
    ASSERT_TRUE(SaveSettings(f.store, f.wrapper, "1.0", "C:\\L"));
    SettingsStore again;
    ASSERT_TRUE(LoadSettings(again, f.wrapper, kScreen));
    for (auto name : SettingsStore::SavedNames()) EXPECT_EQ(again.Text(name), f.store.Text(name)) << name;
}

TEST(SaveSettings, StopsAtTheFirstFailure) {
    Fixture f;
    f.reg.failWith = 1013;
    EXPECT_FALSE(SaveSettings(f.store, f.wrapper, "1.0", "C:\\L"));
    EXPECT_EQ(f.reg.log.size(), 1u);
    EXPECT_EQ(f.prompts.messages, (std::vector<Message>{{RegistryErrorText(1013), std::string(kKeyErrorTitle)}}));
    struct RefusesTheProgramValue : FakeRegistry {
        long WriteBinary(RegistryRoot root, const std::string& key, const std::string& name, std::string_view bytes) override {
            return name == "TavrinPlayer" ? 5 : FakeRegistry::WriteBinary(root, key, name, bytes);
        }
    } refusing;
    RegistryWrapper wrapper(refusing, f.prompts);
    EXPECT_FALSE(SaveSettings(f.store, wrapper, "1.0", "C:\\L"));
    EXPECT_EQ(refusing.Find(RegistryRoot::LocalMachine, kPlayer, "VER"), nullptr);
}

TEST(ParseDecimal, AcceptsOnlyWholeDecimalNumbers) {
    EXPECT_EQ(ParseDecimal("05"), 5);
    EXPECT_EQ(ParseDecimal("-9"), -9);
    EXPECT_EQ(ParseDecimal("+1"), 1);
    EXPECT_EQ(ParseDecimal("0000000000000000000000001"), 1);
    for (const char* bad : {"", "-", "1.0", "1e3", " 1", "0x10", "99999999999999999999", "１"}) {
        EXPECT_EQ(ParseDecimal(bad), std::nullopt) << bad;
    }
}

}  // namespace
}  // namespace lumora
