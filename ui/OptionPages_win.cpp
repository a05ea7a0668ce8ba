#include "ui/OptionPages_win.h"

#include <commctrl.h>
#include <commdlg.h>

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "common/SkinDescription.h"
#include "platform/WinText_win.h"
#include "playback/VideoSizing.h"
#include "settings/OptionForm.h"
#include "settings/OptionNames.h"
#include "settings/SettingsStore.h"
#include "ui/ControlIds.h"
#include "ui/Dpi_win.h"
#include "ui/Prompts_win.h"
#include "ui/SoundCardWindow_win.h"
#include "ui/Theme_win.h"
#include "ui/TipGuard_win.h"

namespace lumora {
namespace {

using namespace ids;

enum class Row {
    Check,    // a check box; with `companion`, a number field, list or colour button (`text2`) after its caption
    Radio,    // a radio group: `text`, `text2` and, for three choices, `text3`
    Slider,   // a label ("text" + the number) over a slider
    Number,   // a label with a number field after it
    Choice,   // a label with a drop-down list after it
    Colour,   // a colour button with a swatch
    Note,     // a line of explanation
    Heading,  // a line that heads the rows below it
};

struct RowLayout {
    Row kind;
    std::string_view option;
    std::string_view text;
    std::string_view text2 = {};
    std::string_view text3 = {};
    std::string_view tip = {};
    short indent = 0;
    std::string_view companion = {};
};

struct PageRows {
    const wchar_t* title;
    std::vector<RowLayout> rows;
};

constexpr std::string_view kNextFileNote = "在播放中切换时，播放下一首才生效。";
constexpr std::string_view kScaleCaption = "当自动调整视频窗口大小时，采用             倍大小。";
constexpr std::string_view kMenuColourTip = "设置主界面右键菜单和下拉菜单字的颜色。（在非状态下）";
constexpr std::string_view kBalloonPreview = "“气泡”试提示文本浏览";
constexpr std::string_view kSongMenuWarning = "设置不当“选歌”菜单会超出屏幕。";

// Where the list window opens at start, by the number kept for it.
constexpr std::string_view kListPlaces[] = {"上次的位置", "主窗体右侧", "主窗体下方"};

// The colour buttons of the balloons, and of the windows' own background and text.
constexpr std::string_view kBackColourButton = "背景颜色...";
constexpr std::string_view kTextColourButton = "文字颜色...";

// clang-format off
std::vector<PageRows> Pages() {
    using R = Row;
    return {
        {L"播放", {
            {R::Slider, opt::kBackSeconds, "设置“后退”秒数。当前设置为："},
            {R::Slider, opt::kForwardSeconds, "设置“前进”秒数。当前设置为："},
            {R::Radio, opt::kDecoder, "解码器1（有音频显示）", "解码器2（稳定）"},
            {R::Note, {}, kNextFileNote, {}, {}, {}, 12},
            {R::Radio, opt::kAskOnUnplayable, "无法播放文件时自动切换下一首", "无法播放文件时弹出出错对话框"},
            {R::Check, opt::kNoVolumeFade, "关闭音量渐变功能。延时:", {}, {}, {}, 0, opt::kVolumeFadeDelay},
            {R::Check, opt::kSamePlayer, "使用同一播放器"},
            {R::Check, opt::kSamePlayerShowsMain, "使用同一播放器时，播放新的媒体文件或列表文件时返回主界面"},
            {R::Check, opt::kMediaKeysAlways, "在其他程序的窗口中，键盘的媒体键也控制Lumora"},
        }},
        {L"视频", {
            {R::Radio, opt::kVideoStartSize, "播放视频时，直接全屏播放。", "播放视频时，自动调整视频窗口大小。",
             "播放视频时，使用视频窗口大小。（不调整视频窗口）"},
            {R::Choice, opt::kVideoScale, kScaleCaption, {}, {}, {}, 12},
            {R::Heading, {}, "当视频原始大小达不到用户所预定的大小时，则采用以下设置"},
            {R::Radio, opt::kSmallVideoSize, "使用全屏播放", "使用原始大小", "不调整视频窗口", {}, 12},
            {R::Check, opt::kCloseVideoForAudio, "当播放“音频”文件时自动关闭视频窗口"},
            {R::Check, opt::kVideoWindowAtStart, "启动时打开视频窗口"},
            {R::Check, opt::kNoVideoWindowForVideo, "播放“视频”文件时不弹出视频窗口"},
            {R::Check, opt::kStopScreenSaver, "在播放器正在播放的时，停止屏幕保护程序。（播放结束时会恢复）"},
            {R::Check, opt::kDecoderWorkaround, "启用“解码倒制”（此功能是为了解决在播放视频时出现没有声音、字幕外挂不起作用等一些解码异常的问题。启用后在播放下一首时才能生效放。）"},
        }},
        {L"列表与音乐库", {
            {R::Check, opt::kFilterLists, "“制作文件列表时使用“过滤”技术”"},
            {R::Check, opt::kSkipListFilterQuestion, "打开列表文件时跳过“过滤”检查"},
            {R::Check, opt::kDefaultListPlays, "“制作默认文件列表时加入直接播放方式”"},
            {R::Check, opt::kSaveListOnExit, "退出时保存当前文件列表到“默认文件列表”"},
            {R::Check, opt::kListReadsMediaInfo, "“文件列表框中直接截取媒体文件信息”"},
            {R::Check, opt::kClassicListTips, "“文件列表框使用“经典”提示文本”"},
            {R::Check, opt::kListWindowAtStart, "启动时打开列表窗口。位置：", {}, {}, {}, 0, opt::kListWindowPlace},
            {R::Check, opt::kLibraryRenameBox, "是否弹出“重新命名框”"},
            {R::Radio, opt::kLibraryNameIsTitle, "显示“文件名”", "显示“文件标题”", {}, {}, 12},
        }},
        {L"歌词与显示", {
            {R::Check, opt::kAutoOpenLyricsWindow, "当正在播放的媒体文件装有“歌词”时，自动打开“音频\\歌词显示”窗口"},
            {R::Check, opt::kAutoCloseLyricsWindow, "当正在播放的媒体文件没有“歌词”时，自动关闭“音频\\歌词显示”窗口"},
            {R::Check, opt::kLyricsWhileSeeking, "当播放的媒体文件有“动态歌词”时，并且移动“时间进度条”时显示歌词进度"},
            {R::Slider, opt::kLyricsOffset, "歌词提前显示（半秒，负数为推后）：当前设置为："},
            {R::Check, opt::kLyricsTimingCorrection, "读取LRC、SMI歌词文件时校正时间（时间轴拉长22%，每90秒减回1秒）"},
            {R::Check, opt::kRepairMediaInfo, "截取媒体文件信息时，使用“纠错”功能。（有时出现乱码）"},
            {R::Slider, opt::kRunningTextSpeed, "主界面滚动文字速度（最小值为1；最大值为100）：当前设置为："},
            {R::Check, opt::kColouredProgress, "进度滑道变色"},
            {R::Check, opt::kBubbles, "在使用“解码器2”时，“泡沫”显示开关"},
            {R::Check, opt::kColouredBubbles, "变色“泡沫”显示开关"},
            {R::Check, opt::kNoLyricsWindowBubbles, "关闭“音频显示\\歌词显示”窗口的“泡沫”"},
        }},
        {L"窗口与界面", {
            {R::Choice, opt::kSkin, "界面："},
            {R::Check, opt::kMainWindowTopmost, "“主窗体”在最前面"},
            {R::Check, opt::kListWindowTopmost, "“列表/音频显示框”在最前面"},
            {R::Check, opt::kTrayIcon, "“最小化到任务拦”", {}, {}, "设置在任务栏是否建立图标。"},
            {R::Check, opt::kShortcutButtons, "显示主窗体“快捷按钮”"},
            {R::Check, opt::kXpMenus, "使用XP菜单（Win98/ME不适合使用此功能）取消时必须重启此软件"},
            {R::Check, opt::kNoWindowFades, "关闭“窗口”渐变效果。"},
            {R::Check, opt::kBackgroundColours, "“背景”", kBackColourButton, {}, "打开设置“背景”选项。", 0, opt::kBackColour},
            {R::Check, opt::kPanelTextColours, "“字颜色”", kTextColourButton, {}, "打开“设置面板的颜色”选项。", 0, opt::kPanelTextColour},
            {R::Check, opt::kMenuColours, "“菜单”", {}, {}, "打开设置“菜单”选项。"},
            {R::Colour, opt::kMenuBackColour, "“字颜色1”", {}, {}, kMenuColourTip, 12},
            {R::Colour, opt::kMenuTextColour, "“字颜色2”", {}, {}, kMenuColourTip, 12},
        }},
        {L"提示", {
            {R::Check, opt::kBalloonHelp, "“显示“气泡”式帮助提示文本”"},
            {R::Check, opt::kInfoBalloons, "“显示“气泡”式信息提示文本”"},
            {R::Check, opt::kDefaultBalloonColours, "“气泡”提示文本，使用默认颜色"},
            {R::Colour, opt::kBalloonBackColour, kBackColourButton, {}, {}, {}, 12},
            {R::Colour, opt::kBalloonTextColour, kTextColourButton, {}, {}, {}, 12},
            {R::Check, opt::kStartupInfoBalloon, "启动提示软件信息(气泡提示)"},
            {R::Check, opt::kPlayInfoBalloon, "播放信息(气泡提示)"},
            {R::Check, opt::kHourlyChime, "整点报时(气泡提示)"},
        }},
        {L"选歌菜单", {
            {R::Check, opt::kFlatSongMenu, "“选歌”菜单采用“列表试”"},
            {R::Choice, opt::kSongMenuLayout, "“选歌”菜单布局："},
            {R::Check, opt::kAutoSongMenuType, "自动设置“选歌”菜单类型。"},
            {R::Number, opt::kSongMenuUpperBound, "此选项设置“选歌”菜单类型上限，范围：0至998", {}, {}, {}, 12},
            {R::Number, opt::kSongMenuLowerBound, "此选项设置“选歌”菜单类型下限，范围：上限的值+1至999", {}, {}, {}, 12},
            {R::Check, opt::kModuleSongMenu, "显示　主界面“模块式”选歌方式，“泡沫”信息提示"},
        }},
    };
}
// clang-format on

constexpr short kLeft = 6;
constexpr short kLineHeight = 10;
constexpr short kGap = 3;

// A caption's width in dialog units, to wrap long captions: four to a Latin letter (the unit's definition)
// and two letters' worth for a Chinese character, as the shell dialog fonts draw them.
short TextWidth(std::string_view utf8) {
    int units = 0;
    for (size_t i = 0; i < utf8.size(); ++i) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        if ((c & 0xC0) == 0x80) continue;
        units += c < 0x80 ? 4 : 8;
    }
    return static_cast<short>(units);
}

short LinesFor(std::string_view text, short width) {
    const short w = TextWidth(text);
    return static_cast<short>(w <= width ? 1 : (w + width - 1) / width);
}

int Id(std::string_view option, int part = 0) { return FormControlId(option, part); }

// A handled message: `value` is the dialog procedure's answer.
template <typename T>
bool Answer(INT_PTR& result, T value) {
    if constexpr (std::is_pointer_v<T>) {
        result = reinterpret_cast<INT_PTR>(value);
    } else {
        result = static_cast<INT_PTR>(value);
    }
    return true;
}

class OptionPage final : public SettingsPage {
public:
    OptionPage(PageRows layout, SettingsStore& edited) : layout_(std::move(layout)), edited_(edited) {}

