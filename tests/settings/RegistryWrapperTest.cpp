#include <gtest/gtest.h>

#include "settings/RegistryWrapper.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

using test::FakePrompts;
using test::FakeRegistry;
using test::Message;

TEST(RegistryWrapper, AllSevenRootNamesSplitAtTheFirstBackslash) {
    struct Case {
        const char* path;
        RegistryRoot root;
        const char* subKey;
    } cases[] = {
        {"HKEY_CLASSES_ROOT\\.mp3", RegistryRoot::ClassesRoot, ".mp3"},
        {"HKEY_CURRENT_USER\\Software\\Wine", RegistryRoot::CurrentUser, "Software\\Wine"},
        {"HKEY_LOCAL_MACHINE\\SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup", RegistryRoot::LocalMachine,
         "SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup"},
        {"HKEY_USERS\\.DEFAULT", RegistryRoot::Users, ".DEFAULT"},
        {"HKEY_PERFORMANCE_DATA\\x", RegistryRoot::PerformanceData, "x"},
        {"HKEY_CURRENT_CONFIG\\Software", RegistryRoot::CurrentConfig, "Software"},
        {"HKEY_DYN_DATA\\Config Manager", RegistryRoot::DynData, "Config Manager"},
        {"HKEY_LOCAL_MACHINE", RegistryRoot::LocalMachine, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        const auto p = SplitKeyPath(c.path);
        ASSERT_TRUE(p.has_value());
        EXPECT_EQ(p->root, c.root);
        EXPECT_EQ(p->subKey, c.subKey);
    }
    for (const char* bad : {"", "HKLM\\SOFTWARE", "SOFTWARE\\Tavrinsoft", "\\HKEY_LOCAL_MACHINE", "HKEY_LOCAL_MACHINEX"}) {
        SCOPED_TRACE(bad);
        EXPECT_FALSE(SplitKeyPath(bad).has_value());
    }
}

TEST(RegistryWrapper, ErrorNumbersGiveTheTextsTheUserSees) {
    struct Case {
        long error;
        const char* text;
    } cases[] = {
        {1012, "Can't Read Key"},
        {1011, "Can't Open Key"},
        {1009, "The Registry Database is corrupt!"},
        {1015, "The Registry Database is corrupt!"},
        {1010, "Bad Key Name"},
        {5, "Access to this key is denied"},
        {1013, "Can't Write Key"},
        {14, "Out of memory"},
        {8, "Out of memory"},
        {87, "Invalid Parameter"},
        {234, "There is more data than the buffer has been allocated to hold."},
        {1234, "Undefined Error Code:  1234"},
        {-7, "Undefined Error Code:  -7"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.error);
        EXPECT_EQ(RegistryErrorText(c.error), c.text);
    }
}

TEST(RegistryWrapper, WriteStoresTheTextsCodePage936BytesAsBinary) {
    FakeRegistry reg;
    FakePrompts prompts;
    RegistryWrapper w(reg, prompts);
    ASSERT_TRUE(w.CreateKey("HKEY_CURRENT_USER\\测试"));
    ASSERT_TRUE(w.WriteValue("HKEY_CURRENT_USER\\测试", "路径", "C:\\播放器"));
    const RegistryValue* v = reg.Find(RegistryRoot::CurrentUser, "测试", "路径");
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v->kind, RegistryValue::Kind::Binary);
    EXPECT_EQ(v->data, "C:\\\xB2\xA5\xB7\xC5\xC6\xF7");  // no terminator
    EXPECT_EQ(w.ReadValue("HKEY_CURRENT_USER\\测试", "路径"), "C:\\播放器");
    EXPECT_TRUE(prompts.messages.empty());
}

