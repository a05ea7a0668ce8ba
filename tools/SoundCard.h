#pragma once
// The sound card inspector: what the first wave-output device can do, as the texts its window shows.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

class Prompts;
class WaveOutInfo;

// The settings dialog's button that opens the inspector, and its tip.
inline constexpr char kSoundCardButtonText[] = "“检测您的声卡”";
inline constexpr char kSoundCardButtonTip[] = "这是一个检测这台计算机声卡的工具。";
// The headings over the two lists and the tips of the lists.
inline constexpr char kSoundCardFormatsHeading[] = "支持格式列表：";
inline constexpr char kSoundCardFunctionsHeading[] = "扩展输出功能列表：";
inline constexpr char kSoundCardFormatsTip[] = "支持格式";
inline constexpr char kSoundCardFunctionsTip[] = "扩展功能";

// The text of one format bit value (1, 2, 4 ... 2048); empty for any other value.
std::string_view FormatText(std::uint32_t bit);
// The text of one function bit value (1, 2, 4, 8 or 16); empty for any other value.
std::string_view CapabilityText(std::uint32_t bit);

// Everything the inspector's window shows, label by label (UTF-8).
struct SoundCardReport {
    std::string name;                    // "产品（声卡）名称：..."
    std::string product;                 // "产品 ID：..."
    std::string driver;                  // "驱动程序 ID：..." (the manufacturer identifier)
    std::string version;                 // "驱动程序版本：major.minor"
    std::string channels;                // "输出声道：..."
    std::vector<std::string> formats;    // in bit order
    std::vector<std::string> functions;  // in bit order
};

// Reads device 0. With no device at all it tells the user so and answers nothing.
std::optional<SoundCardReport> InspectSoundCard(WaveOutInfo& device, Prompts& prompts);

}  // namespace lumora
