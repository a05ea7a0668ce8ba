#pragma once
// What the settings dialog "功能与设置" shows for each option and what it writes back: the dialog's
// controls hold numbers (a slider's position, a check box's state, the chosen button of a radio
// group or entry of a list, a typed number, a colour), and this is the one mapping between those
// numbers and the store's texts. The dialog edits a copy of the store and saves it on "确定".
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "settings/SettingsStore.h"

namespace lumora {

// A control's numbers are those the option keeps when loaded (SettingsStore::OptionBounds).
enum class FormControl {
    Slider,     // position = the number, kept inside the slider's range
    Check,      // checked = the number 1
    RadioPair,  // first button for "0", the second for anything else
    Choice,     // a list or radio group: entry = the number, the first entry when out of range
    Number,     // a text field holding a number in the option's range
    Colour,     // a colour button: the colour, stored as a signed 32-bit decimal
};

struct FormItem {
    std::string_view name;
    FormControl kind;
};

// The numbers a control offers.
SettingsStore::Bounds FormBounds(const FormItem& item);

// Every option the dialog edits, in the order its pages show them.
std::span<const FormItem> FormItems();
const FormItem* FindFormItem(std::string_view name);

// The stable control id of an option's control on its page (the end-to-end tests find it by this):
// `part` 0 is the control, 1 and 2 the second and third button of a radio group, 3 its label.
inline constexpr int kFirstFormControlId = 2000;
int FormControlId(std::string_view name, int part = 0);

// The control's number for the option's stored text.
long long ShownValue(const FormItem& item, const SettingsStore& store);
// The text stored for a control's number: plain decimal ("05" never comes back as "05").
std::string StoredText(const FormItem& item, long long value);

// A typed number: its value when it is a whole number in the field's range and above `floor` (the song
// menu's lower bound lies above its upper bound), otherwise nothing.
std::optional<long long> TypedNumber(const FormItem& item, std::string_view typed, long long floor = -1);
// The message shown for a typed number out of its range.
std::string NumberRangeMessage(long long low, long long high);

// The song menu with `filesPerColumn` entries a column (0: "自动调节") reaches past a screen of
// `screenHeight` pixels whose menu lines are `lineHeight` pixels high. The dialog warns only when
// the menu type is chosen automatically.
bool SongMenuOverflows(int filesPerColumn, bool autoType, int screenHeight, int lineHeight);

// The entries of the song-menu layout list: "自动调节", then "每列显示1个文件" ... "每列显示99个文件".
std::string SongMenuLayoutEntry(int index);

}  // namespace lumora
