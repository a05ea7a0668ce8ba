#include "app/KeyMap.h"

#include <utility>

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
};

// The first binding of a command is the one its menu entry shows.
// Space plays and pauses wherever it is pressed, also on a focused button: Enter clicks that.
// Left, Right, PgUp and PgDn belong to a focused slider or the list, Up and Down to the list: on a
// slider they would turn the volume the wrong way round. "." belongs to the list's type-ahead.
// clang-format off
constexpr Binding kBindings[] = {
    {kSpace,    kNone,          C::PlayPause,   kAnywhere},
    {kPeriod,   kNone,          C::Stop,        kWindow | kSlider},
    {kPageUp,   kNone,          C::Previous,    kWindow},
    {kPageDown, kNone,          C::Next,        kWindow},
    {kLeft,     kNone,          C::Back,        kWindow},
    {kRight,    kNone,          C::Forward,     kWindow},
    {kUp,       kNone,          C::VolumeUp,    kWindow | kSlider},
    {kDown,     kNone,          C::VolumeDown,  kWindow | kSlider},
    {'O',       kCtrl,          C::OpenFiles,   kAnywhere},
    {'O',       kCtrl | kShift, C::OpenFolder,  kAnywhere},
    {'S',       kCtrl,          C::SaveList,    kAnywhere},
    {'T',       kCtrl,          C::JumpToTime,  kAnywhere},
    {'I',       kCtrl,          C::MediaInfo,   kAnywhere},
    {'L',       kCtrl,          C::ShowList,    kAnywhere},
    {'P',       kCtrl,          C::Settings,    kAnywhere},
    {kReturn,   kNone,          C::PlayEntry,   kList},
    {kDelete,   kNone,          C::RemoveEntry, kList},
    {'F',       kCtrl,          C::FindEntry,   kList},
};
// clang-format on

unsigned WhereBit(KeyFocus focus) {
    constexpr unsigned kBits[] = {kWindow, kSlider, kList, 0};  // in KeyFocus's order
    return kBits[static_cast<int>(focus)];
}

// A held key runs again only what steps (seeking, the volume); toggles and dialogs run once a press.
bool Repeats(KeyCommand command) {
    return command == C::Back || command == C::Forward || command == C::VolumeUp || command == C::VolumeDown;
}

// WM_APPCOMMAND's numbers: APPCOMMAND_VOLUME_DOWN, _VOLUME_UP, _MEDIA_NEXTTRACK, _MEDIA_PREVIOUSTRACK,
// _MEDIA_STOP, _MEDIA_PLAY_PAUSE, _MEDIA_FAST_FORWARD and _MEDIA_REWIND; and _MEDIA_PLAY and _MEDIA_PAUSE.
constexpr std::pair<int, KeyCommand> kAppCommands[] = {{9, C::VolumeDown}, {10, C::VolumeUp}, {11, C::Next},
                                                       {12, C::Previous},  {13, C::Stop},     {14, C::PlayPause},
                                                       {49, C::Forward},   {50, C::Back}};
constexpr int kMediaPlay = 46;
constexpr int kMediaPause = 47;

// The names menus show: the keys of menu entries are letters, Enter and Del.
std::string KeyName(unsigned key) {
    if (key == kReturn) return "Enter";
    if (key == kDelete) return "Del";
    return std::string(1, static_cast<char>(key));
}

}  // namespace

KeyCommand CommandForKey(const KeyPress& press, KeyFocus focus) {
    if (press.alt) return {};  // Alt belongs to the system menu and Alt+F4
    const unsigned mods = (press.ctrl ? kCtrl : kNone) | (press.shift ? kShift : kNone);
    for (const Binding& b : kBindings) {
        if (b.key == press.key && b.mods == mods && (b.where & WhereBit(focus)) &&
            (!press.repeat || Repeats(b.command))) {
            return b.command;
        }
    }
    return {};
}

std::string KeyLabel(KeyCommand command) {
    for (const Binding& b : kBindings) {
        if (b.command != command) continue;
        return std::string(b.mods & kCtrl ? "Ctrl+" : "") + (b.mods & kShift ? "Shift+" : "") + KeyName(b.key);
    }
    return {};
}

KeyCommand CommandForAppCommand(int appCommand, bool playing) {
    if (appCommand == kMediaPlay) return playing ? C::None : C::PlayPause;
    if (appCommand == kMediaPause) return playing ? C::PlayPause : C::None;
    for (const auto& [number, command] : kAppCommands) {
        if (number == appCommand) return command;
    }
    return {};
}

}  // namespace lumora
