#include "ui/SoundCardWindow_win.h"

#include <commctrl.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/WaveOutInfo_win.h"
#include "platform/WinText_win.h"
#include "ui/ControlIds.h"
#include "ui/DialogTemplate_win.h"
#include "ui/ImageButton_win.h"
#include "ui/Prompts_win.h"
#include "ui/Theme_win.h"
#include "ui/TipGuard_win.h"
#include "ui/WindowBase_win.h"

namespace lumora {
namespace {

using namespace ids;

constexpr WORD kListBox = 0x0083;

class SoundCardWindow final : public WindowBase<SoundCardWindow> {
public:
    SoundCardWindow(WaveOutInfo& device, WinPrompts& prompts, SoundCardReport first)
        : device_(device), prompts_(prompts), first_(std::move(first)) {}

    INT_PTR OnDialogMessage(UINT msg, WPARAM wp, LPARAM lp) {
        switch (msg) {
            case WM_INITDIALOG:
                OnInit();
                MakeImageButtons(hwnd_);
                return TRUE;
            case WM_DRAWITEM:  // its push buttons are image buttons
                DrawImageButton(*reinterpret_cast<const DRAWITEMSTRUCT*>(lp));
                return TRUE;
            case WM_CTLCOLORDLG:
            case WM_CTLCOLORBTN:
                return reinterpret_cast<INT_PTR>(Theme::PaintPanel(reinterpret_cast<HDC>(wp)));
            case WM_CTLCOLORSTATIC: {
                HDC dc = reinterpret_cast<HDC>(wp);
                HBRUSH brush = Theme::PaintPanel(dc);
                const int id = GetDlgCtrlID(reinterpret_cast<HWND>(lp));
                if (id == IDC_SOUND_FORMATS_HEADING || id == IDC_SOUND_FUNCTIONS_HEADING) {
                    SetTextColor(dc, Theme::Accent());
                }
                return reinterpret_cast<INT_PTR>(brush);
            }
            case WM_CTLCOLORLISTBOX:
                return reinterpret_cast<INT_PTR>(Theme::PaintDisplay(reinterpret_cast<HDC>(wp)));
            case WM_COMMAND:
                if (LOWORD(wp) == IDC_SOUND_AGAIN) {
                    if (auto report = InspectSoundCard(device_, prompts_)) Show(*report);
                } else if (LOWORD(wp) == IDCANCEL) {
                    EndDialog(hwnd_, IDCANCEL);
                }
                return TRUE;
            case WM_CLOSE:
                EndDialog(hwnd_, IDCANCEL);
                return TRUE;
        }
        return FALSE;
    }

private:
    void OnInit() {
        SetWindowTextW(hwnd_, Widen(kSoundCardTitle).c_str());
        prompts_.SetOwner(hwnd_);
        // One standard tip for both lists; it goes with the dialog, its owner.
        HWND tip = MakeControlTips(hwnd_);
        AddControlTip(tip, GetDlgItem(hwnd_, IDC_SOUND_FORMATS), kSoundCardFormatsTip);
        AddControlTip(tip, GetDlgItem(hwnd_, IDC_SOUND_FUNCTIONS), kSoundCardFunctionsTip);
        Show(first_);
    }

    void Show(const SoundCardReport& r) {
        const std::pair<int, const std::string*> labels[] = {
            {IDC_SOUND_NAME, &r.name},       {IDC_SOUND_PRODUCT, &r.product},   {IDC_SOUND_DRIVER, &r.driver},
            {IDC_SOUND_VERSION, &r.version}, {IDC_SOUND_CHANNELS, &r.channels},
        };
        for (const auto& [id, text] : labels) SetDlgItemTextW(hwnd_, id, Widen(*text).c_str());
        Fill(IDC_SOUND_FORMATS, r.formats);
        Fill(IDC_SOUND_FUNCTIONS, r.functions);
    }

    void Fill(int id, const std::vector<std::string>& lines) {
        SendDlgItemMessageW(hwnd_, id, LB_RESETCONTENT, 0, 0);
        for (const auto& line : lines) {
            SendDlgItemMessageW(hwnd_, id, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Widen(line).c_str()));
        }
    }

    WaveOutInfo& device_;
    WinPrompts& prompts_;    // owned by the window while it shows
    SoundCardReport first_;  // what the opening inspection found, shown at WM_INITDIALOG
};

}  // namespace

void ShowSoundCardInspector(HWND owner) {
    WinWaveOutInfo device;
    WinPrompts prompts(owner);
    std::optional<SoundCardReport> report = InspectSoundCard(device, prompts);
    if (!report) return;

    constexpr DWORD kLabel = SS_LEFT | SS_NOPREFIX;
    constexpr DWORD kList = WS_BORDER | WS_VSCROLL | LBS_NOSEL | LBS_NOINTEGRALHEIGHT;
    DialogTemplate t(Widen(kSoundCardTitle), 236, 256, DS_MODALFRAME | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU);
    t.AddControl(DialogTemplate::kStatic, IDC_SOUND_NAME, L"", 8, 8, 220, 10, kLabel | SS_ENDELLIPSIS);
    t.AddControl(DialogTemplate::kStatic, IDC_SOUND_PRODUCT, L"", 8, 22, 104, 10, kLabel);
    t.AddControl(DialogTemplate::kStatic, IDC_SOUND_DRIVER, L"", 120, 22, 108, 10, kLabel);
    t.AddControl(DialogTemplate::kStatic, IDC_SOUND_VERSION, L"", 8, 36, 104, 10, kLabel);
    t.AddControl(DialogTemplate::kStatic, IDC_SOUND_CHANNELS, L"", 120, 36, 108, 10, kLabel);
    t.AddControl(DialogTemplate::kStatic, IDC_SOUND_FORMATS_HEADING, Widen(kSoundCardFormatsHeading), 8, 54, 220, 10,
                 kLabel);
    t.AddControl(kListBox, IDC_SOUND_FORMATS, L"", 8, 66, 220, 100, kList);
    t.AddControl(DialogTemplate::kStatic, IDC_SOUND_FUNCTIONS_HEADING, Widen(kSoundCardFunctionsHeading), 8, 174, 220,
                 10, kLabel);
    t.AddControl(kListBox, IDC_SOUND_FUNCTIONS, L"", 8, 186, 220, 44, kList);
    t.AddControl(DialogTemplate::kButton, IDC_SOUND_AGAIN, L"重新检测", 118, 234, 52, 14,
                 BS_DEFPUSHBUTTON | WS_TABSTOP);
    t.AddControl(DialogTemplate::kButton, IDCANCEL, kCloseText, 176, 234, 52, 14, BS_PUSHBUTTON | WS_TABSTOP);
    SoundCardWindow window(device, prompts, std::move(*report));
    DialogBoxIndirectParamW(GetModuleHandleW(nullptr), t.Get(), owner, SoundCardWindow::DlgProc,
                            reinterpret_cast<LPARAM>(&window));
}

}  // namespace lumora
