#pragma once
// Small text helpers every module shares. Lumora's texts are UTF-8; these only look at ASCII bytes,
// which never occur inside a multi-byte character.
#include <string>
#include <string_view>

namespace lumora {

inline constexpr std::string_view kBlanks = " \t";

// `s` without the characters of `chars` at either end.
std::string_view Trim(std::string_view s, std::string_view chars = kBlanks);
// `s` without the characters of `leading` at its start and of `trailing` at its end.
std::string_view Trim(std::string_view s, std::string_view leading, std::string_view trailing);

char LowerAscii(char c);
std::string LowerAscii(std::string_view s);
bool EqualsIgnoringAsciiCase(std::string_view a, std::string_view b);
bool StartsWithIgnoringAsciiCase(std::string_view text, std::string_view prefix);
bool EndsWithIgnoringAsciiCase(std::string_view text, std::string_view ending);
bool ContainsIgnoringAsciiCase(std::string_view text, std::string_view keyword);

bool IsDigit(char c);
// True when every character is a decimal digit (so also for an empty text).
bool AllDigits(std::string_view s);
// One or more decimal digits and nothing else.
bool IsDigits(std::string_view s);

// ".mp1", ".mp2" or ".mp3" in any case: the files decoder 1 and the frame checks are for.
bool IsMpegAudioName(std::string_view name);

}  // namespace lumora
