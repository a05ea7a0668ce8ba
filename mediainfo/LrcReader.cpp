#include "mediainfo/LrcReader.h"

#include <algorithm>
#include <vector>

#include "common/Text.h"
#include "ports/FileSystem.h"
#include "ports/TextCodec.h"

namespace lumora {
namespace {

// Up to 99999 minutes (or seconds) in a stamp, a whole number of milliseconds in an offset: anything
// longer is no time a song has.
constexpr std::size_t kMaxTimeDigits = 5;
constexpr std::size_t kMaxOffsetDigits = 9;
// The texts of all entries together; a file of a few long lines with many stamps each stops here.
constexpr std::size_t kMaxTextBytes = 4 * 1024 * 1024;

bool IsContinuation(unsigned char b) { return (b & 0xC0) == 0x80; }

// Strict UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
bool IsUtf8(std::string_view s) {
    for (std::size_t i = 0; i < s.size();) {
        const auto b = static_cast<unsigned char>(s[i]);
        std::size_t length = 0;
        char32_t cp = 0;
        if (b < 0x80) {
            ++i;
            continue;
        } else if (b >= 0xC2 && b <= 0xDF) {
            length = 2;
            cp = b & 0x1F;
        } else if (b >= 0xE0 && b <= 0xEF) {
            length = 3;
            cp = b & 0x0F;
        } else if (b >= 0xF0 && b <= 0xF4) {
            length = 4;
            cp = b & 0x07;
        } else {
            return false;
        }
        if (i + length > s.size()) return false;
        for (std::size_t k = 1; k < length; ++k) {
            const auto c = static_cast<unsigned char>(s[i + k]);
            if (!IsContinuation(c)) return false;
            cp = cp << 6 | (c & 0x3F);
        }
        if ((length == 3 && (cp < 0x800 || (cp >= 0xD800 && cp <= 0xDFFF))) ||
            (length == 4 && (cp < 0x10000 || cp > 0x10FFFF))) {
            return false;
        }
        i += length;
    }
    return true;
}

std::string FromUtf16(std::string_view bytes, bool bigEndian) {
    std::u16string units;
    units.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto a = static_cast<unsigned char>(bytes[i]);
        const auto b = static_cast<unsigned char>(bytes[i + 1]);
        units += static_cast<char16_t>(bigEndian ? (a << 8 | b) : (b << 8 | a));
    }
    return Utf16ToUtf8(units);
}

std::optional<long long> Digits(std::string_view s, std::size_t maxDigits) {
    if (s.empty() || s.size() > maxDigits || !std::all_of(s.begin(), s.end(), IsDigit)) return std::nullopt;
    long long value = 0;
    for (char c : s) value = value * 10 + (c - '0');
    return value;
}

// "mm:ss", "mm:ss.xx", "mm:ss:xx" (and a leading "-") in milliseconds.
std::optional<long long> StampMilliseconds(std::string_view s) {
    const bool negative = !s.empty() && s.front() == '-';
    if (negative) s.remove_prefix(1);
    const std::size_t colon = s.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    const auto minutes = Digits(s.substr(0, colon), kMaxTimeDigits);
    std::string_view rest = s.substr(colon + 1);
    const std::size_t mark = rest.find_first_of(".:");
    const auto seconds = Digits(rest.substr(0, mark), kMaxTimeDigits);
    if (!minutes || !seconds) return std::nullopt;
    long long ms = *minutes * 60000 + *seconds * 1000;
    if (mark != std::string_view::npos) {
        const std::string_view fraction = rest.substr(mark + 1);
        if (fraction.empty() || !std::all_of(fraction.begin(), fraction.end(), IsDigit)) return std::nullopt;
        for (std::size_t i = 0, scale = 100; i < 3 && i < fraction.size(); ++i, scale /= 10) {
            ms += (fraction[i] - '0') * static_cast<long long>(scale);
        }
    }
    return negative ? -ms : ms;
}

std::optional<long long> OffsetMilliseconds(std::string_view tag) {
    if (!StartsWithIgnoringAsciiCase(tag, "offset:")) return std::nullopt;
    std::string_view value = tag.substr(7);
    value = Trim(value, " ");
    const bool negative = !value.empty() && value.front() == '-';
    if (!value.empty() && (value.front() == '-' || value.front() == '+')) value.remove_prefix(1);
    const auto ms = Digits(value, kMaxOffsetDigits);
    if (!ms) return std::nullopt;
    return negative ? -*ms : *ms;
}

// Takes "<mm:ss.xx>" word stamps out of a line's text.
std::string WithoutWordStamps(std::string_view text) {
    std::string out;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t open = text.find('<', at);
        if (open == std::string_view::npos) break;
        const std::size_t close = text.find('>', open + 1);
        if (close != std::string_view::npos && StampMilliseconds(text.substr(open + 1, close - open - 1))) {
            out.append(text.substr(at, open - at));
            at = close + 1;
        } else {
            out.append(text.substr(at, open + 1 - at));
            at = open + 1;
        }
    }
    out.append(text.substr(std::min(at, text.size())));
    return out;
}