    std::wstring Title() const override { return layout_.title; }

    void Layout(DialogTemplate& t) override {
        short y = 6;
        const auto add = [&](WORD atom, int id, std::string_view text, short x, short yy, short cx, short cy,
                             DWORD style) {
            t.AddControl(atom, static_cast<WORD>(id), Widen(text), x, yy, cx, cy, style);
        };
        for (const RowLayout& r : layout_.rows) {
            const short x = static_cast<short>(kLeft + r.indent);
            const short width = static_cast<short>(kWidth - x - kLeft);
            switch (r.kind) {
                case Row::Check: {
                    const short textWidth = static_cast<short>(r.companion.empty() ? width : TextWidth(r.text) + 14);
                    const short lines = LinesFor(r.text, static_cast<short>(width - 14));
                    const short h = static_cast<short>(lines * kLineHeight + 2);
                    add(DialogTemplate::kButton, Id(r.option), r.text, x, y, std::min(textWidth, width), h,
                        BS_AUTOCHECKBOX | BS_MULTILINE | BS_TOP | WS_TABSTOP | WS_GROUP);
                    if (!r.companion.empty() && FindFormItem(r.companion)->kind == FormControl::Colour) {
                        const short bx = static_cast<short>(x + textWidth + 4);
                        add(DialogTemplate::kButton, Id(r.companion), r.text2, bx, static_cast<short>(y - 2), 56, 13,
                            BS_PUSHBUTTON | WS_TABSTOP);
                        add(DialogTemplate::kStatic, Id(r.companion, 3), "", static_cast<short>(bx + 60),
                            static_cast<short>(y - 1), 24, 11, SS_NOTIFY | WS_BORDER);
                    } else if (!r.companion.empty() && FindFormItem(r.companion)->kind == FormControl::Choice) {
                        t.AddControl(WC_COMBOBOXW, static_cast<WORD>(Id(r.companion)), L"",
                                     static_cast<short>(x + textWidth + 4), static_cast<short>(y - 2), 80, 80,
                                     CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP);
                    } else if (!r.companion.empty()) {
                        add(DialogTemplate::kEdit, Id(r.companion), "", static_cast<short>(x + textWidth + 4),
                            static_cast<short>(y - 1), 30, 12, ES_NUMBER | ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP);
                    }
                    y = static_cast<short>(y + h + kGap);
                    break;
                }
                case Row::Radio: {
                    const std::string_view texts[] = {r.text, r.text2, r.text3};
                    for (int i = 0; i < 3 && !texts[i].empty(); ++i) {
                        const short h = static_cast<short>(LinesFor(texts[i], width - 14) * kLineHeight + 2);
                        add(DialogTemplate::kButton, Id(r.option, i), texts[i], x, y, width, h,
                            BS_AUTORADIOBUTTON | BS_MULTILINE | BS_TOP | (i == 0 ? WS_TABSTOP | WS_GROUP : 0));
                        y = static_cast<short>(y + h + 1);
                    }
                    y = static_cast<short>(y + kGap);
                    break;
                }
                case Row::Slider:
                    add(DialogTemplate::kStatic, Id(r.option, 3), r.text, x, y, width, kLineHeight,
                        SS_LEFT | SS_NOPREFIX | WS_GROUP);
                    t.AddControl(TRACKBAR_CLASSW, static_cast<WORD>(Id(r.option)), L"", x, static_cast<short>(y + 10),
                                 width, 14, TBS_HORZ | TBS_NOTICKS | TBS_FIXEDLENGTH | WS_TABSTOP);
                    y = static_cast<short>(y + 26 + kGap);
                    break;
                case Row::Number: {
                    // The fields of a page stand in one column at its right.
                    const short labelWidth = static_cast<short>(width - 40);
                    add(DialogTemplate::kStatic, Id(r.option, 3), r.text, x, static_cast<short>(y + 1), labelWidth,
                        kLineHeight, SS_LEFT | SS_NOPREFIX | WS_GROUP);
                    add(DialogTemplate::kEdit, Id(r.option), "", static_cast<short>(x + labelWidth + 4), y, 34, 12,
                        ES_NUMBER | ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP);
                    y = static_cast<short>(y + 14 + kGap);
                    break;
                }
                case Row::Choice: {
                    // A caption with a run of blanks takes the list in place of the blanks.
                    const size_t gap = r.text.find("   ");
                    const std::string_view before = gap == std::string_view::npos ? r.text : r.text.substr(0, gap);
                    const size_t afterAt =
                        r.text.find_first_not_of(' ', gap == std::string_view::npos ? r.text.size() : gap);
                    const std::string_view after = afterAt == std::string_view::npos ? "" : r.text.substr(afterAt);
                    const short beforeWidth = TextWidth(before);
                    const short listWidth = r.option == opt::kSkin || r.option == opt::kSongMenuLayout ? 120 : 60;
                    add(DialogTemplate::kStatic, Id(r.option, 3), before, x, static_cast<short>(y + 2), beforeWidth,
                        kLineHeight, SS_LEFT | SS_NOPREFIX | WS_GROUP);
                    const short listX = static_cast<short>(x + beforeWidth + 2);
                    t.AddControl(WC_COMBOBOXW, static_cast<WORD>(Id(r.option)), L"", listX, y, listWidth, 120,
                                 CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP);
                    if (!after.empty()) {
                        add(DialogTemplate::kStatic, Id(r.option, 1), after, static_cast<short>(listX + listWidth + 2),
                            static_cast<short>(y + 2), TextWidth(after), kLineHeight, SS_LEFT | SS_NOPREFIX);
                    }
                    y = static_cast<short>(y + 15 + kGap);
                    break;
                }
                case Row::Colour:
                    add(DialogTemplate::kButton, Id(r.option), r.text, x, y, 70, 13,
                        BS_PUSHBUTTON | WS_TABSTOP | WS_GROUP);
                    add(DialogTemplate::kStatic, Id(r.option, 3), "", static_cast<short>(x + 74),
                        static_cast<short>(y + 1), 24, 11, SS_NOTIFY | WS_BORDER);
                    if (r.option == opt::kBalloonTextColour) {
                        add(DialogTemplate::kStatic, IDC_SET_BALLOON_PREVIEW, kBalloonPreview,
                            static_cast<short>(x + 104), static_cast<short>(y - 8), 120, 14,
                            SS_CENTER | SS_CENTERIMAGE | SS_NOPREFIX | WS_BORDER);
                    }
                    y = static_cast<short>(y + 15 + kGap);
                    break;
                case Row::Note:
                case Row::Heading: {
                    const short h = static_cast<short>(LinesFor(r.text, width) * kLineHeight);
                    add(DialogTemplate::kStatic, -1, r.text, x, y, width, h, SS_LEFT | SS_NOPREFIX);
                    y = static_cast<short>(y + h + kGap);
                    break;
                }
            }
            if (r.option == opt::kAutoSongMenuType) {
                add(DialogTemplate::kStatic, IDC_SET_SONG_MENU_WARNING, kSongMenuWarning, x, y, width, kLineHeight,
                    SS_LEFT | SS_NOPREFIX);
                y = static_cast<short>(y + kLineHeight + kGap);
            }
        }
    }

