// Any bytes as a media file: the embedded lyrics and the tag are read without reading past the tail, and
// saving the information block leaves the old bytes up to the block, the block, and zero bytes; saving
// again writes over the same place.

#include "FuzzChecks.h"
#include "mediainfo/Id3v1.h"
#include "mediainfo/InfoBlock.h"

LUMORA_FUZZ(file) {
    const auto CheckWritten = [](const std::string& before, const std::string& after, const std::string& block) {
        const std::size_t at = after.rfind(block);
        Check(at != std::string::npos && after.size() >= before.size() && after.compare(0, at, before, 0, at) == 0);
        Check(after.find_first_not_of('\0', at + block.size()) == std::string::npos);
        return at;
    };
    for (std::size_t tail : {std::size_t{200}, file.size()}) {
        if (const auto field = FindEmbeddedLyricsField(file.substr(file.size() - std::min(tail, file.size())), static_cast<long long>(file.size()))) {
            Check(IsEmbeddedLyricsField(*field) && EmbeddedLyricsText(*field).size() <= field->size());
        }
    }
    test::FakeFileSystem fs;
    fs.files["D:\\a.mp3"] = file;
    (void)ReadMediaInfo(fs, "D:\\a.mp3");
    const Id3v1Tag tag{"标题", "歌手", "专集", "2005", "其他"};
    const std::string lyrics = BuildLyricsField("[00:01]歌词");
    Check(WriteInfoBlock(fs, "D:\\a.mp3", tag, lyrics) == InfoWriteResult::Written);
    const std::string first = fs.files["D:\\a.mp3"];
    const std::size_t at = CheckWritten(std::string(file), first, *BuildInfoBlockBytes(tag, lyrics));
    Check(ReadEmbeddedLyrics(fs, "D:\\a.mp3") == "[00:01]歌词" && ParseId3v1Tag(std::string_view(first).substr(at)) == tag);
    Check(WriteInfoBlock(fs, "D:\\a.mp3", {"t", "", "", "", ""}, "") == InfoWriteResult::Written);
    Check(CheckWritten(first, fs.files["D:\\a.mp3"], *BuildInfoBlockBytes({"t", "", "", "", ""}, "")) == at);
}
