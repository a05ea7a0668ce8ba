#include "mediainfo/LyricsTiming.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "common/Text.h"
#include "mediainfo/InfoBlock.h"

namespace lumora {
namespace {

constexpr std::string_view kCrLf = "\r\n";
constexpr std::string_view kZeroStamp = "[00:00]";
constexpr std::size_t kMaxIntegerDigits = 9;
constexpr int kMaxLineByteLimit = 9998;
constexpr long long kMaxSeconds = 999'999'999LL * 60 + 999'999'999LL;

constexpr std::string_view kLimitLabelPrefix = "当前设置每行：";
constexpr std::string_view kLimitLabelSuffix = " 个字节(一个汉字占两个字节)";
constexpr std::string_view kNoLimitLabel = "当前设置：不进行调整";
constexpr std::string_view kPreviewText =
    "这是浏览文本，显示用户设置第一字幕字节个数的效果，因为大部分歌词都是中文的，选取的个数值必须是偶数，“0”个代表不受"
    "限制。在调整歌词时，程序会自动识别每个字符占的字节个数来准确的调整，达到用户要求。在调整时，用户可立即看到调整结果"
    "。";

// A decimal number as a stamp part: digits with at most one ".", at least one digit.
struct Decimal {
    long long whole = 0;
    std::string_view fraction;  // the digits after "."
};

std::optional<Decimal> ParseDecimal(std::string_view s) {
    const std::size_t dot = s.find('.');
    const std::string_view whole = s.substr(0, dot);
    const std::string_view fraction = dot == std::string_view::npos ? std::string_view() : s.substr(dot + 1);
    if (whole.empty() && fraction.empty()) return std::nullopt;
    if (!std::all_of(whole.begin(), whole.end(), IsDigit) || !std::all_of(fraction.begin(), fraction.end(), IsDigit)) {
        return std::nullopt;
    }
    std::string_view significant = whole.substr(std::min(whole.find_first_not_of('0'), whole.size()));
    if (significant.size() > kMaxIntegerDigits) return std::nullopt;
    Decimal d;
    for (char c : significant) d.whole = d.whole * 10 + (c - '0');
    d.fraction = fraction;
    return d;
}

// The first `digits` digits of a fraction as an integer, padded with zeros.
std::int64_t FractionUnits(std::string_view fraction, int digits) {
    std::int64_t units = 0;
    for (int i = 0; i < digits; ++i) {
        units = units * 10 +
                (static_cast<std::size_t>(i) < fraction.size() ? fraction[static_cast<std::size_t>(i)] - '0' : 0);
    }
    return units;
}

bool AnyNonZero(std::string_view digits) { return digits.find_first_not_of('0') != std::string_view::npos; }

long long SaturatingAdd(long long a, long long b) {
    if (b > 0 && a > std::numeric_limits<long long>::max() - b) return std::numeric_limits<long long>::max();
    if (b < 0 && a < std::numeric_limits<long long>::min() - b) return std::numeric_limits<long long>::min();
    return a + b;
}

// The leading "[...]" group of `line` at `at`: its inside, or empty when `line` has no group there.
std::optional<std::string_view> BracketGroup(std::string_view line, std::size_t at) {
    if (at >= line.size() || line[at] != '[') return std::nullopt;
    const std::size_t close = line.find(']', at + 1);
    if (close == std::string_view::npos) return std::nullopt;
    return line.substr(at + 1, close - at - 1);
}

}  // namespace

std::string JoinLyricsList(const std::vector<std::string>& entries) {
    std::string out;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (i > 0) out += kLyricsListSeparator;
        out += entries[i];
    }
    return out;
}

std::vector<std::string> SplitLyricsList(std::string_view list) {
    std::vector<std::string> entries;
    std::size_t start = 0;
    while (true) {
        const std::size_t end = list.find(kLyricsListSeparator, start);
        entries.emplace_back(list.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start));
        if (end == std::string_view::npos) break;
        start = end + 1;
    }
    return entries;
}

