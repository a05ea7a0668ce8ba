#pragma once
// Keeps the tag and stream panel in step with playback: reset and filled when a file opens (from
// our own frame walk of an MPEG audio file's head and the ID3v1 tag in its tail), frames read on every
// progress tick.
#include <optional>
#include <string>

#include "mediainfo/Id3v1.h"
#include "mediainfo/MpegAudioParser.h"
#include "mediainfo/StreamPanel.h"

namespace lumora {

class FileSystem;

class StreamPanelFeed {
public:
    explicit StreamPanelFeed(FileSystem& fs) : fs_(fs) {}

    const StreamPanelTexts& Texts() const { return texts_; }
    // The ID3v1 tag of the file last opened; none when it has none.
    const std::optional<Id3v1Tag>& Tag() const { return tag_; }
    // `repairTags`: the tag's fields through RepairInfoText (opt::kRepairMediaInfo).
    void Opened(const std::string& path, long long lengthMs, bool repairTags = false);
    void Progress(long long positionMs);
    void Reset();

private:
    FileSystem& fs_;
    StreamPanelTexts texts_;
    std::optional<MpegStreamFacts> facts_;
    std::optional<Id3v1Tag> tag_;
};

}  // namespace lumora
