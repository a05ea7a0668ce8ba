#include <gtest/gtest.h>

#include "settings/RegistryWrapper.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

using test::Message;

TEST(RegistryWrapper, WritesCodePage936BytesAsBinaryReadsEveryTypeAndShowsFailures) {
    test::FakeRegistry reg;
    test::FakePrompts prompts;
    RegistryWrapper w(reg, prompts);
    ASSERT_TRUE(w.CreateKey("HKEY_CURRENT_USER\\测试"));
    ASSERT_TRUE(w.WriteValue("HKEY_CURRENT_USER\\测试", "路径", "C:\\播放器"));
    const RegistryValue* v = reg.Find(RegistryRoot::CurrentUser, "测试", "路径");
    EXPECT_EQ(std::pair(v->kind, v->data), std::pair(RegistryValue::Kind::Binary, std::string("C:\\\xB2\xA5\xB7\xC5\xC6\xF7")));
    EXPECT_EQ(w.ReadValue("HKEY_CURRENT_USER\\测试", "路径"), "C:\\播放器");
    reg.Put(RegistryRoot::CurrentUser, "k", "sz", {RegistryValue::Kind::Text, "音乐"});
    EXPECT_EQ(w.ReadValue("HKEY_CURRENT_USER\\k", "sz"), "音乐");  // values of other types read as text too
    EXPECT_EQ(w.ReadValue("HKEY_CURRENT_USER\\k", "L1"), "");  // a missing value reads empty without a box
    EXPECT_TRUE(prompts.messages.empty());

    ASSERT_TRUE(w.CreateKey("HKEY_CURRENT_USER\\测试\\b"));
    ASSERT_TRUE(w.DeleteValue("HKEY_CURRENT_USER\\测试", "路径"));
    ASSERT_TRUE(w.DeleteKey("HKEY_CURRENT_USER\\测试"));
    EXPECT_EQ(reg.keys.size(), 1u);
    reg.log.clear();
    EXPECT_FALSE(w.DeleteKey("HKEY_LOCAL_MACHINE\\"));  // a root is never deleted (the box is checked below)
    EXPECT_TRUE(reg.log.empty());

    // Failures are shown once each, with their texts.
    EXPECT_FALSE(w.WriteValue("HKEY_NOWHERE\\x", "a", "1"));
    EXPECT_FALSE(w.CreateKey("NOWHERE"));
    reg.failWith = 5;
    EXPECT_FALSE(w.CreateKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\x"));
    EXPECT_FALSE(w.WriteValue("HKEY_LOCAL_MACHINE\\SOFTWARE\\x", "a", "1"));
    EXPECT_EQ(w.ReadValue("HKEY_LOCAL_MACHINE\\SOFTWARE\\x", "a"), "");
    EXPECT_FALSE(w.DeleteKey("HKEY_LOCAL_MACHINE\\SOFTWARE\\x"));
    for (const char* path : {"HKLM\\SOFTWARE", "HKEY_LOCAL_MACHINEX"}) EXPECT_FALSE(SplitKeyPath(path)) << path;
    const std::string bad = RegistryErrorText(1010), denied = RegistryErrorText(5);
    const std::string key(kKeyErrorTitle), value(kValueErrorTitle);
    EXPECT_EQ(prompts.messages, (std::vector<Message>{{bad, key}, {bad, value}, {bad, key}, {denied, key}, {denied, value},
                                                      {denied, value}, {denied, key}}));
}

}  // namespace
}  // namespace lumora