std::string LyricListsToText(const LyricLists& lists) {
    if (lists.times.empty() && lists.texts.empty()) return {};
    const auto times = SplitLyricsList(lists.times);
    const auto texts = SplitLyricsList(lists.texts);
    if (times.size() != texts.size()) return {};
    std::string out;
    for (std::size_t i = 0; i < times.size(); ++i) {
        if (i > 0) out += kCrLf;
        out.append("[").append(times[i]).append("]").append(texts[i]);
    }
    return out;
}

std::vector<std::string_view> SplitLyricsLines(std::string_view text) {
    std::vector<std::string_view> lines;
    std::size_t start = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' && text[i] != '\n') continue;
        lines.push_back(text.substr(start, i - start));
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
        start = i + 1;
    }
    lines.push_back(text.substr(start));
    return lines;
}

std::optional<long long> StampSeconds(std::string_view stamp) {
    const std::size_t colon = stamp.find(':');
    if (colon == std::string_view::npos || stamp.find(':', colon + 1) != std::string_view::npos) return std::nullopt;
    const auto minutes = ParseDecimal(stamp.substr(0, colon));
    const auto seconds = ParseDecimal(stamp.substr(colon + 1));
    if (!minutes || !seconds) return std::nullopt;

    // Exact decimal arithmetic, so that a half is a half: fractions in units of 1e-15 s.
    constexpr int kDigits = 15;
    constexpr std::int64_t kUnit = 1'000'000'000'000'000;
    const std::int64_t fraction =
        FractionUnits(minutes->fraction, kDigits) * 60 + FractionUnits(seconds->fraction, kDigits);
    long long value = minutes->whole * 60 + seconds->whole + fraction / kUnit;
    const std::int64_t rest = fraction % kUnit;
    const bool beyond = seconds->fraction.size() > kDigits && AnyNonZero(seconds->fraction.substr(kDigits));
    constexpr std::int64_t kHalf = kUnit / 2;
    if (rest > kHalf || (rest == kHalf && (beyond || value % 2 != 0))) ++value;
    return value;
}

StampedLine SplitStampedLine(std::string_view line) {
    if (line.empty() || line.front() != '[') return {std::nullopt, line};
    const std::size_t close = line.rfind(']');
    if (close == std::string_view::npos) return {std::nullopt, line};
    const auto seconds = StampSeconds(line.substr(1, close - 1));
    if (!seconds) return {std::nullopt, line};
    return {seconds, line.substr(close + 1)};
}

std::string FormatStamp(long long seconds) {
    seconds = std::max(seconds, 0LL);
    std::string minutes = std::to_string(seconds / 60);
    if (minutes.size() < 2) minutes.insert(0, "0");
    const long long s = seconds % 60;
    return minutes + ":" + (s < 10 ? "0" : "") + std::to_string(s);
}

TimedLyrics BuildTimedLyrics(std::string_view text) {
    TimedLyrics lyrics;
    for (const std::string_view line : SplitLyricsLines(text)) {
        const StampedLine split = SplitStampedLine(line);
        lyrics.times.push_back(split.seconds);
        lyrics.texts.emplace_back(split.text);
    }
    return lyrics;
}

std::optional<DisplayLines> ChooseDisplayLines(const TimedLyrics& lyrics, long long elapsedSeconds, int lineByteLimit) {
    const auto& times = lyrics.times;
    if (times.empty() || times.size() != lyrics.texts.size() || elapsedSeconds < 0) return std::nullopt;

    std::optional<long long> current;
    std::optional<long long> next;
    for (std::size_t i = 1; i < times.size(); ++i) {
        if (!times[i]) continue;
        if (*times[i] <= elapsedSeconds) {
            current = times[i];
        } else if (!next) {
            next = times[i];
        }
    }
    if (!current) current = times.front();
    if (!next) next = times.back();

    const auto linesAt = [&](const std::optional<long long>& stamp) {
        std::string shown;
        if (!stamp) return shown;
        bool any = false;
        for (std::size_t i = 1; i < times.size(); ++i) {
            if (times[i] != stamp) continue;
            if (any) shown += kCrLf;
            shown += lyrics.texts[i];
            any = true;
        }
        return WrapToLineBytes(shown, lineByteLimit);
    };
    return DisplayLines{linesAt(current), linesAt(next)};
}

