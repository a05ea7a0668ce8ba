#include "playback/PlaybackController.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <optional>
#include <random>
#include <vector>

#include "common/Text.h"
#include "common/Titles.h"
#include "mediainfo/StreamPanel.h"
#include "ports/Prompts.h"
#include "playlist/QueueController.h"
#include "settings/SettingsStore.h"
#include "settings/OptionNames.h"

namespace lumora {
namespace {

constexpr std::string_view kCannotPlayTitle = "无法播放";
constexpr std::string_view kCannotPlayStatus = "该文件无法播放...";
constexpr std::string_view kCannotPlayQuestion =
    " 文件无法播放或文件不存在或本播放器不支持此格式的媒体文件。（本播放器支持达近50种文件类型）"
    "提示：如果要播放下一首请单击“是”；如果要播放上一首请单击“否”";
constexpr std::string_view kJumpTitle = "直接播放";
constexpr std::string_view kJumpPrompt =
    "请输入要播放的时间，你可以直接输入秒数，比如:12345，\r\n也可以输入时间，比如:01:20:15（冒号必须半角）。";
constexpr std::string_view kSegmentChoosingTip =
    "先单击此按纽，在右边会出现“A=N/A”（开始点选择）“B=N/A”（结束点选择）。";
constexpr std::string_view kBBeforeA = "B点不能比A点小";
constexpr std::string_view kChooseAFirst = "请选择A点再选B点";
constexpr std::string_view kSpeedUnsupported = "提示：有些媒体格式不支持此功能。";
constexpr std::string_view kSpeedTip =
    "设置播放速度：1%-99%为“减速播放”100%为“正常播放”101%-200%为“加速播放”\r\n提示：双击“滑道”或“指针”可恢复正常播放。";

// A number as the typed-time rules read one: digits with an optional sign and decimal point.
std::optional<double> ReadNumber(std::string_view s) {
    s = Trim(s);
    if (s.empty()) return std::nullopt;
    size_t i = 0;
    if (s[0] == '+' || s[0] == '-') ++i;
    bool digits = false;
    bool point = false;
    for (size_t k = i; k < s.size(); ++k) {
        if (s[k] >= '0' && s[k] <= '9') {
            digits = true;
        } else if (s[k] == '.' && !point) {
            point = true;
        } else {
            return std::nullopt;
        }
    }
    if (!digits || s.size() > 30) return std::nullopt;
    return std::stod(std::string(s));
}

// Whole seconds, held within a range that stays far from overflow when it becomes milliseconds.
long long RoundSeconds(double seconds) {
    return std::llround(std::clamp(seconds, -PlaybackController::kMaxTypedSeconds, PlaybackController::kMaxTypedSeconds));
}

std::string VolumeTip(int level) {
    return "显示播放音量 -- " + std::to_string(level) + "  （0为MIN；20为MAX）";
}

}  // namespace

std::string VolumeStatusText(int level) { return "当前音量为：" + std::to_string(level * 5) + "%"; }

std::function<double()> SeededDraws(std::uint64_t seed) {
    auto engine = std::make_shared<std::mt19937_64>(seed);
    return [engine] { return std::uniform_real_distribution<double>(0.0, 1.0)(*engine); };
}

std::string_view ModeSuffix(PlayMode mode) {
    switch (mode) {
        case PlayMode::RepeatOne: return kSuffixRepeatOne;
        case PlayMode::RepeatAll: return kSuffixRepeatAll;
        case PlayMode::Random: return kSuffixRandom;
        case PlayMode::Normal: break;
    }
    return kSuffixNormal;
}

std::string ModeLabel(PlayMode mode, bool choosingSegment) {
    return choosingSegment ? std::string(kSegmentPrefix) : std::string(kModePrefix) + std::string(ModeSuffix(mode));
}

std::string_view PlayCaption(bool playing) { return playing ? "暂停" : "播放"; }

std::string_view TimeModeArrow(TimeMode mode) { return mode == TimeMode::Remaining ? "←" : "→"; }

std::string_view SegmentButtonText(bool choosingSegment) { return choosingSegment ? "取消选段" : kSegmentPrefix; }

PlaybackController::PlaybackController(PlaybackDeps deps) : deps_(std::move(deps)) {
    texts_.speedTip = std::string(kSpeedTip);
    texts_.volumeTip = VolumeTip(texts_.volume);
}

long long PlaybackController::ParseTypedTime(std::string_view text) {
    if (const auto seconds = ReadNumber(text)) return RoundSeconds(*seconds);
    std::vector<std::string_view> parts;
    size_t start = 0;
    while (true) {
        const size_t colon = text.find(':', start);
        parts.push_back(text.substr(start, colon == std::string_view::npos ? colon : colon - start));
        if (colon == std::string_view::npos) break;
        start = colon + 1;
    }
    if (parts.size() != 3) return 0;
    double total = 0;
    const double weights[3] = {3600, 60, 1};
    for (size_t i = 0; i < 3; ++i) {
        const auto n = ReadNumber(parts[i]);
        if (!n) return 0;
        total += *n * weights[i];
    }
    return RoundSeconds(total);
}

std::string PlaybackController::FormatTime(long long ms) {
    if (ms < 0) ms = 0;
    const long long s = ms / 1000;
    char buf[32];
    std::snprintf(buf, sizeof buf, "%02lld:%02lld:%02lld", s / 3600, (s / 60) % 60, s % 60);
    return buf;
}

Decoder& PlaybackController::ChosenDecoder(const std::string& path) {
    // opt::kDecoder "0" is decoder 1, for the MPEG audio it plays; everything else goes to the media engine.
    if (IsMpegAudioName(path) && deps_.settings.Text(opt::kDecoder) == "0" && deps_.decoder1) return *deps_.decoder1;
    return deps_.decoder2;
}

void PlaybackController::Show() { deps_.view.ShowPlayback(texts_); }

void PlaybackController::RefreshModeLabel() { texts_.modeLabel = ModeLabel(mode_, choosingSegment_); }

void PlaybackController::SetMode(PlayMode mode) {
    mode_ = mode;
    texts_.modeSuffix = std::string(ModeSuffix(mode));
    RefreshModeLabel();
    Show();
}

void PlaybackController::SetPlaying(bool playing) {
    playing_ = playing;
    texts_.playCaption = std::string(PlayCaption(playing));
}

void PlaybackController::SetTimeMode(TimeMode mode) {
    timeMode_ = mode;
    texts_.timeMode = std::string(TimeModeArrow(mode));
}

void PlaybackController::SetChoosingSegment(bool choosing) {
    choosingSegment_ = choosing;
    texts_.segmentButton = std::string(SegmentButtonText(choosing));
}

void PlaybackController::OpenAndPlay(const std::string& path) {
    if (decoder_) decoder_->Close();
    decoder_ = nullptr;
    pointA_ = pointB_ = -1;
    SetChoosingSegment(false);
    texts_.segmentA = "A=N/A";
    texts_.segmentB = "B=N/A";
    texts_.segmentTip = std::string(kSegmentIdleTip);
    RefreshModeLabel();

    Decoder* chosen = &ChosenDecoder(path);
    bool opened = chosen->Open(path);
    // A file the audio player cannot decode goes to the media engine.
    if (!opened && chosen != &deps_.decoder2) {
        chosen = &deps_.decoder2;
        opened = chosen->Open(path);
    }
    if (!opened) {
        CannotPlay(path);
        return;
    }
    decoder_ = chosen;
    openPath_ = path;
    held_.reset();
    stopped_ = false;
    if (texts_.speed != 100) decoder_->SetSpeed(texts_.speed);
    const MediaEntry* entry = deps_.queue.Queue().CurrentEntry();
    texts_.title = entry ? entry->name : path;
    SetPlaying(true);
    texts_.backForwardEnabled = true;
    const long long length = decoder_->LengthMs();
    texts_.totalTime = length > 0 ? TotalTimeText(FormatTime(length)) : TotalTimeText();
    texts_.progress = 0;
    Show();
    deps_.view.FileOpened(path);
}

void PlaybackController::CannotPlay(const std::string& path) {
    texts_.totalTime = TotalTimeText();
    texts_.statusLine = std::string(kCannotPlayStatus);
    texts_.title = std::string(kCannotPlayTitle);
    SetPlaying(false);
    Show();
    deps_.view.FileClosed();
    const MediaEntry* entry = deps_.queue.Queue().CurrentEntry();
    const std::string name = entry ? entry->name : path;
    if (deps_.settings.Text(opt::kAskOnUnplayable) == "1") {
        if (deps_.prompts.AskYesNo(name + std::string(kCannotPlayQuestion), kCannotPlayTitle)) {
            Next();
        } else {
            Previous();
        }
        return;
    }
    Next();  // "无法播放文件时自动切换下一首"
}

bool PlaybackController::PlayIndex(int index) {
    PlayQueue& queue = deps_.queue.Queue();
    if (!queue.SetCurrent(index)) return false;
    queue.SetPendingDirection(QueueDirection::Forward);
    deps_.queue.Refresh();
    if (const MediaEntry* e = queue.CurrentEntry()) OpenAndPlay(e->path);
    return true;
}

void PlaybackController::ChooseAndPlay(QueueDirection direction) {
    PlayQueue& queue = deps_.queue.Queue();
    const int count = queue.Count();
    if (count == 0) return;
    int index = queue.Current() + 1;
    switch (direction) {
        case QueueDirection::First: index = 1; break;
        case QueueDirection::Back: index = queue.Current() - 1; break;
        case QueueDirection::Forward: index = queue.Current() + 1; break;
        case QueueDirection::Remembered: index = rememberedIndex_; break;
    }
    if (index > count) {
        // Past the last entry: the queue stays on it and nothing more plays.
        queue.SetCurrent(count);
        deps_.queue.Refresh();
        deps_.view.FileClosed();
        return;
    }
    if (index < 1) return;  // before the first entry: nothing plays
    PlayIndex(index);
}

void PlaybackController::PlayPause() {
    if (!decoder_) {
        if (deps_.queue.Queue().Count() == 0) {
            texts_.statusLine = std::string(kNoFileToPlay);
            Show();
            return;
        }
        if (const MediaEntry* e = deps_.queue.Queue().CurrentEntry()) OpenAndPlay(e->path);
        return;
    }
    if (IsPlaying()) {
        if (decoder_->Pause()) SetPlaying(false);
    } else if (stopped_ || decoder_->Finished()) {
        // Stopped: play again from the start (or the segment's A). A file that played to its end is
        // opened again instead: a device that has reached the end may sound again without saying
        // so (the MPEG device under Wine), and opening brings back every text and timer of playing.
        if (stopped_ &&
            decoder_->PlayRange(pointA_ >= 0 && pointB_ >= 0 ? pointA_ : 0, pointB_ >= 0 ? pointB_ : -1)) {
            SetPlaying(true);
            stopped_ = false;
            if (const MediaEntry* e = deps_.queue.Queue().CurrentEntry()) deps_.view.FileOpened(e->path);
        } else if (const MediaEntry* e = deps_.queue.Queue().CurrentEntry()) {
            OpenAndPlay(e->path);
            return;
        }
    } else if (decoder_->Resume()) {
        SetPlaying(true);
    }
    Show();
}

void PlaybackController::Stop() {
    if (decoder_) decoder_->Stop();
    stopped_ = true;
    SetPlaying(false);
    texts_.progress = 0;
    SetTimeMode(TimeMode::Elapsed);
    texts_.time = "-";
    Show();
    deps_.view.FileClosed();
}

void PlaybackController::Previous() {
    if (deps_.queue.Queue().Count() == 0) {
        texts_.statusLine = std::string(kNoFileToPlay);
        Show();
        return;
    }
    deps_.queue.Queue().SetPendingDirection(QueueDirection::Back);
    ChooseAndPlay(QueueDirection::Back);
}

void PlaybackController::Next() {
    if (deps_.queue.Queue().Count() == 0) {
        texts_.statusLine = std::string(kNoFileToPlay);
        Show();
        return;
    }
    deps_.queue.Queue().SetPendingDirection(QueueDirection::Forward);
    ChooseAndPlay(QueueDirection::Forward);
}

void PlaybackController::Back() {
    if (!decoder_) return;
    const long long pos = decoder_->PositionMs();
    decoder_->Seek(std::max(0LL, pos - 1000 * deps_.settings.Number(opt::kBackSeconds).value_or(5)));
}

void PlaybackController::Forward() {
    if (!decoder_) return;
    const long long pos = decoder_->PositionMs();
    const long long length = decoder_->LengthMs();
    long long target = pos + 1000 * deps_.settings.Number(opt::kForwardSeconds).value_or(5);
    if (length > 0 && target > length) target = length;
    decoder_->Seek(target);
}

void PlaybackController::JumpToTime() {
    const auto answer = deps_.prompts.AskText(kJumpPrompt, kJumpTitle, "");
    if (!answer || Trim(*answer).empty()) return;
    if (!decoder_) return;
    const long long seconds = std::max(0LL, ParseTypedTime(*answer));
    const long long length = decoder_->LengthMs();
    // Clamped to the file before the seconds become milliseconds.
    decoder_->Seek(length >= 0 && seconds > length / 1000 ? length : seconds * 1000);
}

void PlaybackController::SeekToPermille(int permille) {
    if (!decoder_) return;
    const long long length = decoder_->LengthMs();
    if (length > 0) decoder_->Seek(length * std::clamp(permille, 0, 1000) / 1000);
}

void PlaybackController::PlayEntry(int index) {
    if (index < 1 || index > deps_.queue.Queue().Count()) return;
    rememberedIndex_ = 0;
    PlayIndex(index);
}

void PlaybackController::SetNormal() { SetMode(PlayMode::Normal); }

void PlaybackController::ToggleLoop() {
    SetMode(mode_ == PlayMode::RepeatOne ? PlayMode::RepeatAll : PlayMode::RepeatOne);
}

void PlaybackController::SetRandom() { SetMode(PlayMode::Random); }

void PlaybackController::ToggleTimeMode() {
    SetTimeMode(timeMode_ == TimeMode::Elapsed ? TimeMode::Remaining : TimeMode::Elapsed);
    Show();
}

void PlaybackController::RestoreTimeMode() {
    SetTimeMode(deps_.settings.Number(opt::kTimeLabelMode) == 1 ? TimeMode::Remaining : TimeMode::Elapsed);
    Show();
}

void PlaybackController::SegmentCommand() {
    if (!choosingSegment_) {
        SetChoosingSegment(true);
        texts_.segmentA = "A=N/A";
        texts_.segmentB = "B=N/A";
        texts_.segmentTip = std::string(kSegmentChoosingTip);
        RefreshModeLabel();
        Show();
        return;
    }
    // Cancel: back to the ordinary state and the whole file.
    SetChoosingSegment(false);
    pointA_ = pointB_ = -1;
    texts_.segmentA = "A=N/A";
    texts_.segmentB = "B=N/A";
    texts_.segmentTip = std::string(kSegmentIdleTip);
    RefreshModeLabel();
    if (decoder_ && IsPlaying()) {
        const long long pos = decoder_->PositionMs();
        decoder_->PlayRange(pos < 0 ? 0 : pos, -1);
    }
    Show();
}

void PlaybackController::SetA() {
    if (!choosingSegment_ || !decoder_) return;
    pointA_ = std::max(0LL, decoder_->PositionMs());
    const std::string time = FormatTime(pointA_);
    texts_.segmentA = "A=" + time;
    texts_.segmentTip = "当前A点（开始点）为" + time + "\r\n选择文件的一段进行循环播放。选择A点的位置。";
    Show();
}

void PlaybackController::SetB() {
    if (!choosingSegment_ || !decoder_) return;
    if (pointA_ < 0) {
        deps_.prompts.ShowMessage(kChooseAFirst, kErrorTitle);
        return;
    }
    const long long b = decoder_->PositionMs();
    if (b < pointA_) {
        deps_.prompts.ShowMessage(kBBeforeA, kErrorTitle);
        return;
    }
    pointB_ = b;
    texts_.segmentB = "B=" + FormatTime(pointB_);
    decoder_->PlayRange(pointA_, pointB_);
    SetPlaying(true);
    Show();
}

void PlaybackController::SetSpeed(int percent) {
    if (percent < 1) percent = 1;
    if (percent > 200) percent = 200;
    texts_.speed = percent;
    // Speed follows the slider while a file is open; a format that cannot change it says so.
    if (decoder_ && !decoder_->SetSpeed(percent)) {
        texts_.statusLine = std::string(kSpeedUnsupported);
        noticeTicks_ = kNoticeTicks;
    }
    Show();
}

void PlaybackController::ResetSpeed() { SetSpeed(100); }

void PlaybackController::SetVolume(int level) {
    if (level < 0) level = 0;
    if (level > 20) level = 20;
    texts_.volume = level;
    texts_.volumeTip = VolumeTip(level);
    texts_.statusLine = VolumeStatusText(level);
    noticeTicks_ = kNoticeTicks;
    // "关闭音量渐变功能": the mixer goes straight to the new level.
    if (deps_.settings.Text(opt::kNoVolumeFade) == "1") {
        mixerLevel_ = level;
        deps_.volume.SetLevel(level);
    }
    Show();
}

void PlaybackController::RestoreVolume(int level) {
    level = std::clamp(level, 0, 20);
    texts_.volume = mixerLevel_ = level;
    texts_.volumeTip = VolumeTip(level);
    deps_.volume.SetLevel(level);
    Show();
}

bool PlaybackController::VolumeTick() {
    if (mixerLevel_ == texts_.volume) return false;
    mixerLevel_ += mixerLevel_ < texts_.volume ? 1 : -1;
    deps_.volume.SetLevel(mixerLevel_);
    return mixerLevel_ != texts_.volume;
}

void PlaybackController::ProgressTick() {
    if (!decoder_ || !IsPlaying() || held_) return;
    const long long length = decoder_->LengthMs();
    const long long pos = decoder_->PositionMs();
    // Asked once a tick: a decoder may count its questions.
    const bool finished = decoder_->Finished();
    // Both decoders stop by themselves at the end of the play range, B; playing starts again at A.
    if (pointA_ >= 0 && pointB_ >= 0 && finished) {
        decoder_->PlayRange(pointA_, pointB_);
        return;
    }
    if (finished) {
        // The last tick may have come a good part of a second before the end: the end shows the end.
        ShowPosition(length, length);
        OnEndOfFile();
        return;
    }
    ShowPosition(pos, length);
    Show();
}

void PlaybackController::ShowPosition(long long pos, long long length) {
    if (length <= 0 || pos < 0) return;
    pos = std::min(pos, length);
    texts_.progress = static_cast<int>(pos * 1000 / length);
    const long long percent = pos * 100 / length;
    texts_.percent = std::to_string(percent) + "%";
    texts_.time = timeMode_ == TimeMode::Remaining ? "-" + FormatTime(length - pos) : FormatTime(pos);
    texts_.progressLine = "播放的进度为：" + std::to_string(percent) + "%" + " 时间为：" + FormatTime(pos);
    if (noticeTicks_ > 0) {
        --noticeTicks_;
    } else {
        texts_.statusLine = texts_.progressLine;
    }
}

bool PlaybackController::LetGo(const std::string& path) {
    if (!decoder_ || held_ || path != openPath_) return false;
    held_ = Held{std::max(0LL, decoder_->PositionMs()), playing_, stopped_ || decoder_->Finished()};
    decoder_->Close();
    return true;
}

void PlaybackController::TakeBack() {
    if (!held_) return;
    const Held held = *held_;
    held_.reset();
    if (!decoder_->Open(openPath_)) {
        decoder_ = nullptr;
        SetPlaying(false);
        Show();
        return;
    }
    if (texts_.speed != 100) decoder_->SetSpeed(texts_.speed);
    if (held.stopped) {
        decoder_->Stop();
        return;
    }
    if (pointA_ >= 0 && pointB_ >= 0) decoder_->PlayRange(pointA_, pointB_);
    decoder_->Seek(held.positionMs);
    if (!held.playing) decoder_->Pause();
}

void PlaybackController::OnEndOfFile() {
    // 1. The transport returns to its resting state.
    texts_.backForwardEnabled = true;
    SetPlaying(false);
    texts_.progress = 0;
    // 2.
    if (timeMode_ == TimeMode::Remaining) texts_.time = "00:00-";
    PlayQueue& queue = deps_.queue.Queue();
    const int count = queue.Count();
    // 3. Repeat one: the entry is opened again, which restarts every device (the MPEG device
    // under Wine does not play again once it has reached the end of a file).
    if (mode_ == PlayMode::RepeatOne) {
        if (queue.Current() >= 1 && PlayIndex(queue.Current())) return;
        Show();
        return;
    }
    // 4. Random, from three entries up.
    if (mode_ == PlayMode::Random) {
        if (count >= 3) {
            int index = static_cast<int>(deps_.random() * count) + 1;
            index = std::clamp(index, 1, count);
            queue.SetPendingDirection(QueueDirection::Forward);
            PlayIndex(index);
        } else {
            Show();
        }
        return;
    }
    // 5. Repeat all at the last entry: entry 1.
    if (mode_ == PlayMode::RepeatAll && queue.Current() == count && count > 0) {
        PlayEntry(1);
        SetMode(PlayMode::RepeatAll);
        return;
    }
    // 6. Normal and repeat all: by the direction flag.
    if (count >= 1) {
        ChooseAndPlay(queue.PendingDirection());
    }
    Show();
}

}  // namespace lumora
