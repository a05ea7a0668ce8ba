#pragma once
// How the lyrics window shows its two lines, kept as decimal texts in the setup key beside the
// options: the line byte limit "Gc1Long", "F8_BC" the background, "F8_1_YY" and "F8_2_YY" the colours
// of the current and the next line (COLORREF values: 0x00BBGGRR), "F8_GcLab1" and "F8_GcLab2" their
// sizes in points, "F8_PicYN" "1" for a picture "F8_BPic" behind them, stretched when "F8_PicMi" is
// "1" and centred at its own size otherwise. The window and its settings dialog share these.
#include <cstdint>
#include <string>

namespace lumora {

class Prompts;
class RegistryWrapper;

inline constexpr int kMinLyricsPoints = 6;
inline constexpr int kMaxLyricsPoints = 72;

struct LyricsLook {
    std::uint32_t background = 0x1C120C;  // RGB(12, 18, 28)
    std::uint32_t current = 0x46BEFF;     // RGB(255, 190, 70): the line whose time has come
    std::uint32_t next = 0xFFDC78;        // RGB(120, 220, 255): the line after it
    int currentPoints = 14;
    int nextPoints = 11;
    bool usePicture = false;
    bool stretchPicture = true;
    std::string picturePath;
};

struct LyricsDisplaySettings {
    int lineByteLimit = 0;  // 0: lines are not wrapped
    LyricsLook look;
};

// The settings dialog's "选择图片...": an open dialog for a picture the window can draw. A chosen one
// becomes the background picture and is switched on; false (nothing changed) when the user cancels.
bool ChooseLyricsPicture(Prompts& prompts, LyricsLook& look);

// A point size the window accepts; anything else keeps the current size.
bool IsLyricsPointSize(long long points);

// Reads quietly: a value missing or out of range keeps its default.
LyricsDisplaySettings LoadLyricsDisplaySettings(RegistryWrapper& registry);
// Writes every value; false (with the registry's own message shown) at the first that fails.
bool SaveLyricsDisplaySettings(RegistryWrapper& registry, const LyricsDisplaySettings& settings);

}  // namespace lumora