    void OnInit(HWND page) override {
        page_ = page;
        tips_ = MakeControlTips(page);
        for (const RowLayout& r : layout_.rows) {
            if (r.option.empty()) continue;
            const FormItem* item = FindFormItem(r.option);
            if (!item) continue;
            Show(r, *item);
            // "“显示“气泡”式帮助提示文本”" governs these tips too.
            if (!r.tip.empty() && edited_.IsOn(opt::kBalloonHelp))
                AddControlTip(tips_, GetDlgItem(page, Id(r.option)), r.tip);
            if (!r.companion.empty()) {
                const FormItem* c = FindFormItem(r.companion);
                if (c->kind == FormControl::Choice) {
                    FillList(GetDlgItem(page, Id(r.companion)), r.companion, ShownValue(*c, edited_));
                } else if (c->kind != FormControl::Colour) {
                    SetDlgItemTextW(page, Id(r.companion), Widen(std::to_string(ShownValue(*c, edited_))).c_str());
                }
            }
        }
        FitRows();
        UpdateDependents();
    }

    bool OnMessage(HWND page, UINT msg, WPARAM wp, LPARAM lp, INT_PTR& result) override {
        switch (msg) {
            case WM_HSCROLL:
                for (const RowLayout& r : layout_.rows) {
                    if (r.kind == Row::Slider && reinterpret_cast<HWND>(lp) == GetDlgItem(page, Id(r.option))) {
                        ShowSliderLabel(r, SendMessageW(reinterpret_cast<HWND>(lp), TBM_GETPOS, 0, 0));
                    }
                }
                return Answer(result, TRUE);
            case WM_COMMAND: {
                const int id = LOWORD(wp);
                for (const RowLayout& r : layout_.rows) {
                    const std::string_view colour = ColourOf(r);
                    if (!colour.empty() && (id == Id(colour) || id == Id(colour, 3)) && HIWORD(wp) == BN_CLICKED) {
                        PickColour(colour);
                        return Answer(result, TRUE);
                    }
                }
                if (HIWORD(wp) == BN_CLICKED || HIWORD(wp) == CBN_SELCHANGE) UpdateDependents();
                return false;
            }
            case WM_CTLCOLORSTATIC: {
                const int id = GetDlgCtrlID(reinterpret_cast<HWND>(lp));
                auto dc = reinterpret_cast<HDC>(wp);
                for (const RowLayout& r : layout_.rows) {
                    const std::string_view colour = ColourOf(r);
                    if (!colour.empty() && id == Id(colour, 3)) return Answer(result, Brush(Colour(colour)));
                }
                if (id == IDC_SET_BALLOON_PREVIEW && IsWindowEnabled(reinterpret_cast<HWND>(lp))) {
                    SetTextColor(dc, Colour(opt::kBalloonTextColour));
                    SetBkColor(dc, Colour(opt::kBalloonBackColour));
                    return Answer(result, Brush(Colour(opt::kBalloonBackColour)));
                }
                if (id == IDC_SET_SONG_MENU_WARNING) {
                    HBRUSH panel = Theme::PaintPanel(dc);
                    SetTextColor(dc, Theme::Accent());
                    return Answer(result, panel);
                }
                return false;
            }
            case WM_DESTROY:
                for (auto& [colour, b] : brushes_) DeleteObject(b);
                brushes_.clear();
                return false;
        }
        return false;
    }

