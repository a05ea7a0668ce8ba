// The settings dialog "功能与设置" driven from outside: what it shows, what "确定" saves, what "取消" leaves.
#include <commctrl.h>

#include <algorithm>
#include <map>
#include <vector>

#include "e2e/Driver.h"
#include "platform/Registry_win.h"
#include "settings/OptionForm.h"
#include "settings/OptionNames.h"
#include "shell/FileTypes.h"

namespace lumora::e2e {
namespace {

using namespace ids;

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

void Check(HWND dialog, std::string_view option, int part, bool on) {
    SendMessageW(PageControl(dialog, FormControlId(option, part)), BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0);
}

// Checks or clears a row of the file types' list (its check box is the row's state image).
void CheckRow(HWND list, int row, bool on) {
    AskInto(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), sizeof(LVITEMW), [&](char*) {
        LVITEMW item{};
        item.stateMask = LVIS_STATEIMAGEMASK;
        item.state = INDEXTOSTATEIMAGEMASK(on ? 2 : 1);
        return std::string(reinterpret_cast<const char*>(&item), sizeof item);
    });
}

}  // namespace

// "Lumora set" opens the file types; what they register reaches the shell as REG_SZ and REG_DWORD values,
// and taking it back leaves the user's classes as they were.
TEST_F(SessionTest, SetOpensTheFileTypesWhoseRegistrationIsTakenBackWithoutATrace) {
    ASSERT_TRUE(lumora_.Start("set"));
    HWND dialog = WaitForBox(kSettingsTitle);
    ASSERT_NE(dialog, nullptr);
    HWND list = PageControl(dialog, IDC_FILETYPES_LIST);
    ASSERT_TRUE(list && IsWindowVisible(list));  // the page shown first
    // Windows always has the user's classes key; a fresh Wine prefix may not, and it stays once made.
    WinRegistry registry;
    registry.CreateKey(RegistryRoot::CurrentUser, "Software\\Classes");
    const Tree before = UserClasses();
    const auto items = FileTypeItems();
    const int mp3 = static_cast<int>(std::find(items.begin(), items.end(), ".mp3") - items.begin());
    CheckRow(list, mp3, true);
    SendMessageW(PageControl(dialog, IDC_SHELLMENU_FOLDER), BM_SETCHECK, BST_CHECKED, 0);
    Click(dialog, IDOK);
    ASSERT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));

    const auto read = [&](const char* key, const char* name) {
        RegistryValue value;
        registry.Read(RegistryRoot::CurrentUser, std::string("Software\\Classes\\") + key, name, value);
        return value;
    };
    using Kind = RegistryValue::Kind;
    EXPECT_EQ(read(".mp3", ""), (RegistryValue{Kind::Text, "ZEV_.mp3"}));
    EXPECT_EQ(read("ZEV_.mp3", "BrowserFlags"), (RegistryValue{Kind::Number, "8"}));
    const RegistryValue command = read("ZEV_.mp3\\shell\\open\\command", "");
    EXPECT_EQ(command.kind, Kind::Text);
    EXPECT_TRUE(command.data.starts_with("\"") && command.data.ends_with("\\Lumora.exe\" %1")) << command.data;
    EXPECT_EQ(read("Directory\\shell\\ZEV-PLAYER\\command", ""), command);
    EXPECT_EQ(read("Directory\\shell\\ZEV-PLAYER", "MultiSelectModel"), (RegistryValue{Kind::Text, "Player"}));
    EXPECT_NE(UserClasses(), before);

    // A second "set" (the installer's page while Lumora runs) reaches the running Lumora.
    LumoraProcess second;
    second.Start(LumoraExe(), "set");
    dialog = WaitForBox(kSettingsTitle);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(second.ExitCode(), 0u);
    list = PageControl(dialog, IDC_FILETYPES_LIST);
    EXPECT_EQ(SendMessageW(list, LVM_GETITEMSTATE, static_cast<WPARAM>(mp3), LVIS_STATEIMAGEMASK),
              INDEXTOSTATEIMAGEMASK(2));
    EXPECT_EQ(SendMessageW(PageControl(dialog, IDC_SHELLMENU_FOLDER), BM_GETCHECK, 0, 0), BST_CHECKED);
    CheckRow(list, mp3, false);
    SendMessageW(PageControl(dialog, IDC_SHELLMENU_FOLDER), BM_SETCHECK, BST_UNCHECKED, 0);
    Click(dialog, IDOK);
    ASSERT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    EXPECT_EQ(UserClasses(), before);
}

