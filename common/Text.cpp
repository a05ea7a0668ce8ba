#include "common/Text.h"

#include <algorithm>

namespace lumora {

std::string_view Trim(std::string_view s, std::string_view chars) { return Trim(s, chars, chars); }

std::string_view Trim(std::string_view s, std::string_view leading, std::string_view trailing) {
    while (!s.empty() && trailing.find(s.back()) != std::string_view::npos) s.remove_suffix(1);
    while (!s.empty() && leading.find(s.front()) != std::string_view::npos) s.remove_prefix(1);
    return s;
}

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string LowerAscii(std::string_view s) {
    std::string out(s);
    for (char& c : out) c = LowerAscii(c);
    return out;
}

namespace {
bool SameLetter(char a, char b) { return LowerAscii(a) == LowerAscii(b); }
}  // namespace

bool EqualsIgnoringAsciiCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), SameLetter);
}

bool StartsWithIgnoringAsciiCase(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() && EqualsIgnoringAsciiCase(text.substr(0, prefix.size()), prefix);
}

bool EndsWithIgnoringAsciiCase(std::string_view text, std::string_view ending) {
    return text.size() >= ending.size() && EqualsIgnoringAsciiCase(text.substr(text.size() - ending.size()), ending);
}

bool ContainsIgnoringAsciiCase(std::string_view text, std::string_view keyword) {
    return std::search(text.begin(), text.end(), keyword.begin(), keyword.end(), SameLetter) != text.end();
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool AllDigits(std::string_view s) { return std::all_of(s.begin(), s.end(), IsDigit); }

bool IsDigits(std::string_view s) { return !s.empty() && AllDigits(s); }

bool IsMpegAudioName(std::string_view name) {
    return EndsWithIgnoringAsciiCase(name, ".mp1") || EndsWithIgnoringAsciiCase(name, ".mp2") ||
           EndsWithIgnoringAsciiCase(name, ".mp3");
}

}  // namespace lumora