    bool Confirm(HWND page) override {
        for (const RowLayout& r : layout_.rows) {
            if (r.option.empty()) continue;
            if (!Take(page, r.option, r.kind == Row::Radio)) return false;
            if (!r.companion.empty() && !Take(page, r.companion, false)) return false;
        }
        return true;
    }

private:
    // A control that follows a caption on its line goes right after the caption's text as the font draws it:
    // the layout's estimate of a caption's width leaves a gap with most fonts.
    void FitRows() {
        const int checkBox = GetSystemMetrics(SM_CXMENUCHECK) + 8;
        for (const RowLayout& r : layout_.rows) {
            if (r.kind == Row::Check && !r.companion.empty()) {
                PlaceAfter(GetDlgItem(page_, Id(r.option)), checkBox, GetDlgItem(page_, Id(r.companion)));
                PlaceAfter(GetDlgItem(page_, Id(r.companion)), -1, GetDlgItem(page_, Id(r.companion, 3)));
            } else if (r.kind == Row::Choice) {
                HWND list = GetDlgItem(page_, Id(r.option));
                PlaceAfter(GetDlgItem(page_, Id(r.option, 3)), 0, list);
                if (HWND after = GetDlgItem(page_, Id(r.option, 1))) PlaceAfter(list, -1, after);
            }
        }
    }