TEST(RegistryWrapper, MissingKeyOrValueReadsEmptyWithoutABox) {
    FakeRegistry reg;
    FakePrompts prompts;
    RegistryWrapper w(reg, prompts);
    EXPECT_EQ(w.ReadValue("HKEY_LOCAL_MACHINE\\SOFTWARE\\Nothing", "L1"), "");
    reg.CreateKey(RegistryRoot::LocalMachine, "SOFTWARE\\Empty");
    EXPECT_EQ(w.ReadValue("HKEY_LOCAL_MACHINE\\SOFTWARE\\Empty", "L1"), "");
    EXPECT_TRUE(prompts.messages.empty());
}

TEST(RegistryWrapper, ValuesOfOtherTypesStillReadAsText) {
    FakeRegistry reg;
    FakePrompts prompts;
    RegistryWrapper w(reg, prompts);
    reg.Put(RegistryRoot::CurrentUser, "k", "sz", {RegistryValue::Kind::Text, "音乐"});
    reg.Put(RegistryRoot::CurrentUser, "k", "dword", {RegistryValue::Kind::Number, "7"});
    EXPECT_EQ(w.ReadValue("HKEY_CURRENT_USER\\k", "sz"), "音乐");
    EXPECT_EQ(w.ReadValue("HKEY_CURRENT_USER\\k", "dword"), "7");
}

TEST(RegistryWrapper, FailuresAreShownOnceWithTheirTexts) {
    FakeRegistry reg;
    FakePrompts prompts;
    RegistryWrapper w(reg, prompts);
    EXPECT_FALSE(w.WriteValue("HKEY_NOWHERE\\x", "a", "1"));
    EXPECT_FALSE(w.CreateKey("NOWHERE"));
    reg.failWith = 5;
    EXPECT_FALSE(w.CreateKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\x"));
    EXPECT_FALSE(w.WriteValue("HKEY_LOCAL_MACHINE\\SOFTWARE\\x", "a", "1"));
    EXPECT_EQ(w.ReadValue("HKEY_LOCAL_MACHINE\\SOFTWARE\\x", "a"), "");
    EXPECT_FALSE(w.DeleteValue("HKEY_LOCAL_MACHINE\\SOFTWARE\\x", "a"));
    EXPECT_FALSE(w.DeleteKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\x"));
    const std::vector<Message> expected = {
        {"Bad Key Name", "Lumora"},
        {"Bad Key Name", "Error"},
        {"Access to this key is denied", "Error"},
        {"Access to this key is denied", "Lumora"},
        {"Access to this key is denied", "Lumora"},
        {"Access to this key is denied", "Lumora"},
        {"Access to this key is denied", "Error"},
    };
    EXPECT_EQ(prompts.messages, expected);
}

TEST(RegistryWrapper, DeletingARootIsRefused) {
    FakeRegistry reg;
    FakePrompts prompts;
    RegistryWrapper w(reg, prompts);
    EXPECT_FALSE(w.DeleteKey("HKEY_LOCAL_MACHINE"));
    EXPECT_FALSE(w.DeleteKey("HKEY_LOCAL_MACHINE\\"));
    EXPECT_TRUE(reg.log.empty());
}

TEST(RegistryWrapper, DeleteValueAndKey) {
    FakeRegistry reg;
    FakePrompts prompts;
    RegistryWrapper w(reg, prompts);
    ASSERT_TRUE(w.CreateKey("HKEY_CURRENT_USER\\a"));
    ASSERT_TRUE(w.CreateKey("HKEY_CURRENT_USER\\a\\b"));
    ASSERT_TRUE(w.WriteValue("HKEY_CURRENT_USER\\a", "v", "1"));
    ASSERT_TRUE(w.DeleteValue("HKEY_CURRENT_USER\\a", "v"));
    EXPECT_EQ(reg.Find(RegistryRoot::CurrentUser, "a", "v"), nullptr);
    ASSERT_TRUE(w.DeleteKey("HKEY_CURRENT_USER\\a"));
    EXPECT_TRUE(reg.keys.empty());
}

}  // namespace
}  // namespace lumora
