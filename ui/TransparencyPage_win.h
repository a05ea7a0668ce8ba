#pragma once
// The settings dialog's page "透明度": transparency on or off and the opacity of the main, list and
// lyrics windows. A slider shows its window's new opacity while it moves; "确定" keeps the values in
// the player's INI file, and the dialog's caller puts the kept ones back after "取消".
#include <functional>
#include <memory>

#include "settings/IniFiles.h"
#include "ui/SettingsPage_win.h"

namespace lumora {

// `preview` shows a transparency on the windows at once; `ini` outlives the page.
std::unique_ptr<SettingsPage> MakeTransparencyPage(IniFiles& ini,
                                                   std::function<void(const WindowTransparency&)> preview);

}  // namespace lumora
