#include "settings/IniDocument.h"

#include "common/Text.h"
#include "ports/TextCodec.h"

namespace lumora {
namespace {

// ASCII letters fold; every other byte of the UTF-8 text must match exactly.
bool SameName(std::string_view a, std::string_view b) { return EqualsIgnoringAsciiCase(a, b); }

// The name of a "[section]" line, decoded; empty optional for other lines.
std::optional<std::string> SectionName(std::string_view line) {
    const std::string_view t = Trim(line);
    if (t.empty() || t.front() != '[') return std::nullopt;
    const size_t close = t.find(']');
    const std::string_view name = close == std::string_view::npos ? t.substr(1) : t.substr(1, close - 1);
    return Cp936ToUtf8(Trim(name));
}

struct KeyLine {
    std::string name;         // decoded
    std::string_view value;   // raw bytes, trimmed
};

std::optional<KeyLine> ParseKeyLine(std::string_view line) {
    const size_t eq = line.find('=');
    if (eq == std::string_view::npos) return std::nullopt;
    return KeyLine{Cp936ToUtf8(Trim(line.substr(0, eq))), Trim(line.substr(eq + 1))};
}

bool HasLineBreak(std::string_view s) { return s.find_first_of("\r\n") != std::string_view::npos; }

// A file saved as UTF-16 by another program: held as code page 936 from here on.
std::string FromUtf16File(std::string_view bytes) {
    std::u16string units;
    for (size_t i = 2; i + 1 < bytes.size(); i += 2) {
        units += static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                       (static_cast<unsigned char>(bytes[i + 1]) << 8));
    }
    std::string out;
    const std::string utf8 = Utf16ToUtf8(units);
    // Line by line, so a line with a character GBK lacks loses only that line's oddity.
    size_t start = 0;
    while (start <= utf8.size()) {
        size_t end = utf8.find('\n', start);
        if (end == std::string::npos) end = utf8.size();
        const std::string_view line(utf8.data() + start, end - start);
        out += Utf8ToCp936(line).value_or(std::string(line.size(), '?'));
        if (end < utf8.size()) out += '\n';
        start = end + 1;
    }
    return out;
}

}  // namespace

IniDocument::IniDocument(std::string_view fileBytes) {
    std::string converted;
    if (fileBytes.size() >= 2 && fileBytes[0] == '\xFF' && fileBytes[1] == '\xFE') {
        converted = FromUtf16File(fileBytes);
        fileBytes = converted;
    }
    size_t start = 0;
    while (start < fileBytes.size()) {
        size_t end = fileBytes.find('\n', start);
        if (end == std::string_view::npos) end = fileBytes.size();
        std::string_view line = fileBytes.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        lines_.emplace_back(line);
        start = end + 1;
    }
}

IniDocument::Located IniDocument::Find(std::string_view section, std::string_view key) const {
    Located at;
    for (size_t i = 0; i < lines_.size(); ++i) {
        if (auto name = SectionName(lines_[i])) {
            if (at.sectionLine) break;  // the section we wanted has ended
            if (SameName(*name, section)) {
                at.sectionLine = i;
                at.sectionEnd = i + 1;
            }
            continue;
        }
        if (!at.sectionLine) continue;
        if (!Trim(lines_[i]).empty()) at.sectionEnd = i + 1;
        if (at.keyLine) continue;
        if (auto k = ParseKeyLine(lines_[i]); k && SameName(k->name, key)) at.keyLine = i;
    }
    return at;
}

std::optional<std::string> IniDocument::Get(std::string_view section, std::string_view key) const {
    const Located at = Find(section, key);
    if (!at.keyLine) return std::nullopt;
    std::string_view raw = ParseKeyLine(lines_[*at.keyLine])->value;
    if (raw.size() >= 2 && (raw.front() == '"' || raw.front() == '\'') && raw.back() == raw.front()) {
        raw = raw.substr(1, raw.size() - 2);
    }
    std::string value = Cp936ToUtf8(raw);
    std::erase_if(value, [](char c) { return c == '\0' || c == '\x01'; });
    return value;
}

bool IniDocument::Set(std::string_view section, std::string_view key, std::string_view value) {
    if (HasLineBreak(section) || HasLineBreak(key) || HasLineBreak(value)) return false;
    if (section.find(']') != std::string_view::npos || key.find('=') != std::string_view::npos) return false;
    if (Trim(key).empty() || Trim(key).size() != key.size() || Trim(section).size() != section.size()) return false;
    const auto sectionBytes = Utf8ToCp936(section);
    const auto keyBytes = Utf8ToCp936(key);
    const auto valueBytes = Utf8ToCp936(value);
    if (!sectionBytes || !keyBytes || !valueBytes) return false;

    const Located at = Find(section, key);
    if (at.keyLine) {
        // Keep the key as the file spells it.
        const std::string_view old = lines_[*at.keyLine];
        lines_[*at.keyLine] = std::string(Trim(old.substr(0, old.find('=')))) + "=" + *valueBytes;
    } else if (at.sectionLine) {
        lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(at.sectionEnd), *keyBytes + "=" + *valueBytes);
    } else {
        if (!lines_.empty() && !Trim(lines_.back()).empty()) lines_.emplace_back();
        lines_.push_back("[" + *sectionBytes + "]");
        lines_.push_back(*keyBytes + "=" + *valueBytes);
    }
    return true;
}

std::string IniDocument::Bytes() const {
    std::string out;
    for (const auto& line : lines_) {
        out += line;
        out += "\r\n";
    }
    return out;
}

}  // namespace lumora
