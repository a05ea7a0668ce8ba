#pragma once
// One page of the settings dialog "功能与设置". The dialog owns the tab strip and makes each page a
// child dialog of its display area from the template the page lays out; the page fills its controls,
// answers its own messages and, on the dialog's confirmation, reads its controls back.
#include <windows.h>

#include <string>

#include "ui/DialogTemplate_win.h"

namespace lumora {

class SettingsPage {
public:
    // A page's area in dialog units; every page lays its controls out inside it.
    static constexpr short kWidth = 330;
    static constexpr short kHeight = 230;

    virtual ~SettingsPage() = default;
    // The tab's caption.
    virtual std::wstring Title() const = 0;
    // Adds the page's controls to its child-dialog template (kWidth x kHeight).
    virtual void Layout(DialogTemplate& page) = 0;
    // WM_INITDIALOG of the page: show the current state in the controls.
    virtual void OnInit(HWND page) = 0;
    // Every other message of the page (WM_COMMAND, WM_HSCROLL, WM_NOTIFY...). True when handled;
    // `result` is then the dialog procedure's answer.
    virtual bool OnMessage(HWND page, UINT msg, WPARAM wp, LPARAM lp, INT_PTR& result) {
        (void)page, (void)msg, (void)wp, (void)lp, (void)result;
        return false;
    }
    // The dialog's "确定": read the controls back and apply them. False keeps the dialog open (the
    // page has told the user why and put the focus where the fault is).
    virtual bool Confirm(HWND page) = 0;
};

}  // namespace lumora