// The installed program (tests/installer/run-round-trip.sh): the user chooses ".mp3" and the folder verb
// from the installer's last page and closes Lumora; the uninstaller must then take them away too.
TEST(Installed, ChoosesFileTypesAndClosesCleanly) {
    Session lumora;
    ASSERT_TRUE(lumora.Start("set"));
    HWND dialog = WaitForBox(kSettingsTitle);
    ASSERT_NE(dialog, nullptr);
    const auto items = FileTypeItems();
    CheckRow(PageControl(dialog, IDC_FILETYPES_LIST),
             static_cast<int>(std::find(items.begin(), items.end(), ".mp3") - items.begin()), true);
    SendMessageW(PageControl(dialog, IDC_SHELLMENU_FOLDER), BM_SETCHECK, BST_CHECKED, 0);
    Click(dialog, IDOK);
    ASSERT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    RegistryValue value;
    EXPECT_EQ(WinRegistry().Read(RegistryRoot::CurrentUser, "Software\\Classes\\.mp3", "", value), 0);
    PostMessageW(lumora.main, WM_CLOSE, 0, 0);
    EXPECT_EQ(lumora.process.ExitCode(), 0u);
}

TEST_F(SessionTest, SettingsShowTheStoredOptionsAndSaveThemOnlyOnConfirmation) {
    StoreOption("L1", "05");
    StoreOption("L53", "006");
    StoreOption("L26", "1");
    ASSERT_TRUE(lumora_.Start(""));
    const auto topmost = [&] { return (GetWindowLongW(lumora_.main, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; };
    EXPECT_TRUE(WaitFor(topmost));  // (the windows exist before the options are applied to them)
    HWND dialog = OpenBox(lumora_.main, IDM_SETTINGS, kSettingsTitle);
    ASSERT_NE(dialog, nullptr);
    const int back = FormControlId(opt::kBackSeconds);
    HWND slider = PageControl(dialog, back);
    ASSERT_NE(slider, nullptr);
    EXPECT_EQ(SendMessageW(slider, TBM_GETPOS, 0, 0), 5);
    EXPECT_EQ(Text(PageControl(dialog, FormControlId(opt::kBackSeconds, 3))), "设置“后退”秒数。当前设置为：5");
    EXPECT_EQ(SendMessageW(PageControl(dialog, FormControlId(opt::kDecoder, 1)), BM_GETCHECK, 0, 0), BST_CHECKED);
    EXPECT_EQ(SendMessageW(PageControl(dialog, FormControlId(opt::kFilterLists)), BM_GETCHECK, 0, 0), BST_CHECKED);

    // The tools page opens the sound card inspector with what the system's sound driver reports.
    HWND inspect = PageControl(dialog, IDC_SET_SOUND_CARD);
    ASSERT_NE(inspect, nullptr);
    Click(GetParent(inspect), IDC_SET_SOUND_CARD);
    HWND inspector = WaitForBox(kSoundCardTitle);
    ASSERT_NE(inspector, nullptr);
    const std::string name = ControlText(inspector, IDC_SOUND_NAME);
    EXPECT_EQ(name.rfind("产品（声卡）名称：", 0), 0u);
    EXPECT_GT(name.size(), std::string("产品（声卡）名称：").size());
    Click(inspector, IDCANCEL);
    ASSERT_TRUE(WaitFor([&] { return !IsWindow(inspector); }));

    // "取消" writes nothing.
    SendMessageW(slider, TBM_SETPOS, TRUE, 12);
    Check(dialog, opt::kFilterLists, 0, false);
    Click(dialog, IDCANCEL);
    ASSERT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    EXPECT_EQ(ReadOption("L1"), "05");
    EXPECT_EQ(ReadOption("L13"), std::nullopt);

    // "确定" writes every option as REG_BINARY text, numbers in their plain form; the slider's label follows it.
    dialog = OpenBox(lumora_.main, IDM_SETTINGS, kSettingsTitle);
    ASSERT_NE(dialog, nullptr);
    slider = PageControl(dialog, back);
    SendMessageW(slider, TBM_SETPOS, TRUE, 12);
    SendMessageW(GetParent(slider), WM_HSCROLL, MAKEWPARAM(TB_THUMBPOSITION, 12), reinterpret_cast<LPARAM>(slider));
    EXPECT_EQ(Text(PageControl(dialog, FormControlId(opt::kBackSeconds, 3))), "设置“后退”秒数。当前设置为：12");
    Check(dialog, opt::kFilterLists, 0, false);
    Check(dialog, opt::kDecoder, 1, false);  // the radio pair: decoder 1
    Check(dialog, opt::kDecoder, 0, true);
    Check(dialog, opt::kMainWindowTopmost, 0, false);
    Click(dialog, IDOK);
    ASSERT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    EXPECT_FALSE(topmost());  // at once
    EXPECT_EQ(ReadOption("L1"), "12");
    EXPECT_EQ(ReadOption("L13"), "0");
    EXPECT_EQ(ReadOption("L25"), "0");
    EXPECT_EQ(ReadOption("L53"), "6");
    EXPECT_EQ(ReadOption("L35"), "2");
}

}  // namespace lumora::e2e
