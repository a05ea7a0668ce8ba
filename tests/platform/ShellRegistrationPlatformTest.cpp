// File types and the folder verb in Wine's real registry: the value types the shell reads, and a removal
// that leaves the user's classes exactly as they were. (Wine's HKEY_CLASSES_ROOT does not merge the user's
// classes as Windows does, so they are read where they are written.)
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <vector>

#include "platform/Registry_win.h"
#include "settings/RegistryWrapper.h"
#include "shell/FileTypes.h"
#include "support/Fakes.h"

namespace lumora {
namespace {

// Every key and value below `path`, with each value's type and bytes.
using Tree = std::map<std::wstring, std::wstring>;
void Snapshot(const std::wstring& path, Tree& tree) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    tree[path] = L"key";
    DWORD maxKey = 0, maxName = 0, maxData = 0;
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, &maxKey, nullptr, nullptr, &maxName, &maxData, nullptr,
                     nullptr);
    std::vector<wchar_t> name(std::max(maxKey, maxName) + 1);
    std::vector<BYTE> data(maxData + 2);
    for (DWORD i = 0;; ++i) {
        DWORD n = static_cast<DWORD>(name.size()), type = 0, size = static_cast<DWORD>(data.size());
        if (RegEnumValueW(key, i, name.data(), &n, nullptr, &type, data.data(), &size) != ERROR_SUCCESS) break;
        tree[path + L"|" + std::wstring(name.data(), n)] =
            std::to_wstring(type) + L":" + std::wstring(data.begin(), data.begin() + size);
    }
    std::vector<std::wstring> children;
    for (DWORD i = 0;; ++i) {
        DWORD n = static_cast<DWORD>(name.size());
        if (RegEnumKeyExW(key, i, name.data(), &n, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) break;
        children.emplace_back(name.data(), n);
    }
    RegCloseKey(key);
    for (const auto& child : children) Snapshot(path + L"\\" + child, tree);
}

Tree UserClasses() {
    Tree tree;
    for (const wchar_t* path : {L"Software\\Classes", L"Software\\RegisteredApplications",
                                L"Software\\Tavrinsoft\\TavrinPlayer\\Capabilities"})
        Snapshot(path, tree);
    return tree;
}

TEST(ShellRegistrationPlatform, RegisteredAndRemovedLeavingTheUsersClassesAsBefore) {
    const Tree before = UserClasses();
    WinRegistry registry;
    test::FakePrompts prompts;
    RegistryWrapper wrapper(registry, prompts);
    FileTypeRegistrar registrar(wrapper, "C:\\Program Files\\Lumora\\Lumora.exe");
    ASSERT_TRUE(registrar.RegisterFileType(".mp3", registrar.ProgramIcon()));
    ASSERT_TRUE(registrar.SetFolderVerb(true));

    const std::string command = "\"C:\\Program Files\\Lumora\\Lumora.exe\" %1";
    using Kind = RegistryValue::Kind;
    const struct {
        const char *key, *name;
        RegistryValue value;  // Text: REG_SZ, Number: REG_DWORD
    } expected[] = {
        {"Software\\Classes\\.mp3", "", {Kind::Text, "ZEV_.mp3"}},
        {"Software\\Classes\\ZEV_.mp3", "BrowserFlags", {Kind::Number, "8"}},
        {"Software\\Classes\\ZEV_.mp3\\shell\\open\\command", "", {Kind::Text, command}},
        {"Software\\Classes\\Directory\\shell\\ZEV-PLAYER\\command", "", {Kind::Text, command}},
        {"Software\\Classes\\Directory\\shell\\ZEV-PLAYER", "MultiSelectModel", {Kind::Text, "Player"}},
        {"Software\\RegisteredApplications",
         "Lumora",
         {Kind::Text, "Software\\Tavrinsoft\\TavrinPlayer\\Capabilities"}},
    };
    for (const auto& e : expected) {
        RegistryValue value;
        registry.Read(RegistryRoot::CurrentUser, e.key, e.name, value);
        EXPECT_EQ(value, e.value) << e.key;
    }

    ASSERT_TRUE(registrar.RemoveFileType(".mp3"));
    ASSERT_TRUE(registrar.SetFolderVerb(false));
    EXPECT_EQ(UserClasses(), before);
    EXPECT_TRUE(prompts.messages.empty());
}

}  // namespace
}  // namespace lumora
