#pragma once
// Pop-up menus built from the command table's lines.
#include <windows.h>

#include <vector>

#include "app/Commands.h"

namespace lumora {

// Builds a pop-up menu from its lines and tracks it at (x, y) on the screen; the chosen command
// arrives at `owner` as WM_COMMAND.
void TrackMenu(HWND owner, const std::vector<MenuLine>& lines, int x, int y);

}  // namespace lumora
