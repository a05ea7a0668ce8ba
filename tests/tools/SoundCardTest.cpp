#include <gtest/gtest.h>

#include "ports/WaveOutInfo.h"
#include "support/Fakes.h"
#include "tools/SoundCard.h"

namespace lumora {
namespace {

struct FakeWaveOut : WaveOutInfo {
    unsigned count = 1;
    WaveOutCaps caps;
    unsigned DeviceCount() override { return count; }
    WaveOutCaps FirstDeviceCaps() override { return caps; }
    SoundCardReport Inspect() {
        test::FakePrompts prompts;
        return InspectSoundCard(*this, prompts).value();
    }
};

TEST(SoundCard, ListsHoldTheTextsOfTheSetBitsInOrder) {
    FakeWaveOut device;
    device.caps.formats = device.caps.functions = ~0u;  // bits past the known ones are ignored
    test::Lines formats, functions;
    for (std::uint32_t bit = 1; bit <= 2048; bit *= 2) formats.emplace_back(FormatText(bit));
    for (std::uint32_t bit = 1; bit <= 16; bit *= 2) functions.emplace_back(CapabilityText(bit));
    EXPECT_EQ(device.Inspect().formats, formats);
    EXPECT_EQ(device.Inspect().functions, functions);
    EXPECT_EQ(formats.back() + functions[3], "44.1Khz,Stereo,16bit,172Kb/PsSupport Left-Right Channals");
    device.caps.formats = 4 | 4096;
    device.caps.functions = 2 | 32;
    EXPECT_EQ(device.Inspect().formats, test::Lines{formats[2]});
    EXPECT_EQ(device.Inspect().functions, test::Lines{functions[1]});
    for (std::uint32_t other : {0u, 3u}) EXPECT_TRUE(FormatText(other).empty() && CapabilityText(other).empty());
    EXPECT_TRUE(FormatText(4096).empty() && CapabilityText(32).empty());
}

TEST(SoundCard, LabelsShowTheRecord) {
    FakeWaveOut device;
    WaveOutCaps& caps = device.caps = {.manufacturerId = 1, .productId = 65535, .driverVersion = 0x0A05};
    const std::string name = test::Gbk("声卡") + std::string(28, 'x');  // fills the field: no NUL
    std::copy(name.begin(), name.end(), caps.productName.begin());
    SoundCardReport r = device.Inspect();
    EXPECT_EQ(r.name, "产品（声卡）名称：声卡" + std::string(28, 'x'));
    EXPECT_EQ(r.product + r.driver + r.version, "产品 ID：65535驱动程序 ID：1驱动程序版本：10.5");
    caps.productName[4] = '\0';
    EXPECT_EQ(device.Inspect().name, "产品（声卡）名称：声卡");
    // A 16-bit count read as signed: 65535 and the like mean several channels.
    for (auto [count, text] : {std::pair{65535, "输出声道：2/4/6"}, {32767, "输出声道：32767"}, {0, "输出声道：0"}}) {
        caps.channels = static_cast<std::uint16_t>(count);
        EXPECT_EQ(device.Inspect().channels, text);
    }
}

TEST(SoundCard, NoDeviceIsReportedAndNothingShown) {
    FakeWaveOut device;
    device.count = 0;
    test::FakePrompts prompts;
    EXPECT_FALSE(InspectSoundCard(device, prompts));
    EXPECT_EQ(prompts.messages,
              (std::vector<test::Message>{{"检测错误！原因：该计算机没有声卡或本机有声卡故障。", "检测失败"}}));
}

}  // namespace
}  // namespace lumora