    // Sizes `first` to its text (`extra` pixels beside it; -1 keeps its size) and puts `second` after it.
    void PlaceAfter(HWND first, int extra, HWND second) {
        if (!first || !second) return;
        RECT a, b;
        GetWindowRect(first, &a);
        GetWindowRect(second, &b);
        MapWindowPoints(nullptr, page_, reinterpret_cast<POINT*>(&a), 2);
        MapWindowPoints(nullptr, page_, reinterpret_cast<POINT*>(&b), 2);
        int width = a.right - a.left;
        if (extra >= 0) {
            const std::wstring text = WindowTextOf(first);
            HDC dc = GetDC(first);
            HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(first, WM_GETFONT, 0, 0)));
            SIZE size{};
            GetTextExtentPoint32W(dc, text.c_str(), static_cast<int>(text.size()), &size);
            SelectObject(dc, old);
            ReleaseDC(first, dc);
            width = size.cx + extra;
            SetWindowPos(first, nullptr, 0, 0, width, a.bottom - a.top, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        }
        SetWindowPos(second, nullptr, a.left + width + 4, b.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }

    void Show(const RowLayout& r, const FormItem& item) {
        const long long value = ShownValue(item, edited_);
        HWND control = GetDlgItem(page_, Id(r.option));
        switch (item.kind) {
            case FormControl::Slider:
                Theme::SliderThumb(control, WindowDpi(page_));
                SendMessageW(control, TBM_SETRANGE, FALSE, MAKELPARAM(FormBounds(item).low, FormBounds(item).high));
                SendMessageW(control, TBM_SETPOS, TRUE, static_cast<LPARAM>(value));
                ShowSliderLabel(r, static_cast<LRESULT>(value));
                break;
            case FormControl::Check:
                CheckDlgButton(page_, Id(r.option), value ? BST_CHECKED : BST_UNCHECKED);
                break;
            case FormControl::RadioPair:
            case FormControl::Choice:
                if (r.kind == Row::Radio) {
                    CheckDlgButton(page_, Id(r.option, static_cast<int>(value)), BST_CHECKED);
                } else {
                    FillList(control, r.option, value);
                }
                break;
            case FormControl::Number:
                SetDlgItemTextW(page_, Id(r.option), Widen(std::to_string(value)).c_str());
                break;
            case FormControl::Colour:
                break;  // the swatch paints the colour
        }
    }

