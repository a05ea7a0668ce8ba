#pragma once
// The icon chooser: the icons of an icon file, a program or a library, the system's icon library offered
// first, and the chosen one's position as "图标序列：".
#include <windows.h>
// After windows.h, which it needs.
#include <commctrl.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "shell/FileTypes.h"
#include "ui/WindowBase_win.h"

namespace lumora {

inline constexpr std::string_view kIconIndexLabel = "图标序列：";

// An icon handle destroyed with its holder.
class IconHandle {
public:
    explicit IconHandle(HICON icon = nullptr) : icon_(icon) {}
    IconHandle(const IconHandle&) = delete;
    IconHandle& operator=(const IconHandle&) = delete;
    ~IconHandle() { Reset(); }
    void Reset(HICON icon = nullptr) {
        if (icon_) DestroyIcon(icon_);
        icon_ = icon;
    }
    HICON get() const { return icon_; }

private:
    HICON icon_;
};

// The large icon `index` of `file`, or none.
HICON ExtractLargeIcon(const std::string& file, int index);

class IconChooser final : public WindowBase<IconChooser> {
public:
    // `programPath` is offered among the files, after the system's icon library.
    explicit IconChooser(std::string programPath);
    ~IconChooser();

    // Modal over `owner`, starting at `initial`; the chosen icon, or empty optional on cancel.
    std::optional<IconChoice> Run(HWND owner, const IconChoice& initial);

    INT_PTR OnDialogMessage(UINT msg, WPARAM wp, LPARAM lp);

private:
    void OnInit();
    // Shows the icons of files_[at], `select` among them.
    void ShowFile(size_t at, int select);
    size_t AddFile(const std::string& file);
    void Browse();
    void ShowIndex();
    int SelectedIndex() const;

    std::string programPath_;
    IconChoice initial_;
    std::optional<IconChoice> chosen_;
    std::vector<std::string> files_;  // the combo box's entries, in its order
    size_t shown_ = 0;
    HIMAGELIST images_ = nullptr;  // the list view's (it shares it): destroyed here
};

}  // namespace lumora
