#include "app/KeyMap.h"

namespace lumora {
namespace {

using namespace keys;
using C = KeyCommand;

enum Mods : unsigned { kNone = 0, kCtrl = 1, kShift = 2 };
enum Where : unsigned {
    kWindow = 1,
    kSlider = 2,
    kList = 4,
    kAnywhere = kWindow | kSlider | kList
};  // never an edit box

struct Binding {
    unsigned key;
    unsigned mods;
    KeyCommand command;
    unsigned where;
    bool repeats;  // a held key runs it again; toggles run once a press
};

// The first binding of a command is the one its menu entry shows.
// Space plays and pauses wherever it is pressed, also on a focused button: Enter clicks that.
// Left, Right, PgUp and PgDn belong to a focused slider or the list, Up and Down to the list: on a
// slider they would turn the volume the wrong way round. "." belongs to the list's type-ahead.
// clang-format off
constexpr Binding kBindings[] = {
    {kSpace,    kNone,          C::PlayPause,   kAnywhere,         false},
    {kPeriod,   kNone,          C::Stop,        kWindow | kSlider, false},
    {kPageUp,   kNone,          C::Previous,    kWindow,           false},
    {kPageDown, kNone,          C::Next,        kWindow,           false},
    {kLeft,     kNone,          C::Back,        kWindow,           true},
    {kRight,    kNone,          C::Forward,     kWindow,           true},
    {kUp,       kNone,          C::VolumeUp,    kWindow | kSlider, true},
    {kDown,     kNone,          C::VolumeDown,  kWindow | kSlider, true},
    {'O',       kCtrl,          C::OpenFiles,   kAnywhere,         false},
    {'O',       kCtrl | kShift, C::OpenFolder,  kAnywhere,         false},
    {'S',       kCtrl,          C::SaveList,    kAnywhere,         false},
    {'T',       kCtrl,          C::JumpToTime,  kAnywhere,         false},
    {'I',       kCtrl,          C::MediaInfo,   kAnywhere,         false},
    {'L',       kCtrl,          C::ShowList,    kAnywhere,         false},
    {kReturn,   kNone,          C::PlayEntry,   kList,             false},
    {kDelete,   kNone,          C::RemoveEntry, kList,             false},
    {'F',       kCtrl,          C::FindEntry,   kList,             false},
};
// clang-format on

unsigned WhereBit(KeyFocus focus) {
    switch (focus) {
        case KeyFocus::Window:
            return kWindow;
        case KeyFocus::Slider:
            return kSlider;
        case KeyFocus::List:
            return kList;
        case KeyFocus::Edit:
            return 0;
    }
    return 0;
}

// The names menus show: the keys of menu entries are letters, Enter and Del.
std::string KeyName(unsigned key) {
    if (key == kReturn) return "Enter";
    if (key == kDelete) return "Del";
    return std::string(1, static_cast<char>(key));
}

}  // namespace

KeyCommand CommandForKey(const KeyPress& press, KeyFocus focus) {
    if (press.alt) return C::None;  // Alt belongs to the system menu and Alt+F4
    const unsigned mods = (press.ctrl ? kCtrl : kNone) | (press.shift ? kShift : kNone);
    for (const Binding& b : kBindings) {
        if (b.key == press.key && b.mods == mods && (b.where & WhereBit(focus)) && (b.repeats || !press.repeat)) {
            return b.command;
        }
    }
    return C::None;
}

std::string KeyLabel(KeyCommand command) {
    for (const Binding& b : kBindings) {
        if (b.command != command) continue;
        return std::string(b.mods & kCtrl ? "Ctrl+" : "") + (b.mods & kShift ? "Shift+" : "") + KeyName(b.key);
    }
    return {};
}

KeyCommand CommandForAppCommand(int appCommand, bool playing) {
    switch (appCommand) {
        case 9:
            return C::VolumeDown;  // APPCOMMAND_VOLUME_DOWN
        case 10:
            return C::VolumeUp;  // APPCOMMAND_VOLUME_UP
        case 11:
            return C::Next;  // APPCOMMAND_MEDIA_NEXTTRACK
        case 12:
            return C::Previous;  // APPCOMMAND_MEDIA_PREVIOUSTRACK
        case 13:
            return C::Stop;  // APPCOMMAND_MEDIA_STOP
        case 14:
            return C::PlayPause;  // APPCOMMAND_MEDIA_PLAY_PAUSE
        case 46:
            return playing ? C::None : C::PlayPause;  // APPCOMMAND_MEDIA_PLAY
        case 47:
            return playing ? C::PlayPause : C::None;  // APPCOMMAND_MEDIA_PAUSE
        case 49:
            return C::Forward;  // APPCOMMAND_MEDIA_FAST_FORWARD
        case 50:
            return C::Back;  // APPCOMMAND_MEDIA_REWIND
    }
    return C::None;
}

}  // namespace lumora