    static void FillList(HWND list, std::string_view option, long long value) {
        const auto addEntry = [&](std::string_view text, int data) {
            const auto at = SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Widen(text).c_str()));
            SendMessageW(list, CB_SETITEMDATA, static_cast<WPARAM>(at), data);
            if (data == value) SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(at), 0);
        };
        if (option == opt::kSkin) {
            for (const SkinChoice& s : SkinChoices()) addEntry(s.name, s.value);
        } else if (option == opt::kSongMenuLayout) {
            for (int i = 0; i <= 99; ++i) addEntry(SongMenuLayoutEntry(i), i);
        } else if (option == opt::kListWindowPlace) {
            for (int i = 0; i < 3; ++i) addEntry(kListPlaces[i], i);
        } else if (option == opt::kVideoScale) {
            for (int i = 0; i <= 19; ++i) addEntry(VideoScaleEntry(i), i);
        }
    }

    void ShowSliderLabel(const RowLayout& r, LRESULT value) {
        SetDlgItemTextW(page_, Id(r.option, 3), Widen(std::string(r.text) + std::to_string(value)).c_str());
    }

    // Reads one control back into the edited store; a typed number out of range is refused.
    bool Take(HWND page, std::string_view option, bool radios) {
        const FormItem* item = FindFormItem(option);
        if (!item) return true;
        HWND control = GetDlgItem(page, Id(option));
        long long value = 0;
        switch (item->kind) {
            case FormControl::Slider:
                value = SendMessageW(control, TBM_GETPOS, 0, 0);
                break;
            case FormControl::Check:
                value = IsDlgButtonChecked(page, Id(option)) == BST_CHECKED;
                break;
            case FormControl::RadioPair:
                value = IsDlgButtonChecked(page, Id(option, 1)) == BST_CHECKED;
                break;
            case FormControl::Choice:
                if (radios) {
                    for (int i = 0; i < 3; ++i) {
                        if (IsDlgButtonChecked(page, Id(option, i)) == BST_CHECKED) value = i;
                    }
                } else {
                    const auto at = SendMessageW(control, CB_GETCURSEL, 0, 0);
                    if (at == CB_ERR) return true;
                    value = SendMessageW(control, CB_GETITEMDATA, static_cast<WPARAM>(at), 0);
                }
                break;
            case FormControl::Number: {
                const long long floor =
                    option == opt::kSongMenuLowerBound ? edited_.Number(opt::kSongMenuUpperBound).value_or(-1) : -1;
                const auto typed = TypedNumber(*item, Narrow(WindowTextOf(control)), floor);
                if (!typed) {
                    WinPrompts(page).ShowMessage(
                        NumberRangeMessage(std::max(FormBounds(*item).low, floor + 1), FormBounds(*item).high),
                        kSettingsTitle);
                    SetFocus(control);
                    SendMessageW(control, EM_SETSEL, 0, -1);
                    return false;
                }
                value = *typed;
                break;
            }
            case FormControl::Colour:
                return true;  // taken when picked
        }
        edited_.SetText(option, StoredText(*item, value));
        return true;
    }

    COLORREF Colour(std::string_view option) const {
        const FormItem* item = FindFormItem(option);
        return item ? static_cast<COLORREF>(ShownValue(*item, edited_)) : 0;
    }

    HBRUSH Brush(COLORREF colour) {
        HBRUSH& b = brushes_[colour];
        if (!b) b = CreateSolidBrush(colour);
        return b;
    }

    void PickColour(std::string_view option) {
        static COLORREF custom[16] = {};
        CHOOSECOLORW cc{};
        cc.lStructSize = sizeof cc;
        cc.hwndOwner = page_;
        cc.rgbResult = Colour(option);
        cc.lpCustColors = custom;
        cc.Flags = CC_RGBINIT | CC_FULLOPEN;
        if (!ChooseColorW(&cc)) return;
        edited_.SetText(option, StoredText(*FindFormItem(option), cc.rgbResult));
        InvalidateRect(GetDlgItem(page_, Id(option, 3)), nullptr, TRUE);
        InvalidateRect(GetDlgItem(page_, IDC_SET_BALLOON_PREVIEW), nullptr, TRUE);
    }

    // The colour a row picks: a colour row's own, or its check box's companion.
    static std::string_view ColourOf(const RowLayout& r) {
        if (r.kind == Row::Colour) return r.option;
        const FormItem* c = r.companion.empty() ? nullptr : FindFormItem(r.companion);
        return c && c->kind == FormControl::Colour ? r.companion : std::string_view{};
    }

    // Controls whose state follows another one on the same page.
    void UpdateDependents() {
        if (GetDlgItem(page_, IDC_SET_BALLOON_PREVIEW)) {
            // The balloon colours are the user's only while the default colours are off.
            const bool own = IsDlgButtonChecked(page_, Id(opt::kDefaultBalloonColours)) != BST_CHECKED;
            for (int id : {Id(opt::kBalloonBackColour), Id(opt::kBalloonBackColour, 3), Id(opt::kBalloonTextColour),
                           Id(opt::kBalloonTextColour, 3), IDC_SET_BALLOON_PREVIEW}) {
                EnableWindow(GetDlgItem(page_, id), own);
            }
        }
        if (HWND warning = GetDlgItem(page_, IDC_SET_SONG_MENU_WARNING)) {
            const auto at = SendDlgItemMessageW(page_, Id(opt::kSongMenuLayout), CB_GETCURSEL, 0, 0);
            const bool autoType = IsDlgButtonChecked(page_, Id(opt::kAutoSongMenuType)) == BST_CHECKED;
            RECT work{};
            SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
            const bool overflows = SongMenuOverflows(at == CB_ERR ? 0 : static_cast<int>(at), autoType,
                                                     work.bottom - work.top, GetSystemMetrics(SM_CYMENUSIZE));
            ShowWindow(warning, overflows ? SW_SHOW : SW_HIDE);
        }
        // The windows' own colours count only while their check box is on.
        for (const auto& [check, colour] : {std::pair{opt::kBackgroundColours, opt::kBackColour},
                                            std::pair{opt::kPanelTextColours, opt::kPanelTextColour}}) {
            if (!GetDlgItem(page_, Id(colour))) continue;
            const bool on = IsDlgButtonChecked(page_, Id(check)) == BST_CHECKED;
            for (int id : {Id(colour), Id(colour, 3)}) EnableWindow(GetDlgItem(page_, id), on);
        }
        if (HWND delay = GetDlgItem(page_, Id(opt::kVolumeFadeDelay))) {
            EnableWindow(delay, IsDlgButtonChecked(page_, Id(opt::kNoVolumeFade)) != BST_CHECKED);
        }
    }

    PageRows layout_;
    SettingsStore& edited_;
    HWND page_ = nullptr;
    HWND tips_ = nullptr;
    std::map<COLORREF, HBRUSH> brushes_;  // the swatches' and the preview's, one per colour
};

