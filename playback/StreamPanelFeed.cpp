#include "playback/StreamPanelFeed.h"

#include "mediainfo/Id3v1.h"
#include "playback/PlaybackController.h"

namespace lumora {

void StreamPanelFeed::Reset() {
    ResetStreamPanel(texts_);
    facts_.reset();
}

void StreamPanelFeed::Opened(const std::string& path, long long lengthMs) {
    Reset();
    facts_ = LoadMpegStreamFacts(fs_, path);
    if (facts_) RefreshStreamPanel(texts_, PropertiesOf(*facts_, 0));
    Id3v1Tag tag;
    const bool hasTag = ReadId3v1Tag(fs_, path, tag);
    ShowTagLine(texts_, hasTag ? std::optional<Id3v1Tag>(tag) : std::nullopt);
    if (lengthMs > 0) texts_.totalTime = "总时：" + PlaybackController::FormatTime(lengthMs);
}

void StreamPanelFeed::Progress(long long positionMs) {
    if (!facts_ || facts_->msPerFrame <= 0 || positionMs < 0) return;
    RefreshFramesRead(texts_, static_cast<std::int32_t>(static_cast<double>(positionMs) / facts_->msPerFrame));
}

}  // namespace lumora
