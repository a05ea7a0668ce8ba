#include "settings/TipOverrides.h"

#include "settings/IniDocument.h"
#include "settings/IniFiles.h"

namespace lumora {
namespace {

// "\n" as a line break, control characters out, at most kMaxTipChars characters (whole UTF-8 sequences).
std::string CleanTip(std::string_view raw) {
    std::string out;
    size_t chars = 0;
    for (size_t i = 0; i < raw.size() && chars < kMaxTipChars;) {
        const auto c = static_cast<unsigned char>(raw[i]);
        if (c == '\\' && i + 1 < raw.size() && raw[i + 1] == 'n') {
            out += "\r\n";
            i += 2;
            ++chars;
            continue;
        }
        size_t next = i + 1;
        while (next < raw.size() && (static_cast<unsigned char>(raw[next]) & 0xC0) == 0x80) ++next;
        if (c >= 0x20 && c != 0x7F) {
            out.append(raw, i, next - i);
            ++chars;
        }
        i = next;
    }
    return out;
}

}  // namespace

TipOverrides::TipOverrides(std::string_view iniBytes, std::span<const int> ids) {
    const IniDocument doc(iniBytes);
    for (int id : ids) {
        const auto value = doc.Get("提示" + std::to_string(id), kTipTextKey);
        if (!value) continue;
        std::string text = CleanTip(*value);
        if (!text.empty()) texts_[id] = std::move(text);
    }
}

std::string_view TipOverrides::For(int id, std::string_view builtIn, bool liveInformation) const {
    if (liveInformation) return builtIn;
    const auto it = texts_.find(id);
    return it == texts_.end() ? builtIn : std::string_view(it->second);
}

TipOverrides LoadTipOverrides(IniFiles& ini, std::span<const int> ids) {
    return TipOverrides(ini.ReadAll(kPlayerIniFile), ids);
}

}  // namespace lumora
