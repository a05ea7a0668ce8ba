#pragma once
// The keyboard: one table from a key and its modifiers to the command it runs, and where the key is
// taken. The program maps each command to the button or menu entry it stands for, so a key never
// does anything a click would not.
#include <string>

namespace lumora {

// Keys by their Windows virtual-key codes, the numbers WM_KEYDOWN carries; a letter is its capital.
namespace keys {
inline constexpr unsigned kReturn = 0x0D;
inline constexpr unsigned kSpace = 0x20;
inline constexpr unsigned kPageUp = 0x21;
inline constexpr unsigned kPageDown = 0x22;
inline constexpr unsigned kLeft = 0x25;
inline constexpr unsigned kUp = 0x26;
inline constexpr unsigned kRight = 0x27;
inline constexpr unsigned kDown = 0x28;
inline constexpr unsigned kDelete = 0x2E;
inline constexpr unsigned kPeriod = 0xBE;  // VK_OEM_PERIOD
}  // namespace keys

// None first: a value-initialised command is no command.
enum class KeyCommand {
    None,
    PlayPause,
    Stop,
    Previous,
    Next,
    Back,
    Forward,
    VolumeUp,
    VolumeDown,
    OpenFiles,
    OpenFolder,
    SaveList,
    JumpToTime,
    MediaInfo,
    ShowList,
    PlayEntry,  // the list's selected entry
    RemoveEntry,
    FindEntry,
    Settings,
};

// What holds the keyboard focus (the key table relies on this order). Typing into an edit box, a slider's Left and
// Right and the list's own movement and type-ahead stay with them.
enum class KeyFocus { Window, Slider, List, Edit };

struct KeyPress {
    unsigned key = 0;
    bool ctrl = false;
    bool shift = false;
    bool alt = false;
    bool repeat = false;  // the auto-repeat of a held key
};

KeyCommand CommandForKey(const KeyPress& press, KeyFocus focus);
// The key a menu entry shows after a tab ("Ctrl+O"); empty when no key runs the command.
std::string KeyLabel(KeyCommand command);
// WM_APPCOMMAND's numbers, from media keys and multimedia keyboards. "Play" and "pause" keys only
// ever start or pause; `playing` says which of them the play/pause command would do.
KeyCommand CommandForAppCommand(int appCommand, bool playing);

}  // namespace lumora
