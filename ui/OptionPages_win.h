#pragma once
// The settings dialog's pages of options: each page shows the options of the copy of the store that
// the dialog edits, and takes its controls back into it on "确定". The tools page holds the settings'
// backup and restore and the sound card inspector.
#include <functional>
#include <memory>
#include <vector>

#include "ui/SettingsPage_win.h"

namespace lumora {

class SettingsStore;

// `edited` outlives the pages.
std::vector<std::unique_ptr<SettingsPage>> MakeOptionPages(SettingsStore& edited);

struct ToolActions {
    std::function<void(HWND owner)> backup;
    std::function<void(HWND owner)> restore;
    std::function<void(HWND owner)> inspectSoundCard;
};
std::unique_ptr<SettingsPage> MakeToolsPage(ToolActions actions);

}  // namespace lumora
