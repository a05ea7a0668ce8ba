#include "tools/SoundCard.h"

#include <algorithm>
#include <bit>

#include "ports/Prompts.h"
#include "ports/TextCodec.h"
#include "ports/WaveOutInfo.h"

namespace lumora {
namespace {

constexpr char kNoDeviceText[] = "检测错误！原因：该计算机没有声卡或本机有声卡故障。";
constexpr char kNoDeviceTitle[] = "检测失败";

// Bit 2^i is entry i. The rates are rounded kilobytes per second, kept as users know them.
constexpr std::string_view kFormatTexts[] = {
    "11.025Khz,Mono,8bit,11Kb/Ps",    "11.025Khz,Stereo,8bit,22Kb/Ps", "11.025Khz,Mono,16bit,22Kb/Ps",
    "11.025Khz,Stereo,16bit,43Kb/Ps", "22.05Khz,Mono,8bit,22Kb/Ps",    "22.05Khz,Stereo,8bit,43Kb/Ps",
    "22.05Khz,Mono,16bit,43Kb/Ps",    "22.05Khz,Stereo,16bit,86Kb/Ps", "44.1Khz,Mono,8bit,43Kb/Ps",
    "44.1Khz,Stereo,8bit,86Kb/Ps",    "44.1Khz,Mono,16bit,86Kb/Ps",    "44.1Khz,Stereo,16bit,172Kb/Ps",
};
constexpr std::string_view kCapabilityTexts[] = {
    "Support Pitch",           "Support Playback", "Support Volume Control", "Support Left-Right Channals",
    "Support Synchronization",
};

template <size_t N>
std::string_view BitText(const std::string_view (&texts)[N], std::uint32_t bit) {
    if (!std::has_single_bit(bit)) return {};
    const auto i = static_cast<size_t>(std::countr_zero(bit));
    return i < N ? texts[i] : std::string_view{};
}

template <size_t N>
std::vector<std::string> BitTexts(const std::string_view (&texts)[N], std::uint32_t set) {
    std::vector<std::string> out;
    for (size_t i = 0; i < N; ++i) {
        if (set & (1u << i)) out.emplace_back(texts[i]);
    }
    return out;
}

}  // namespace

std::string_view FormatText(std::uint32_t bit) { return BitText(kFormatTexts, bit); }

std::string_view CapabilityText(std::uint32_t bit) { return BitText(kCapabilityTexts, bit); }

std::optional<SoundCardReport> InspectSoundCard(WaveOutInfo& device, Prompts& prompts) {
    if (device.DeviceCount() < 1) {
        prompts.ShowMessage(kNoDeviceText, kNoDeviceTitle);
        return std::nullopt;
    }
    const WaveOutCaps caps = device.FirstDeviceCaps();
    const auto& raw = caps.productName;
    const auto nameEnd = std::find(raw.begin(), raw.end(), '\0');
    SoundCardReport r;
    r.name =
        "产品（声卡）名称：" + Cp936ToUtf8(std::string_view(raw.data(), static_cast<size_t>(nameEnd - raw.begin())));
    r.product = "产品 ID：" + std::to_string(caps.productId);
    r.driver = "驱动程序 ID：" + std::to_string(caps.manufacturerId);
    r.version = "驱动程序版本：" + std::to_string((caps.driverVersion >> 8) & 0xFF) + "." +
                std::to_string(caps.driverVersion & 0xFF);
    // The count is a 16-bit field read as signed: a driver that answers 65535 (-1) means "several".
    const auto channels = static_cast<std::int16_t>(caps.channels);
    r.channels = channels < 0 ? "输出声道：2/4/6" : "输出声道：" + std::to_string(channels);
    r.formats = BitTexts(kFormatTexts, caps.formats);
    r.functions = BitTexts(kCapabilityTexts, caps.functions);
    return r;
}

}  // namespace lumora
