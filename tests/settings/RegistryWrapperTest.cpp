#include <gtest/gtest.h>

#include "settings/RegistryWrapper.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

using test::Message;

TEST(RegistryWrapper, WritesCodePage936BytesAsBinaryAndReadsEveryType) {
    test::FakeRegistry reg;
    test::FakePrompts prompts;
    RegistryWrapper w(reg, prompts);
    ASSERT_TRUE(w.CreateKey("HKEY_CURRENT_USER\\测试"));
    ASSERT_TRUE(w.WriteValue("HKEY_CURRENT_USER\\测试", "路径", "C:\\播放器"));
    const RegistryValue* v = reg.Find(RegistryRoot::CurrentUser, "测试", "路径");
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v->kind, RegistryValue::Kind::Binary);
    EXPECT_EQ(v->data, "C:\\\xB2\xA5\xB7\xC5\xC6\xF7");  // no terminator
    EXPECT_EQ(w.ReadValue("HKEY_CURRENT_USER\\测试", "路径"), "C:\\播放器");
    reg.Put(RegistryRoot::CurrentUser, "k", "sz", {RegistryValue::Kind::Text, "音乐"});
    EXPECT_EQ(w.ReadValue("HKEY_CURRENT_USER\\k", "sz"), "音乐");  // values of other types read as text too
    // A missing key or value reads empty without a box.
    EXPECT_EQ(w.ReadValue("HKEY_LOCAL_MACHINE\\SOFTWARE\\Nothing", "L1"), "");
    EXPECT_EQ(w.ReadValue("HKEY_CURRENT_USER\\k", "L1"), "");
    EXPECT_TRUE(prompts.messages.empty());

    ASSERT_TRUE(w.CreateKey("HKEY_CURRENT_USER\\测试\\b"));
    ASSERT_TRUE(w.DeleteValue("HKEY_CURRENT_USER\\测试", "路径"));
    EXPECT_EQ(reg.Find(RegistryRoot::CurrentUser, "测试", "路径"), nullptr);
    ASSERT_TRUE(w.DeleteKey("HKEY_CURRENT_USER\\测试"));
    EXPECT_EQ(reg.keys.size(), 1u);
    reg.log.clear();
    EXPECT_FALSE(w.DeleteKey("HKEY_LOCAL_MACHINE"));  // a root is never deleted
    EXPECT_FALSE(w.DeleteKey("HKEY_LOCAL_MACHINE\\"));
    EXPECT_TRUE(reg.log.empty());
}

TEST(RegistryWrapper, FailuresAreShownOnceWithTheirTexts) {
    test::FakeRegistry reg;
    test::FakePrompts prompts;
    RegistryWrapper w(reg, prompts);
    EXPECT_FALSE(w.WriteValue("HKEY_NOWHERE\\x", "a", "1"));
    EXPECT_FALSE(w.CreateKey("NOWHERE"));
    reg.failWith = 5;
    EXPECT_FALSE(w.CreateKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\x"));
    EXPECT_FALSE(w.WriteValue("HKEY_LOCAL_MACHINE\\SOFTWARE\\x", "a", "1"));
    EXPECT_EQ(w.ReadValue("HKEY_LOCAL_MACHINE\\SOFTWARE\\x", "a"), "");
    EXPECT_FALSE(w.DeleteValue("HKEY_LOCAL_MACHINE\\SOFTWARE\\x", "a"));
    EXPECT_FALSE(w.DeleteKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\x"));
    for (const char* path : {"HKLM\\SOFTWARE", "\\HKEY_LOCAL_MACHINE", "HKEY_LOCAL_MACHINEX"}) {
        EXPECT_FALSE(SplitKeyPath(path)) << path;
    }
    EXPECT_EQ(RegistryErrorText(-7), "Undefined Error Code:  -7");
    const std::string bad = RegistryErrorText(1010);
    const std::string denied = RegistryErrorText(5);
    const std::string key(kKeyErrorTitle);
    const std::string value(kValueErrorTitle);
    EXPECT_EQ(prompts.messages, (std::vector<Message>{{bad, value}, {bad, key}, {denied, key}, {denied, value},
                                                      {denied, value}, {denied, value}, {denied, key}}));
}

}  // namespace
}  // namespace lumora
