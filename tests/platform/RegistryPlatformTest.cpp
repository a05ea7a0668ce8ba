// The registry wrapper and the settings store against Wine's real registry.
#include <windows.h>

#include <gtest/gtest.h>

#include <vector>

#include "platform/Registry_win.h"
#include "settings/RegistryWrapper.h"
#include "settings/SettingsStore.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

using test::FakePrompts;
using test::Message;

constexpr ScreenExtent kScreen{19200, 15360};

struct RawValue {
    LONG rc = -1;
    DWORD type = 0;
    std::vector<BYTE> bytes;
};

// Read with the plain system call, not through our code, as another tool would.
RawValue QueryRaw(HKEY root, const wchar_t* subKey, const wchar_t* name) {
    RawValue v;
    HKEY key = nullptr;
    v.rc = RegOpenKeyExW(root, subKey, 0, KEY_READ, &key);
    if (v.rc != ERROR_SUCCESS) return v;
    DWORD size = 0;
    v.rc = RegQueryValueExW(key, name, nullptr, &v.type, nullptr, &size);
    if (v.rc == ERROR_SUCCESS) {
        v.bytes.resize(size);
        v.rc = RegQueryValueExW(key, name, nullptr, &v.type, v.bytes.data(), &size);
        v.bytes.resize(size);
    }
    RegCloseKey(key);
    return v;
}

class RegistryPlatform : public ::testing::Test {
protected:
    void SetUp() override { reg.DeleteKey(RegistryRoot::LocalMachine, "SOFTWARE\\Tavrinsoft"); }
    void TearDown() override { SetUp(); }
    WinRegistry reg;
    FakePrompts prompts;
    RegistryWrapper wrapper{reg, prompts};
};

// Options are REG_BINARY decimal text; Chinese names and values are code page 936 bytes; they load back, and so
// does a value another tool wrote as a string.
TEST_F(RegistryPlatform, ValuesAreBinaryTextInCodePage936AndLoadBack) {
    ASSERT_TRUE(wrapper.CreateKey(kSetupKeyPath));
    ASSERT_TRUE(wrapper.WriteValue(kSetupKeyPath, "L6", "1"));
    const auto l6 = QueryRaw(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup", L"L6");
    ASSERT_EQ(l6.rc, ERROR_SUCCESS);
    EXPECT_EQ(l6.type, static_cast<DWORD>(REG_BINARY));
    EXPECT_EQ(l6.bytes, (std::vector<BYTE>{0x31}));

    ASSERT_TRUE(wrapper.WriteValue(kSetupKeyPath, "路径", "D:\\音乐播放器"));
    const auto raw = QueryRaw(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup", L"\u8def\u5f84");
    EXPECT_EQ(std::string(raw.bytes.begin(), raw.bytes.end()), "D:\\\xD2\xF4\xC0\xD6\xB2\xA5\xB7\xC5\xC6\xF7");
    EXPECT_EQ(wrapper.ReadValue(kSetupKeyPath, "路径"), "D:\\音乐播放器");
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Tavrinsoft\\TavrinPlayer\\setup", 0, KEY_WRITE, &key),
              ERROR_SUCCESS);
    const wchar_t text[] = L"77";
    RegSetValueExW(key, L"L1", 0, REG_SZ, reinterpret_cast<const BYTE*>(text), sizeof text);
    RegCloseKey(key);
    SettingsStore loaded;
    ASSERT_TRUE(LoadSettings(loaded, wrapper, kScreen));
    EXPECT_EQ(loaded.Text("L6") + loaded.Text("L1"), "177");
    EXPECT_TRUE(prompts.messages.empty());
}

// A key whose access list lets nobody in, as a limited account sees a machine-wide key; the owner may
// still change the list to clean up.
class DeniedKey {
public:
    DeniedKey(HKEY root, const wchar_t* path) : root_(root), path_(path) { SetAccess(true); }
    ~DeniedKey() {
        SetAccess(false);
        RegDeleteKeyW(root_, path_);
    }

private:
    void SetAccess(bool denied) {
        HKEY key = nullptr;
        if (RegCreateKeyExW(root_, path_, 0, nullptr, 0, WRITE_DAC, nullptr, &key, nullptr) != ERROR_SUCCESS) return;
        SECURITY_DESCRIPTOR sd;
        InitializeSecurityDescriptor(&sd, SECURITY_DESCRIPTOR_REVISION);
        alignas(DWORD) BYTE aclBuffer[64];
        auto* acl = reinterpret_cast<ACL*>(aclBuffer);
        InitializeAcl(acl, sizeof aclBuffer, ACL_REVISION);
        SetSecurityDescriptorDacl(&sd, TRUE, denied ? acl : nullptr, FALSE);
        RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, &sd);
        RegCloseKey(key);
    }
    HKEY root_;
    const wchar_t* path_;
};

TEST_F(RegistryPlatform, DeniedOrMalformedPathsGiveTheWrappersTexts) {
    DeniedKey denied(HKEY_CURRENT_USER, L"Software\\LumoraDenied");
    EXPECT_FALSE(wrapper.WriteValue("HKEY_CURRENT_USER\\Software\\LumoraDenied", "L1", "1"));
    EXPECT_EQ(wrapper.ReadValue("HKEY_CURRENT_USER\\Software\\LumoraDenied", "L1"), "");
    EXPECT_FALSE(wrapper.WriteValue("HKLM\\SOFTWARE\\Tavrinsoft", "L1", "1"));
    EXPECT_FALSE(wrapper.CreateKey("HKEY_PERFORMANCE_DATA\\Lumora"));
    const std::vector<Message> expected = {
        {"Access to this key is denied", "Lumora"},
        {"Access to this key is denied", "Lumora"},
        {"Bad Key Name", "Lumora"},
        {"Bad Key Name", "Error"},
    };
    EXPECT_EQ(prompts.messages, expected);
}

}  // namespace
}  // namespace lumora
