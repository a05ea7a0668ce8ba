#include "ui/MediaKeys_win.h"

#include <iterator>

namespace lumora {
namespace {

constexpr struct {
    int appCommand;
    UINT key;
} kKeys[] = {
    {APPCOMMAND_MEDIA_PLAY_PAUSE, VK_MEDIA_PLAY_PAUSE},
    {APPCOMMAND_MEDIA_STOP, VK_MEDIA_STOP},
    {APPCOMMAND_MEDIA_NEXTTRACK, VK_MEDIA_NEXT_TRACK},
    {APPCOMMAND_MEDIA_PREVIOUSTRACK, VK_MEDIA_PREV_TRACK},
};

}  // namespace

void MediaHotKeys::Hold(HWND window) {
    Release();
    window_ = window;
    for (unsigned i = 0; i < std::size(kKeys); ++i) {
        if (RegisterHotKey(window, kKeys[i].appCommand, 0, kKeys[i].key)) held_ |= 1u << i;
    }
}

void MediaHotKeys::Release() {
    for (unsigned i = 0; i < std::size(kKeys); ++i) {
        if (held_ & (1u << i)) UnregisterHotKey(window_, kKeys[i].appCommand);
    }
    held_ = 0;
}

}  // namespace lumora
