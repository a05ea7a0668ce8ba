#include "mediainfo/StreamPanel.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "mediainfo/MpegAudioParser.h"

namespace lumora {
namespace {

constexpr std::string_view kLayerThree = "压缩层次：III ";  // the trailing blank has always been there

// Hertz as kilohertz, not truncated: 44100 is "44.1", 22050 "22.05", 8000 "8".
std::string Kilo(std::int32_t value) {
    const std::int64_t whole = value;
    std::string text = whole < 0 ? "-" : "";
    const std::int64_t magnitude = whole < 0 ? -whole : whole;
    text += std::to_string(magnitude / 1000);
    if (std::int64_t fraction = magnitude % 1000; fraction != 0) {
        std::string digits = std::to_string(1000 + fraction).substr(1);
        digits.erase(digits.find_last_not_of('0') + 1);
        text += "." + digits;
    }
    return text;
}

std::string_view VersionText(MpegVersion version) {
    switch (version) {
        case MpegVersion::Mpeg1:
            return "1";
        case MpegVersion::Mpeg2:
            return "2";
        case MpegVersion::Mpeg25:
            return "2.5";
    }
    return "";
}

std::string BitRateLabel(std::int32_t bitsPerSecond) {
    return "声音位率：" + std::to_string(bitsPerSecond / 1000) + "千位/秒";  // truncated toward zero
}

std::string FrequencyLabel(std::int32_t hertz) { return "声音频率：" + Kilo(hertz) + "KHz"; }

}  // namespace

DecoderProperties PropertiesOf(const MpegStreamFacts& facts, std::int32_t framesRead) {
    DecoderProperties p;
    p.bitRate = facts.bitRate;
    p.frequency = facts.header.frequency;
    p.layer = facts.header.layer;
    p.totalFrames = static_cast<std::int32_t>(std::min<std::uint32_t>(facts.totalFrames, INT32_MAX));
    p.framesRead = framesRead;
    p.crc = facts.header.crc;
    p.copyright = facts.header.copyright;
    p.original = facts.header.original;
    p.mode = static_cast<int>(facts.header.mode);
    p.version = facts.header.version;
    p.msPerFrame = static_cast<float>(facts.msPerFrame);
    return p;
}

void ResetStreamPanel(StreamPanelTexts& panel) { panel = StreamPanelTexts{}; }

void RefreshStreamPanel(StreamPanelTexts& panel, const DecoderProperties& p) {
    if (p.bitRate) panel.bitRate = BitRateLabel(*p.bitRate);
    if (p.frequency) panel.frequency = FrequencyLabel(*p.frequency);
    if (p.layer == 1) panel.layer = "压缩层次：I";
    if (p.layer == 2) panel.layer = "压缩层次：II";
    if (p.layer == 3) panel.layer = kLayerThree;
    if (p.totalFrames) panel.totalFrames = "总帧：" + std::to_string(*p.totalFrames);
    RefreshFramesRead(panel, p.framesRead);
    if (p.crc && p.copyright && p.original) {
        const auto yesNo = [](bool b) { return b ? "是" : "否"; };
        panel.flags = std::string("效验：") + yesNo(*p.crc) + "版权：" + (*p.copyright ? "有" : "没有") + "原文：" +
                      yesNo(*p.original);
    }
    if (p.mode && p.version) {
        panel.mpeg = "MPEG方式：" + std::to_string(*p.mode) + "  MPEG版本：" + std::string(VersionText(*p.version));
    }
    if (p.msPerFrame && std::isfinite(*p.msPerFrame) && std::fabs(*p.msPerFrame) < 1e9f) {
        panel.msPerFrame = "每毫秒：" + std::to_string(static_cast<std::int64_t>(*p.msPerFrame));
    }
}

void RefreshFramesRead(StreamPanelTexts& panel, std::optional<std::int32_t> framesRead) {
    if (framesRead) panel.framesRead = "读取帧：" + std::to_string(*framesRead);
}

void ShowTagLine(StreamPanelTexts& panel, const std::optional<Id3v1Tag>& tag) {
    panel.title = BuildTagLine(tag);
    if (panel.bitRate == BitRateLabel(64000) && panel.frequency == FrequencyLabel(22050) &&
        panel.layer == kLayerThree) {
        panel.title += "（MP3 PRO文件）";
    }
}

}  // namespace lumora
