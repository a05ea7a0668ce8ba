#include "playback/TransportTexts.h"

#include "playlist/PlayQueue.h"
#include "settings/OptionNames.h"
#include "settings/SettingsStore.h"

namespace lumora {
namespace {

// The neighbour of the current entry, wrapping round like the neighbour labels.
std::string NeighbourLine(const PlayQueue& queue, int step) {
    const int count = queue.Count();
    if (count == 0) return {};
    int index = queue.Current() + step;
    if (index < 1) index = count;
    if (index > count) index = 1;
    const MediaEntry* entry = queue.EntryAt(index);
    return entry ? ListLine(index, entry->name) : std::string();
}

}  // namespace

DisplayTips MakeDisplayTips(const SettingsStore& settings) {
    if (!settings.IsOn(opt::kBalloonHelp)) return {};
    return {"正在播放文件的标签和流信息：比特率、频率、层、帧数、版本和长度", "歌词：正在唱的一句和下一句"};
}

TransportTips MakeTransportTips(const SettingsStore& settings, const PlayQueue& queue, const PlaybackTexts& playback,
                                bool hasFile, std::optional<long long> pointerMs) {
    TransportTips t;
    t.help = settings.IsOn(opt::kBalloonHelp);
    t.information = settings.IsOn(opt::kInfoBalloons);
    const bool empty = queue.Count() == 0;
    const std::string& suffix = playback.modeSuffix;
    const bool remaining = playback.timeMode == TimeModeArrow(TimeMode::Remaining);
    t.play = "播放/暂停";
    t.stop = "停止播放";
    const auto seconds = [&](std::string_view option) { return settings.Text(option) + "秒"; };
    const auto neighbour = [&](std::string help, int step) {
        if (empty) return std::string(kNoFileToPlay);
        return t.information ? help + NeighbourLine(queue, step) : help;
    };
    t.previous = neighbour("播放 “上一首”", -1);
    t.next = neighbour("播放 “下一首”", +1);
    t.back = hasFile ? std::string(kBackLabel) + seconds(opt::kBackSeconds) : "无法后退";
    t.forward = hasFile ? std::string(kForwardLabel) + seconds(opt::kForwardSeconds) : "无法前进";
    t.modeNormal = "设置播放方式-“正常”。当前播放方式为" + suffix;
    t.modeLoop = "设置播放方式-“单曲\\全部循环”。当前播放方式为" + suffix;
    t.modeRandom = "设置播放方式-“随机”。当前播放方式为" + suffix;
    t.timeMode = std::string("转换“显示正在播放时间”和“剩余的时间”。\r\n") + (remaining ? "“剩余时间”" : "“正常时间”");
    t.segment = playback.segmentTip;
    if (!t.information) {
        t.progress = kProgressTip;
    } else if (pointerMs && hasFile) {
        t.progress = "指针所指时间：" + PlaybackController::FormatTime(*pointerMs);
    } else {
        t.progress = playback.progressLine.empty() ? std::string(kProgressTip) : playback.progressLine;
    }
    t.volume = t.information ? VolumeStatusText(playback.volume) : playback.volumeTip;
    t.volumeLabel = "音量显示（0为最小；20为最大）";
    t.speed = playback.speedTip;
    t.list = "打开/关闭“文件列表”窗口";
    t.open = "打开媒体文件";
    t.title = "正在播放的文件";
    t.time = remaining ? "显示正在播放文件的剩余时间”。" : "“显示正在播放时间”。";
    t.percent = "已播放的百分比";
    t.mode = "当前播放方式为" + suffix;
    t.segmentRange = t.segment;
    t.neighbours = "双击“文件列表”里的文件可直接播放";
    t.statusLine = "播放状态";
    t.decoderWorkaround =
        std::string("启用/关闭“解码倒制”：播放视频时没有声音、字幕外挂不起作用时使用，播放下一首时生效。\r\n当前：") +
        (settings.IsOn(opt::kDecoderWorkaround) ? "已启用" : "未启用");
    if (!t.help) {
        // Only the information tips stay; a tool without text shows nothing.
        const TransportTips kept = t;
        t = TransportTips{};
        t.help = false;
        t.information = kept.information;
        if (kept.information) {
            t.previous = kept.previous;
            t.next = kept.next;
            t.progress = kept.progress;
            t.volume = kept.volume;
        }
    }
    return t;
}

}  // namespace lumora
