#include "playlist/MediaTest.h"

#include <string>

#include "common/Text.h"

namespace lumora {
namespace {

// Names are UTF-8 and the test counts characters, not bytes. A stray continuation byte stays with the
// character before it, so broken text is still cut somewhere harmless.
bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

size_t CharsForward(std::string_view s, size_t count) {
    size_t pos = 0;
    for (size_t i = 0; i < count && pos < s.size(); ++i) {
        ++pos;
        while (pos < s.size() && IsContinuation(s[pos])) ++pos;
    }
    return pos;
}

// Where the last `count` characters of `s` begin; 0 when it has fewer.
size_t CharsBack(std::string_view s, size_t count) {
    size_t pos = s.size();
    for (size_t i = 0; i < count && pos > 0; ++i) {
        --pos;
        while (pos > 0 && IsContinuation(s[pos])) --pos;
    }
    return pos;
}

size_t CharCount(std::string_view s) {
    size_t n = 0;
    for (char c : s) n += IsContinuation(c) ? 0 : 1;
    return n + (!s.empty() && IsContinuation(s.front()) ? 1 : 0);
}

// "Forms a number" as the list lines' number test always read it: an optional sign, digits with at most one
// decimal point, blanks after. "001", "12 " and "-1." are numbers; "1-(" and "abc" are not.
bool IsNumberText(std::string_view s) {
    s = Trim(s, " ");
    if (!s.empty() && (s.front() == '+' || s.front() == '-')) s.remove_prefix(1);
    bool digit = false;
    bool point = false;
    for (char c : s) {
        if (IsDigit(c)) {
            digit = true;
        } else if (c == '.' && !point) {
            point = true;
        } else {
            return false;
        }
    }
    return digit;
}

}  // namespace

bool IsMediaFile(std::string_view name) {
    name = Trim(name, " ");
    std::string_view tail = name;
    if (CharCount(name) >= 3 && name.back() == ')' && IsNumberText(name.substr(0, CharsForward(name, 3)))) {
        tail.remove_suffix(1);  // a list line: look at the name inside "-(...)"
    }
    std::string ending(tail.substr(CharsBack(tail, 4)));
    // Every item of the list is ASCII, so ASCII lower-casing is all the comparison needs.
    ending = LowerAscii(ending);
    const size_t dot = ending.rfind('.');
    if (dot == std::string::npos) return false;
    const std::string extension = ending.substr(dot);

    std::string_view items = kMediaExtensionList;
    while (true) {
        const size_t semicolon = items.find(';');
        if (items.substr(0, semicolon) == extension) return true;
        if (semicolon == std::string_view::npos) return false;
        items.remove_prefix(semicolon + 1);
    }
}

}  // namespace lumora
