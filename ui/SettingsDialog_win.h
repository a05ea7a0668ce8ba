#pragma once
// The settings dialog "功能与设置": a tab strip over pages (ui/SettingsPage_win.h). "确定" asks every
// page to take its controls back, page by page; a page that refuses keeps the dialog open on itself.
// "取消" and Esc leave everything as it was.
#include <windows.h>

#include <functional>
#include <memory>
#include <vector>

#include "ui/SettingsPage_win.h"
#include "ui/WindowBase_win.h"

namespace lumora {

class SettingsDialog final : public WindowBase<SettingsDialog> {
public:
    SettingsDialog(std::vector<std::unique_ptr<SettingsPage>> pages, int firstPage);
    ~SettingsDialog();

    // Modal over `owner`; true when every page confirmed. `onOpen` gets the dialog's window as it opens
    // (the owner of the boxes its pages show).
    bool Run(HWND owner, const std::function<void(HWND)>& onOpen = nullptr);

    INT_PTR OnDialogMessage(UINT msg, WPARAM wp, LPARAM lp);

private:
    class PageHost;

    void OnInit();
    void Show(int index);
    void Confirm();
    void FitTabs();
    void PlacePages();
    static LRESULT CALLBACK KeyHook(int code, WPARAM wp, LPARAM lp);

    std::vector<std::unique_ptr<SettingsPage>> pages_;
    std::vector<std::unique_ptr<PageHost>> hosts_;
    int current_ = 0;
    HHOOK hook_ = nullptr;
    std::function<void(HWND)> onOpen_;
};

}  // namespace lumora