class ToolsPage final : public SettingsPage {
public:
    explicit ToolsPage(ToolActions actions) : actions_(std::move(actions)) {}
    std::wstring Title() const override { return L"工具"; }
    void Layout(DialogTemplate& t) override {
        t.AddControl(DialogTemplate::kStatic, static_cast<WORD>(-1), L"设置的备份与恢复：", 6, 8, 200, 10, SS_LEFT);
        t.AddControl(DialogTemplate::kButton, IDC_SET_BACKUP, L"备份设置...", 12, 22, 80, 14,
                     BS_PUSHBUTTON | WS_TABSTOP | WS_GROUP);
        t.AddControl(DialogTemplate::kButton, IDC_SET_RESTORE, L"恢复设置...", 98, 22, 80, 14,
                     BS_PUSHBUTTON | WS_TABSTOP);
        t.AddControl(DialogTemplate::kStatic, static_cast<WORD>(-1), L"声卡：", 6, 50, 200, 10, SS_LEFT);
        t.AddControl(DialogTemplate::kButton, IDC_SET_SOUND_CARD, Widen(kSoundCardButtonText), 12, 64, 110, 14,
                     BS_PUSHBUTTON | WS_TABSTOP | WS_GROUP);
    }
    void OnInit(HWND page) override {
        tips_ = MakeControlTips(page);
        AddControlTip(tips_, GetDlgItem(page, IDC_SET_SOUND_CARD), kSoundCardButtonTip);
    }
    bool OnMessage(HWND page, UINT msg, WPARAM wp, LPARAM, INT_PTR& result) override {
        if (msg != WM_COMMAND || HIWORD(wp) != BN_CLICKED) return false;
        HWND owner = GetAncestor(page, GA_ROOT);
        switch (LOWORD(wp)) {
            case IDC_SET_BACKUP:
                actions_.backup(owner);
                break;
            case IDC_SET_RESTORE:
                actions_.restore(owner);
                break;
            case IDC_SET_SOUND_CARD:
                actions_.inspectSoundCard(owner);
                break;
            default:
                return false;
        }
        result = TRUE;
        return true;
    }
    bool Confirm(HWND) override { return true; }

private:
    ToolActions actions_;
    HWND tips_ = nullptr;
};

}  // namespace

std::vector<std::unique_ptr<SettingsPage>> MakeOptionPages(SettingsStore& edited) {
    std::vector<std::unique_ptr<SettingsPage>> pages;
    for (PageRows& rows : Pages()) pages.push_back(std::make_unique<OptionPage>(std::move(rows), edited));
    return pages;
}

std::unique_ptr<SettingsPage> MakeToolsPage(ToolActions actions) {
    return std::make_unique<ToolsPage>(std::move(actions));
}

}  // namespace lumora
