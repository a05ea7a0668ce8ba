// Any bytes as a media file: the embedded lyrics and the tag are read without reading past the tail, and
// saving the information block leaves the old bytes up to the block, the block, and zero bytes; saving
// again writes over the same place.
#include <algorithm>

#include "FuzzChecks.h"
#include "mediainfo/Id3v1.h"
#include "mediainfo/InfoBlock.h"
#include "support/Fakes.h"

using namespace lumora;
using fuzz::Check;

namespace {

const std::string kPath = "D:\\a.mp3";

std::size_t CheckWritten(const std::string& before, const std::string& after, const std::string& block) {
    const std::size_t at = after.rfind(block);
    Check(at != std::string::npos && after.size() >= before.size());
    Check(after.compare(0, at, before, 0, at) == 0);
    Check(after.find_first_not_of('\0', at + block.size()) == std::string::npos);
    return at;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    const std::string file(fuzz::Bytes(data, size));
    for (std::size_t tail : {std::size_t{0}, std::size_t{200}, file.size()}) {
        const std::string_view view = std::string_view(file).substr(file.size() - std::min(tail, file.size()));
        if (const auto field = FindEmbeddedLyricsField(view, static_cast<long long>(file.size()))) {
            Check(IsEmbeddedLyricsField(*field) && EmbeddedLyricsText(*field).size() <= field->size());
        }
    }
    test::FakeFileSystem fs;
    fs.files[kPath] = file;
    (void)ReadMediaInfo(fs, kPath);

    const Id3v1Tag tag{"标题", "歌手", "专集", "2005", "其他"};
    const std::string lyrics = "[00:01]歌词";
    Check(WriteInfoBlock(fs, kPath, tag, BuildLyricsField(lyrics)) == InfoWriteResult::Written);
    const std::string first = fs.files[kPath];
    const std::size_t at = CheckWritten(file, first, *BuildInfoBlockBytes(tag, BuildLyricsField(lyrics)));
    Check(ReadEmbeddedLyrics(fs, kPath) == lyrics && ParseId3v1Tag(std::string_view(first).substr(at)) == tag);

    Check(WriteInfoBlock(fs, kPath, {"t", "", "", "", ""}, "") == InfoWriteResult::Written);
    Check(CheckWritten(first, fs.files[kPath], *BuildInfoBlockBytes({"t", "", "", "", ""}, "")) == at);
    return 0;
}
