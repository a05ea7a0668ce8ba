#include "playback/StreamPanelFeed.h"

#include <algorithm>
#include <cmath>

#include "common/Text.h"
#include "mediainfo/Id3v1.h"
#include "ports/FileSystem.h"
#include "playback/PlaybackController.h"

namespace lumora {

void StreamPanelFeed::Reset() {
    ResetStreamPanel(texts_);
    facts_.reset();
    tag_.reset();
}

void StreamPanelFeed::Opened(const std::string& path, long long lengthMs, bool repairTags) {
    Reset();
    // Only MPEG audio has stream facts; any file may end in a tag. Neither reads the whole of a large file.
    if (IsMpegAudioName(path)) facts_ = ReadMpegStreamFacts(fs_, path);
    if (facts_) RefreshStreamPanel(texts_, PropertiesOf(*facts_, 0));
    if (Id3v1Tag tag; ReadId3v1Tag(fs_, path, tag, repairTags)) tag_ = std::move(tag);
    ShowTagLine(texts_, tag_);
    if (lengthMs > 0) texts_.totalTime = TotalTimeText(PlaybackController::FormatTime(lengthMs));
}

void StreamPanelFeed::Progress(long long positionMs) {
    if (!facts_ || facts_->msPerFrame <= 0 || positionMs < 0) return;
    // To the nearest frame: the file's length in whole milliseconds falls a fraction short of its last frame.
    const double frames = std::round(static_cast<double>(positionMs) / facts_->msPerFrame);
    RefreshFramesRead(texts_, static_cast<std::int32_t>(std::min<double>(frames, facts_->totalFrames)));
}

}  // namespace lumora
