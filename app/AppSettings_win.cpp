// The settings dialog "功能与设置" as the composition root opens it: the pages it holds, what "确定"
// saves, and what changes at once afterwards.
#include <memory>

#include "app/App_win.h"
#include "app/Version.h"
#include "platform/FileSystem_win.h"
#include "platform/ProcessRunner_win.h"
#include "platform/ShellNotifier_win.h"
#include "settings/OptionNames.h"
#include "settings/RegistryWrapper.h"
#include "settings/SettingsBackup.h"
#include "ui/FileTypePages_win.h"
#include "ui/OptionPages_win.h"
#include "ui/Prompts_win.h"
#include "ui/SettingsDialog_win.h"
#include "ui/SoundCardWindow_win.h"
#include "ui/TransparencyPage_win.h"

namespace lumora {

void App::OpenSettings(SettingsPageChoice page) {
    SettingsStore edited = settings_;
    std::vector<std::unique_ptr<SettingsPage>> pages = MakeOptionPages(edited);
    pages.push_back(MakeTransparencyPage(services_.ini, [this](const WindowTransparency& t) { ApplyTransparency(t); }));
    const int fileTypesPage = static_cast<int>(pages.size());
    // File types go to the machine's own registry for the user, a portable copy's too: the shell reads
    // nothing else. The pages' boxes belong to the dialog.
    WinPrompts pagePrompts;
    WinShellNotifier notifier;
    const std::string exe = ProgramPath();
    pages.push_back(std::make_unique<FileTypesPage>(services_.systemRegistry, pagePrompts, exe, notifier));
    pages.push_back(std::make_unique<FileIconPage>(services_.systemRegistry, pagePrompts, exe, notifier));
    pages.push_back(std::make_unique<ShellMenuPage>(services_.systemRegistry, pagePrompts, exe, notifier));
    ToolActions tools;
    tools.backup = [this](HWND owner) {
        WinPrompts prompts(owner);
        if (services_.portableRegistryFile.empty()) {
            WinProcessRunner runner;
            BackupSettings(prompts, services_.files, runner);
        } else {
            BackupSettingsFile(prompts, services_.files, services_.portableRegistryFile);
        }
    };
    tools.restore = [this](HWND owner) {
        WinPrompts prompts(owner);
        if (services_.portableRegistryFile.empty()) {
            WinProcessRunner runner;
            RestoreSettings(prompts, runner);
        } else {
            RestoreSettingsFile(prompts, services_.files, services_.portableRegistryFile);
        }
    };
    tools.inspectSoundCard = [](HWND owner) { ShowSoundCardInspector(owner); };
    pages.push_back(MakeToolsPage(std::move(tools)));
    SettingsDialog dialog(std::move(pages), page == SettingsPageChoice::FileTypes ? fileTypesPage : 0);
    const bool confirmed = dialog.Run(window_.Handle(), [&](HWND open) { pagePrompts.SetOwner(open); });
    // What the transparency page previewed gives way to what is kept: its own values after "确定".
    ApplyTransparency(LoadWindowTransparency(services_.ini));
    if (!confirmed) return;
    // A failed save has told the user why; the options in use stay as they were.
    if (!SaveSettings(edited, services_.registry, kVersionText, ProgramFolder())) return;
    settings_ = edited;
    OptionsChanged();
}

}  // namespace lumora
