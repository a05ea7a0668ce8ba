#pragma once
// Keeps a tooltip window from outliving the pointer. A subclassed tool only hears the mouse while the
// pointer is over it, so a pointer that leaves straight for another program or the desktop leaves the
// tip standing there (Wine does so every time). While a tip shows, a timer checks where the pointer is.
#include <windows.h>
#include <commctrl.h>

#include <string>
#include <string_view>

#include "platform/WinText_win.h"

namespace lumora {

inline constexpr wchar_t kTipGuardProp[] = L"Lumora.TipGuard";
inline constexpr UINT_PTR kTipGuardTimer = 0x7417;
inline constexpr UINT kTipGuardMs = 200;

// The pointer still lies on the tool the tip belongs to, inside that tool's own window.
inline bool PointerOnCurrentTool(HWND tip) {
    TOOLINFOW info{};
    info.cbSize = TTTOOLINFOW_V2_SIZE;
    if (!SendMessageW(tip, TTM_GETCURRENTTOOLW, 0, reinterpret_cast<LPARAM>(&info))) return false;
    const HWND tool = (info.uFlags & TTF_IDISHWND) ? reinterpret_cast<HWND>(info.uId) : info.hwnd;
    POINT pt;
    RECT r;
    if (!IsWindow(tool) || !IsWindowVisible(tool) || !GetCursorPos(&pt) || !GetWindowRect(tool, &r)) return false;
    const HWND under = WindowFromPoint(pt);
    return PtInRect(&r, pt) && under && GetAncestor(under, GA_ROOT) == GetAncestor(tool, GA_ROOT);
}

inline LRESULT CALLBACK TipGuardProc(HWND tip, UINT msg, WPARAM wp, LPARAM lp) {
    const auto old = reinterpret_cast<WNDPROC>(GetPropW(tip, kTipGuardProp));
    switch (msg) {
        case WM_WINDOWPOSCHANGED: {
            const auto* pos = reinterpret_cast<const WINDOWPOS*>(lp);
            if (pos->flags & SWP_SHOWWINDOW) SetTimer(tip, kTipGuardTimer, kTipGuardMs, nullptr);
            if (pos->flags & SWP_HIDEWINDOW) KillTimer(tip, kTipGuardTimer);
            break;
        }
        case WM_TIMER:
            if (wp != kTipGuardTimer) break;
            if (!IsWindowVisible(tip) || !PointerOnCurrentTool(tip)) {
                KillTimer(tip, kTipGuardTimer);
                SendMessageW(tip, TTM_POP, 0, 0);
            }
            return 0;
        case WM_NCDESTROY:
            KillTimer(tip, kTipGuardTimer);
            RemovePropW(tip, kTipGuardProp);
            SetWindowLongPtrW(tip, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(old));
            break;
    }
    return old ? CallWindowProcW(old, tip, msg, wp, lp) : DefWindowProcW(tip, msg, wp, lp);
}

inline void GuardTip(HWND tip) {
    if (!tip || GetPropW(tip, kTipGuardProp)) return;
    const LONG_PTR old = GetWindowLongPtrW(tip, GWLP_WNDPROC);
    SetPropW(tip, kTipGuardProp, reinterpret_cast<HANDLE>(old));
    SetWindowLongPtrW(tip, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(TipGuardProc));
}

// A standard tip window for a dialog's controls, guarded as above; it goes with its owner.
inline HWND MakeControlTips(HWND owner) {
    HWND tips = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                                CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, owner, nullptr,
                                GetModuleHandleW(nullptr), nullptr);
    SendMessageW(tips, TTM_SETMAXTIPWIDTH, 0, 400);  // long explanations wrap
    GuardTip(tips);
    return tips;
}

// `text` as the tip of `control`, a child of a dialog.
inline void AddControlTip(HWND tips, HWND control, std::string_view text) {
    if (!control) return;
    std::wstring wide = Widen(text);
    TOOLINFOW info{};
    info.cbSize = TTTOOLINFOW_V2_SIZE;
    info.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    info.hwnd = GetParent(control);
    info.uId = reinterpret_cast<UINT_PTR>(control);
    info.lpszText = wide.data();
    SendMessageW(tips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info));
}

}  // namespace lumora
