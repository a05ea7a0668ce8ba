#pragma once
// The user's own balloon-help texts, kept in the player's INI file under the key "TOOLTIPTEXT" of one
// section per control, named "提示" and the control's number:
//
//     [提示1003]
//     TOOLTIPTEXT=开始或暂停这首歌\n双击列表也可以播放
//
// A text there replaces the control's built-in help (not the live information of the previous, next,
// volume and progress tips while those are on). "\n" starts a new line; characters below a blank are
// dropped; a text is cut after kMaxTipChars characters; an empty or missing text keeps the built-in one.
// The file is read once, at start.
#include <map>
#include <span>
#include <string>
#include <string_view>

namespace lumora {

class IniFiles;

inline constexpr std::string_view kTipTextKey = "TOOLTIPTEXT";
inline constexpr size_t kMaxTipChars = 200;

class TipOverrides {
public:
    TipOverrides() = default;
    // The texts of the controls `ids` in an INI file's bytes (code page 936).
    TipOverrides(std::string_view iniBytes, std::span<const int> ids);

    // The user's text for control `id`, else `builtIn`; `builtIn` also while `liveInformation` is shown.
    std::string_view For(int id, std::string_view builtIn, bool liveInformation = false) const;
    bool empty() const { return texts_.empty(); }

private:
    std::map<int, std::string> texts_;  // UTF-8, never empty
};

TipOverrides LoadTipOverrides(IniFiles& ini, std::span<const int> ids);

}  // namespace lumora
