// Any bytes as a media file: the frame walk never reads outside the audio, its frames follow each other
// without overlap and each starts with a header of its stream; the scan agrees with the walk, and the stream
// panel shows whatever it finds.

#include "FuzzChecks.h"
#include "mediainfo/MpegAudioParser.h"
#include "mediainfo/StreamPanel.h"
#include "mediainfo/TrailingTags.h"

LUMORA_FUZZ(file) {
    MpegFrameWalker walker(file);
    Check(walker.AudioStart() <= walker.AudioEnd() && walker.AudioEnd() == LocateTrailingTags(file).audioEnd);
    std::size_t frames = 0, next = walker.AudioStart();
    while (const auto frame = walker.Next()) {
        Check(frame->offset >= next && frame->size > 4 && frame->offset + static_cast<std::size_t>(frame->size) <= walker.AudioEnd());
        const auto header = DecodeMpegFrameHeader(file.substr(frame->offset, 4));
        Check(header && header->SameStreamAs(frame->header) && frame->samples == header->SamplesPerFrame());
        next = frame->offset + static_cast<std::size_t>(frame->size);
        ++frames;
    }
    const auto facts = ScanMpegAudio(file);
    Check(facts.has_value() == (frames > 0 || walker.TagFrame().has_value()));
    if (!facts) return;
    Check(facts->totalFrames == frames && std::isfinite(facts->durationMs) && facts->durationMs >= 0 && facts->msPerFrame > 0);
    StreamPanelTexts panel;
    RefreshStreamPanel(panel, PropertiesOf(*facts, static_cast<std::int32_t>(frames)));
    Check(panel.totalFrames == "总帧：" + std::to_string(frames));
}
