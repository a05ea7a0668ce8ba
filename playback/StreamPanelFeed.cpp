#include "playback/StreamPanelFeed.h"

#include <algorithm>
#include <cmath>

#include "mediainfo/Id3v1.h"
#include "ports/FileSystem.h"
#include "playback/PlaybackController.h"

namespace lumora {

void StreamPanelFeed::Reset() {
    ResetStreamPanel(texts_);
    facts_.reset();
}

void StreamPanelFeed::Opened(const std::string& path, long long lengthMs) {
    Reset();
    // One read of the file serves the frame walk and the tag.
    const FileRead file = fs_.ReadFile(path);
    const std::string_view bytes = file.status == FileRead::Status::Ok ? std::string_view(file.bytes) : "";
    facts_ = ScanMpegAudio(bytes);
    if (facts_) RefreshStreamPanel(texts_, PropertiesOf(*facts_, 0));
    ShowTagLine(texts_, ParseId3v1Tag(bytes));
    if (lengthMs > 0) texts_.totalTime = TotalTimeText(PlaybackController::FormatTime(lengthMs));
}

void StreamPanelFeed::Progress(long long positionMs) {
    if (!facts_ || facts_->msPerFrame <= 0 || positionMs < 0) return;
    // To the nearest frame: the file's length in whole milliseconds falls a fraction short of its last frame.
    const double frames = std::round(static_cast<double>(positionMs) / facts_->msPerFrame);
    RefreshFramesRead(texts_, static_cast<std::int32_t>(std::min<double>(frames, facts_->totalFrames)));
}

}  // namespace lumora
