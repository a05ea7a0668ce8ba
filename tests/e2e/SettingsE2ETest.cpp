// The settings dialog "功能与设置" driven from outside: what it shows, what "确定" saves, what "取消" leaves.
#include <commctrl.h>

#include "e2e/Driver.h"
#include "settings/OptionForm.h"
#include "settings/OptionNames.h"

namespace lumora::e2e {
namespace {

using namespace ids;

// A control of one of the dialog's pages (each page is a child dialog of the frame).
HWND PageControl(HWND dialog, int id) {
    for (HWND page = FindWindowExW(dialog, nullptr, L"#32770", nullptr); page;
         page = FindWindowExW(dialog, page, L"#32770", nullptr)) {
        if (HWND control = GetDlgItem(page, id)) return control;
    }
    return nullptr;
}

void Check(HWND dialog, std::string_view option, int part, bool on) {
    SendMessageW(PageControl(dialog, FormControlId(option, part)), BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0);
}

}  // namespace

TEST_F(SessionTest, SettingsShowTheStoredOptionsAndSaveThemOnlyOnConfirmation) {
    StoreOption("L1", "05");
    StoreOption("L53", "006");
    ASSERT_TRUE(lumora_.Start(""));
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
    Click(dialog, IDOK);
    ASSERT_TRUE(WaitFor([&] { return !IsWindow(dialog); }));
    EXPECT_EQ(ReadOption("L1"), "12");
    EXPECT_EQ(ReadOption("L13"), "0");
    EXPECT_EQ(ReadOption("L25"), "0");
    EXPECT_EQ(ReadOption("L53"), "6");
    EXPECT_EQ(ReadOption("L35"), "2");
}

}  // namespace lumora::e2e
