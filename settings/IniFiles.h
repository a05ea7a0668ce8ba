#pragma once
// Reading and writing one key of an INI file kept in code page 936. A file named without a
// folder lives in the user's data folder; one of the same name in the Windows directory, where
// older versions kept it, is read until the user's own copy exists, and never written.
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "ports/FileSystem.h"

namespace lumora {

// The player's own INI file: hand-off slot, bookmarks, window and tip keys.
inline constexpr std::string_view kPlayerIniFile = "tavrinplay.ini";

class IniFiles {
public:
    explicit IniFiles(FileSystem& fs) : fs_(fs) {}

    // Empty when the file, the section or the key is missing.
    std::string Read(std::string_view file, std::string_view section, std::string_view key);
    // False when the file cannot be read or written, or the text cannot be kept in code
    // page 936; the file on disk is then unchanged.
    bool Write(std::string_view file, std::string_view section, std::string_view key, std::string_view value);

    // The whole file's bytes (code page 936), for a reader that takes many keys at once; empty when missing.
    std::string ReadAll(std::string_view file);

    // Where the file is written; empty when the system gives no data folder (nothing is written then).
    std::string PathOf(std::string_view file);

private:
    FileRead ReadCurrent(std::string_view file);

    FileSystem& fs_;
};

// The scratch value of the settings holder (key "临时" of section "设置" in the player's INI
// file); a second instance hands its argument over through it.
std::string ReadScratchValue(IniFiles& ini);
bool WriteScratchValue(IniFiles& ini, std::string_view text);

// Window transparency kept in the player's INI file, section "透明度": "form_tm_check1" = "1"
// turns it on, "form_tm_0" (main), "form_tm_1" (list) and "form_tm_2" (lyrics window) hold the
// opacity, 20 to 255 (255 = opaque), as decimal text.
enum class TransparentWindow { Main = 0, List = 1, Lyrics = 2 };
inline constexpr int kOpaque = 255;
inline constexpr int kLeastOpacity = 20;  // below this a window could no longer be found again

struct WindowTransparency {
    bool on = false;
    // By TransparentWindow; a stored value that is not a number of 20 to 255 reads as opaque.
    std::array<int, 3> opacity{kOpaque, kOpaque, kOpaque};
    // The alpha the window is shown with: opaque while transparency is off.
    int AlphaOf(TransparentWindow window) const { return on ? opacity[static_cast<size_t>(window)] : kOpaque; }
    bool operator==(const WindowTransparency&) const = default;
};
WindowTransparency LoadWindowTransparency(IniFiles& ini);
// Writes every value, each opacity brought into 20 to 255 first; false at the first write that fails.
bool SaveWindowTransparency(IniFiles& ini, const WindowTransparency& transparency);
int ClampOpacity(int opacity);

}  // namespace lumora