// Bytes that start no GBK character become "?", so that a damaged or binary file converts in one go
// instead of character by character.
std::string WithoutBrokenGbk(std::string_view bytes) {
    std::string out(bytes);
    for (std::size_t i = 0; i < out.size(); ++i) {
        const auto b = static_cast<unsigned char>(out[i]);
        if (b <= 0x80) continue;
        const auto trail = i + 1 < out.size() ? static_cast<unsigned char>(out[i + 1]) : 0;
        if (b != 0xFF && trail >= 0x40 && trail != 0x7F && trail != 0xFF) {
            ++i;
        } else {
            out[i] = '?';
        }
    }
    return out;
}

struct Entry {
    long long ms;
    std::string text;
};

}  // namespace

std::string DecodeLyricsFileText(std::string_view bytes) {
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF") {
        bytes.remove_prefix(3);
        return IsUtf8(bytes) ? std::string(bytes) : Utf16ToUtf8(Utf8ToUtf16(bytes));
    }
    if (bytes.substr(0, 2) == "\xFF\xFE") return FromUtf16(bytes.substr(2), false);
    if (bytes.substr(0, 2) == "\xFE\xFF") return FromUtf16(bytes.substr(2), true);
    if (IsUtf8(bytes)) return std::string(bytes);  // plain ASCII included: the same in both
    return Cp936ToUtf8(WithoutBrokenGbk(bytes));
}

LyricLists ParseLrc(std::string_view bytes, bool correctTiming) {
    const std::string text = DecodeLyricsFileText(bytes.substr(0, kMaxLyricsFileBytes));
    std::vector<Entry> entries;
    std::optional<long long> offset;
    std::size_t textBytes = 0;
    for (std::string_view line : SplitLyricsLines(text)) {
        line = Trim(line, kBlanks, {});
        std::vector<long long> stamps;
        std::size_t at = 0;
        while (at < line.size() && line[at] == '[') {
            const std::size_t close = line.find(']', at + 1);
            if (close == std::string_view::npos) break;
            const std::string_view inside = line.substr(at + 1, close - at - 1);
            if (const auto ms = StampMilliseconds(inside)) {
                if (stamps.size() < kMaxStampsPerLine) stamps.push_back(*ms);
            } else {
                if (const auto o = OffsetMilliseconds(inside); o && !offset) offset = o;
                break;
            }
            at = close + 1;
        }
        if (stamps.empty()) continue;
        const std::string lineText = WithoutWordStamps(line.substr(at));
        for (const long long ms : stamps) {
            if (entries.size() >= kMaxLyricsEntries || textBytes + lineText.size() > kMaxTextBytes) break;
            textBytes += lineText.size();
            entries.push_back({ms, lineText});
        }
    }

    std::vector<std::pair<long long, std::size_t>> order;  // seconds, entry
    order.reserve(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        long long seconds = std::max(0LL, entries[i].ms - offset.value_or(0)) / 1000;
        if (correctTiming) seconds = CorrectLyricsSeconds(seconds);
        order.emplace_back(seconds, i);
    }
    std::stable_sort(order.begin(), order.end(), [](const auto& a, const auto& b) { return a.first < b.first; });

    std::vector<std::string> times;
    std::vector<std::string> texts;
    for (const auto& [seconds, i] : order) {
        times.push_back(FormatStamp(seconds));
        texts.push_back(std::move(entries[i].text));
    }
    if (times.empty()) return {};
    return {JoinLyricsList(times), JoinLyricsList(texts)};
}

std::optional<LyricLists> ReadLrcFile(FileSystem& fs, const std::string& path, bool correctTiming) {
    const FileRead read = fs.ReadFilePart(path, 0, kMaxLyricsFileBytes);
    if (read.status != FileRead::Status::Ok) return std::nullopt;
    return ParseLrc(read.bytes, correctTiming);
}

}  // namespace lumora
