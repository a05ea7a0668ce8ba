// File types and the folder verb in Wine's real registry: the value types the shell reads, and a removal
// that leaves the user's classes exactly as they were. (Wine's HKEY_CLASSES_ROOT does not merge the user's
// classes as Windows does, so they are read where they are written.)
#include <windows.h>

#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "platform/Registry_win.h"
#include "platform/WinText_win.h"
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
    DWORD maxName = 0, maxData = 0;
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, &maxName, nullptr, nullptr, nullptr, &maxData, nullptr,
                     nullptr);
    std::vector<wchar_t> name(32768);
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

// The raw value as the shell reads it: its type and, for a string, its text.
std::pair<DWORD, std::wstring> Raw(const wchar_t* key, const wchar_t* name) {
    wchar_t data[512] = {};
    DWORD type = 0, size = sizeof data - sizeof(wchar_t);
    HKEY open = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, key, 0, KEY_READ, &open) != ERROR_SUCCESS) return {0, L""};
    const LONG rc = RegQueryValueExW(open, name, nullptr, &type, reinterpret_cast<BYTE*>(data), &size);
    RegCloseKey(open);
    if (rc != ERROR_SUCCESS) return {0, L""};
    DWORD number = 0;
    memcpy(&number, data, sizeof number);
    return {type, type == REG_DWORD ? std::to_wstring(number) : std::wstring(data)};
}

TEST(ShellRegistrationPlatform, RegisteredAndRemovedLeavingTheUsersClassesAsBefore) {
    const Tree before = UserClasses();
    WinRegistry registry;
    test::FakePrompts prompts;
    RegistryWrapper wrapper(registry, prompts);
    FileTypeRegistrar registrar(wrapper, "C:\\Program Files\\Lumora\\Lumora.exe");
    ASSERT_TRUE(registrar.RegisterFileType(".mp3", registrar.ProgramIcon()));
    ASSERT_TRUE(registrar.SetFolderVerb(true));

    const std::wstring command = L"\"C:\\Program Files\\Lumora\\Lumora.exe\" %1";
    const struct {
        const wchar_t *key, *name;
        DWORD type;
        std::wstring value;
    } expected[] = {
        {L"Software\\Classes\\.mp3", nullptr, REG_SZ, L"ZEV_.mp3"},
        {L"Software\\Classes\\ZEV_.mp3", L"EditFlags", REG_DWORD, L"65536"},
        {L"Software\\Classes\\ZEV_.mp3", L"BrowserFlags", REG_DWORD, L"8"},
        {L"Software\\Classes\\ZEV_.mp3\\shell\\open\\command", nullptr, REG_SZ, command},
        {L"Software\\Classes\\Directory\\shell\\ZEV-PLAYER\\command", nullptr, REG_SZ, command},
        {L"Software\\Classes\\Directory\\shell\\ZEV-PLAYER", L"MultiSelectModel", REG_SZ, L"Player"},
        {L"Software\\RegisteredApplications", L"Lumora", REG_SZ, L"Software\\Tavrinsoft\\TavrinPlayer\\Capabilities"},
    };
    for (const auto& e : expected) {
        EXPECT_EQ(Raw(e.key, e.name), std::make_pair(e.type, e.value)) << Narrow(e.key);
    }
    EXPECT_TRUE(registrar.RefreshFileTypeItem(".mp3").handled);
    EXPECT_TRUE(registrar.FolderVerbSet());

    ASSERT_TRUE(registrar.RemoveFileType(".mp3"));
    ASSERT_TRUE(registrar.SetFolderVerb(false));
    EXPECT_TRUE(UserClasses() == before);
    EXPECT_TRUE(prompts.messages.empty());
}

}  // namespace
}  // namespace lumora
