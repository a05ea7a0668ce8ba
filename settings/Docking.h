#pragma once
// How the playlist window docks to the main window while the user drags it.
#include "settings/WindowPlacement.h"

namespace lumora {

// The snap distance at 96 DPI; the windows scale it with their DPI.
inline constexpr int kDockSnapPixels = 16;

// The edge of `owner` that a list window dragged to `moving` docks to: its left edge within `snap`
// pixels of the owner's right edge and its top within `snap` of the owner's top (right), or its top
// within `snap` of the owner's bottom and its left within `snap` of the owner's left (below). Right
// wins where both hold. None when the window is dragged away.
ListDock SnapDock(const WindowRect& moving, const WindowRect& owner, int snap);

// The dragged rectangle moved onto the edge it snaps to, its size unchanged; as it was when it docks nowhere.
WindowRect SnapPlace(const WindowRect& moving, const WindowRect& owner, int snap);

}  // namespace lumora