int ParseLineByteLimit(std::string_view text) {
    if (text.empty() || text.size() > 4 || !std::all_of(text.begin(), text.end(), IsDigit)) return 0;
    int value = 0;
    for (char c : text) value = value * 10 + (c - '0');
    return value % 2 == 0 && value <= kMaxLineByteLimit ? value : 0;
}

std::string WrapToLineBytes(std::string_view text, int limit) {
    if (limit <= 0) return std::string(text);
    const auto max = static_cast<std::size_t>(limit);
    std::string out;
    bool firstLine = true;
    for (const std::string_view line : SplitLyricsLines(text)) {
        if (!firstLine) out += kCrLf;
        firstLine = false;
        std::string row;  // the shown line being filled
        std::size_t rowBytes = 0;
        std::size_t blank = std::string::npos;  // the last blank in `row`: words break there
        std::size_t bytesAfterBlank = 0;
        const auto breakRow = [&](std::size_t at, std::size_t skip, std::size_t bytesLeft) {
            out.append(row, 0, at);
            out += kCrLf;
            row.erase(0, at + skip);
            rowBytes = bytesLeft;
            blank = std::string::npos;
        };
        for (std::size_t at = 0; at < line.size();) {
            const TextCharacter c = CharacterAt(line, at);
            const bool isBlank = line[at] == ' ';
            if (rowBytes > 0 && rowBytes + c.cp936Bytes > max) {
                if (isBlank) {  // the blank itself is the break
                    breakRow(row.size(), 0, 0);
                    ++at;
                    continue;
                }
                if (blank != std::string::npos && blank > 0) {
                    breakRow(blank, 1, bytesAfterBlank);
                }
                if (rowBytes > 0 && rowBytes + c.cp936Bytes > max) breakRow(row.size(), 0, 0);
            }
            if (isBlank) {
                blank = row.size();
                bytesAfterBlank = 0;
            } else {
                bytesAfterBlank += c.cp936Bytes;
            }
            row.append(line.substr(at, c.utf8Bytes));
            rowBytes += c.cp936Bytes;
            at += c.utf8Bytes;
        }
        out += row;
    }
    return out;
}

std::string LineByteLimitLabel(int limit) {
    if (limit == 0) return std::string(kNoLimitLabel);
    return std::string(kLimitLabelPrefix) + std::to_string(limit) + std::string(kLimitLabelSuffix);
}

std::string LineByteLimitPreview(int limit) { return WrapToLineBytes(kPreviewText, limit); }

long long CorrectLyricsSeconds(long long seconds) {
    // 1.22 and 1/90 as whole-number arithmetic: the same results as the floating-point truncation.
    const long long stretched = seconds * 122 / 100;
    return stretched - stretched / 90;
}

std::optional<std::string> ShiftTimeTrack(std::string_view text, long long offsetSeconds) {
    std::string out;
    bool firstLine = true;
    for (const std::string_view line : SplitLyricsLines(text)) {
        if (!firstLine) out += kCrLf;
        firstLine = false;
        if (line.empty()) continue;
        const auto first = BracketGroup(line, 0);
        if (!first || first->find(':') == std::string_view::npos) {
            out.append(kZeroStamp).append(line);
            continue;
        }
        if (!StampSeconds(*first)) return std::nullopt;
        std::size_t at = 0;
        while (const auto group = BracketGroup(line, at)) {
            const auto seconds = StampSeconds(*group);
            if (!seconds) break;
            const long long shifted = std::clamp(SaturatingAdd(*seconds, offsetSeconds), 0LL, kMaxSeconds);
            out.append("[").append(FormatStamp(shifted)).append("]");
            at += group->size() + 2;
        }
        out.append(line.substr(at));
    }
    return out;
}

}  // namespace lumora
