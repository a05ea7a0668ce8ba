#pragma once
// The settings dialog's pages of shell integration: the file types Lumora opens ("文件类型注册"), the icon
// they show ("注册文件图标设置") and the folder and drive verbs ("右键菜单设置"). Each writes the user's
// registry on the dialog's confirmation and tells the shell when anything changed.
#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "settings/RegistryWrapper.h"
#include "shell/FileTypes.h"
#include "ui/IconChooser_win.h"
#include "ui/SettingsPage_win.h"

namespace lumora {

class Prompts;
class Registry;
class ShellNotifier;

// What the three pages share. `registry` is the machine's real registry, also for a portable copy: the
// shell reads only that one. `programPath` is Lumora.exe's full path (UTF-8).
class RegistrationPage : public SettingsPage {
public:
    RegistrationPage(Registry& registry, Prompts& prompts, std::string programPath, ShellNotifier& notifier);
    bool OnMessage(HWND page, UINT msg, WPARAM wp, LPARAM lp, INT_PTR& result) override;

protected:
    Prompts& prompts_;
    RegistryWrapper wrapper_;
    FileTypeRegistrar registrar_;
    std::string programPath_;
    ShellNotifier& notifier_;
};

class FileTypesPage final : public RegistrationPage {
public:
    using RegistrationPage::RegistrationPage;
    std::wstring Title() const override;
    void Layout(DialogTemplate& page) override;
    void OnInit(HWND page) override;
    bool OnMessage(HWND page, UINT msg, WPARAM wp, LPARAM lp, INT_PTR& result) override;
    bool Confirm(HWND page) override;

private:
    // Shows every item's state as the registry has it.
    void Refresh(HWND page);
    void CheckAll(HWND page, bool on);

    std::vector<std::string> items_ = FileTypeItems();
};

class FileIconPage final : public RegistrationPage {
public:
    using RegistrationPage::RegistrationPage;
    std::wstring Title() const override;
    void Layout(DialogTemplate& page) override;
    void OnInit(HWND page) override;
    bool OnMessage(HWND page, UINT msg, WPARAM wp, LPARAM lp, INT_PTR& result) override;
    bool Confirm(HWND page) override;

private:
    void Show(HWND page, const IconChoice& icon);
    void Choose(HWND page);

    IconChoice shown_;
    std::optional<IconChoice> pending_;  // agreed to for every type, written on confirmation
    IconHandle preview_;
};

class ShellMenuPage final : public RegistrationPage {
public:
    using RegistrationPage::RegistrationPage;
    std::wstring Title() const override;
    void Layout(DialogTemplate& page) override;
    void OnInit(HWND page) override;
    bool Confirm(HWND page) override;
};

}  // namespace lumora
