// Any bytes as a media file: the frame walk never reads outside the audio, its frames follow each other
// without overlap and each starts with a header of its stream; the scan agrees with the walk, and the stream
// panel shows whatever it finds.
#include <cmath>

#include "FuzzChecks.h"
#include "mediainfo/MpegAudioParser.h"
#include "mediainfo/StreamPanel.h"
#include "mediainfo/TrailingTags.h"

using namespace lumora;
using fuzz::Check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string_view file = fuzz::Bytes(data, size);
    MpegFrameWalker walker(file);
    Check(walker.AudioStart() <= walker.AudioEnd() && walker.AudioEnd() <= file.size());
    Check(walker.AudioEnd() == LocateTrailingTags(file).audioEnd);

    std::uint32_t frames = 0;
    std::size_t next = walker.AudioStart();
    std::optional<MpegFrameHeader> stream;
    while (const auto frame = walker.Next()) {
        Check(frame->offset >= next && frame->size > 4);
        Check(frame->offset + static_cast<std::size_t>(frame->size) <= walker.AudioEnd());
        const auto header = DecodeMpegFrameHeader(file.substr(frame->offset, 4));
        Check(header && header->SameStreamAs(frame->header) && frame->samples == header->SamplesPerFrame());
        if (!stream) stream = walker.TagFrame() ? walker.TagFrame()->header : frame->header;
        Check(frame->header.SameStreamAs(*stream));
        next = frame->offset + static_cast<std::size_t>(frame->size);
        ++frames;
    }
    if (const auto& tag = walker.TagFrame()) Check(walker.Vbr() && tag->offset >= walker.AudioStart());

    const auto facts = ScanMpegAudio(file);
    Check(facts.has_value() == (frames > 0 || walker.TagFrame().has_value()));
    if (!facts) return 0;
    Check(facts->totalFrames == frames && facts->bitRate >= 0);
    Check(std::isfinite(facts->durationMs) && facts->durationMs >= 0 && facts->msPerFrame > 0);
    StreamPanelTexts panel;
    RefreshStreamPanel(panel, PropertiesOf(*facts, static_cast<std::int32_t>(frames)));
    Check(panel.totalFrames == "总帧：" + std::to_string(frames));
    return 0;
}
