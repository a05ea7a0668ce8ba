#include "mediainfo/SmiReader.h"

#include <vector>

#include "common/Text.h"
#include "mediainfo/LrcReader.h"
#include "ports/FileSystem.h"
#include "ports/TextCodec.h"

namespace lumora {
namespace {

constexpr std::string_view kSyncMark = "<sync start=";
constexpr std::u16string_view kNumberEnd = u"><";
constexpr std::u16string_view kTextMark = u"ZHCC>";
constexpr std::string_view kEmptyText = "&nbsp;";
constexpr std::size_t kNumberStart = 13;      // 1-based, just after the 12 characters of "<sync start="
constexpr std::size_t kMaxNumberDigits = 12;  // milliseconds: more than thirty years

bool HasSyncMark(std::string_view line) { return ContainsIgnoringAsciiCase(line, kSyncMark); }

// The start number's text as a number: leading blanks and one quotation mark skipped, then digits.
long long NumberValue(std::u16string_view text) {
    std::size_t at = 0;
    while (at < text.size() && (text[at] == u' ' || text[at] == u'\t')) ++at;
    if (at < text.size() && (text[at] == u'"' || text[at] == u'\'')) ++at;
    long long value = 0;
    for (std::size_t digits = 0; at < text.size() && text[at] >= u'0' && text[at] <= u'9'; ++at) {
        if (++digits > kMaxNumberDigits) break;
        value = value * 10 + (text[at] - u'0');
    }
    return value;
}

}  // namespace

LyricLists ParseSmi(std::string_view bytes, bool correctTiming) {
    const std::string text = DecodeLyricsFileText(bytes.substr(0, kMaxLyricsFileBytes));
    std::vector<std::string> times;
    std::vector<std::string> texts;
    for (const std::string_view line : SplitLyricsLines(text)) {
        if (times.size() >= kMaxLyricsEntries) break;
        if (!HasSyncMark(line)) continue;
        const std::u16string units = Utf8ToUtf16(line);

        const std::size_t pair = units.find(kNumberEnd);
        const std::size_t p = pair == std::u16string::npos ? 0 : pair + 1;
        const long long milliseconds =
            p > kNumberStart ? NumberValue(std::u16string_view(units).substr(kNumberStart - 1, p - kNumberStart))
                             : static_cast<long long>(p);

        const std::size_t mark = units.find(kTextMark);
        const std::size_t q = mark == std::u16string::npos ? 0 : mark + 1;
        // The last (length - q - 4) characters: all after "ZHCC>", or the line minus four characters.
        const std::size_t skip = q + 4;
        std::string shown = skip < units.size() ? Utf16ToUtf8(std::u16string_view(units).substr(skip)) : std::string();
        if (shown == kEmptyText) shown.clear();

        long long seconds = milliseconds / 1000;
        if (correctTiming) seconds = CorrectLyricsSeconds(seconds);
        times.push_back(FormatStamp(seconds));
        texts.push_back(std::move(shown));
    }
    if (times.empty()) return {};
    return {JoinLyricsList(times), JoinLyricsList(texts)};
}

std::optional<LyricLists> ReadSmiFile(FileSystem& fs, const std::string& path, bool correctTiming) {
    const FileRead read = fs.ReadFilePart(path, 0, kMaxLyricsFileBytes);
    if (read.status != FileRead::Status::Ok) return std::nullopt;
    return ParseSmi(read.bytes, correctTiming);
}

}  // namespace lumora
